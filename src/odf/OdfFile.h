#pragma once

#include "platform/FileSystem.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace quillbay {

/// A larger file is no definition: it is passed over like one that cannot be read.
inline constexpr std::size_t kLargestOdf = std::size_t{256} * 1024 * 1024; // bytes

/// All bytes of a file; none when it cannot be read or is too large.
std::optional<std::string> ReadOdf(const FileSystem& files, std::string_view path);
/// The same as UTF-8.
std::optional<std::string> ReadOdfText(const FileSystem& files, std::string_view path);

/// Replaces the file as a whole, a read-only one too, and leaves it writable. On failure the old one stays as
/// it was.
std::error_code ReplaceOdf(FileSystem& files, std::string_view path, std::string_view bytes);

} // namespace quillbay
