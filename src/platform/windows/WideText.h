#pragma once

#include "platform/Utf8.h"

#include <cstddef>
#include <string>
#include <string_view>

/// UTF-8 to UTF-16 and back, without loss for every UTF-16 text: a lone surrogate travels as the three bytes
/// that its number would have (WTF-8).
namespace quillbay {

/// As ReadUtf8, but a surrogate counts as a character.
Utf8Character ReadWideUtf8(std::string_view text, std::size_t at);

constexpr bool IsSurrogate(char32_t point) { return point >= 0xD800 && point <= 0xDFFF; }

/// A byte that belongs to no character becomes the lone surrogate U+DC00 + byte: no name on the disk is
/// mistaken for another.
std::wstring WidenText(std::string_view text);
std::string NarrowText(std::wstring_view text);

} // namespace quillbay
