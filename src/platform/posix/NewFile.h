#pragma once

#include "platform/FileSystem.h"

#include <memory>
#include <string>

namespace quillbay {

/// FileSystem::MakeFile on a native path.
Result<std::unique_ptr<FileWriter>> StartFile(std::string path, NewFile traits);

} // namespace quillbay
