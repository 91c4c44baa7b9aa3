#pragma once

#include "platform/FileSystem.h"

#include <cstdint>
#include <string>
#include <sys/stat.h>
#include <system_error>

namespace quillbay {

/// FileSystem::Copy on native paths.
std::error_code CopyEntry(std::string from, std::string to, const CopyOptions& options);

/// The permissions of the file `old` for the open one that takes its place. The set-id bits, which lend the
/// rights of owner or group, only where these are the same: others have not lent theirs.
mode_t ModeFor(int made, const struct stat& old);

/// Copies what follows the position of the open file `from`, which should be `size` bytes, to that of `to`;
/// inside the kernel where the two file systems can.
std::error_code CopyBytes(int from, int to, std::uint64_t size);

/// The same with a buffer, up to the end of `from`.
std::error_code CopyByReading(int from, int to);

/// Everything written is on the disk; no error where the file system knows no such request.
std::error_code FlushOpen(int file);

/// Writes all of `size` bytes.
std::error_code WriteAll(int fd, const char* bytes, std::size_t size);

} // namespace quillbay
