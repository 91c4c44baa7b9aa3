#pragma once

#include <cstddef>
#include <string_view>

namespace quillbay {

/// How much of an archive's end is looked at.
inline constexpr std::size_t kTailBytes = 64 * 1024;

/// True when the name or the end (of a zip) says that a file which could not be read is only a part.
bool LooksLikePart(std::string_view fileName, std::string_view tail);

} // namespace quillbay
