#pragma once

#include "platform/Result.h"

#include <cstdint>
#include <string>

namespace quillbay {

/// FileSystem::RemoveTree on a native path.
std::error_code RemoveFolderTree(const std::string& folder);

/// FileSystem::TreeSize on a native path. Entries that vanish meanwhile count nothing; a folder that cannot
/// be read is an error.
Result<std::uint64_t> FolderTreeSize(const std::string& folder);

} // namespace quillbay
