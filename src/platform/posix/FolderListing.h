#pragma once

#include "platform/FileSystem.h"

#include <string>

namespace quillbay {

/// FileSystem::List and FileSystem::Stat on native paths.
Result<std::vector<DirEntry>> ListFolder(std::string folder, Detail detail);
Result<FileInfo> StatEntry(std::string path);

} // namespace quillbay
