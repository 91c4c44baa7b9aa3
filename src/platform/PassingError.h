#pragma once

#include <system_error>

/// Errors that are over a moment later: a virus scanner, an indexer or another program holds the file.
namespace quillbay {

enum class FileAccess { Reading, Writing };

/// True when the operation may succeed if it is tried again soon. That it is so is not certain: Windows has
/// one code for a file that is held for a moment and for a missing right.
bool MayPass(const std::error_code& error, FileAccess access);

/// True when another program has the file open.
inline bool IsInUse(const std::error_code& error) {
    return error == std::errc::device_or_resource_busy || error == std::errc::text_file_busy;
}

} // namespace quillbay
