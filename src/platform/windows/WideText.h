#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// UTF-8 to UTF-16 and back, without loss for every UTF-16 text: a lone surrogate travels as the three bytes
/// that its number would have (WTF-8).
namespace quillbay {

struct DecodedChar {
    char32_t point = 0;
    std::size_t length = 1; ///< bytes
    bool valid = false;     ///< otherwise one byte that belongs to no character
};

/// The character at the beginning of `text`, which must not be empty. A surrogate is valid here.
DecodedChar DecodeChar(std::string_view text);

void AppendUtf8(std::string& text, char32_t point);
void AppendUtf16(std::wstring& text, char32_t point);

constexpr bool IsSurrogate(char32_t point) { return point >= 0xD800 && point <= 0xDFFF; }

/// A byte that belongs to no character becomes the lone surrogate U+DC00 + byte: no name on the disk is
/// mistaken for another.
std::wstring WidenText(std::string_view text);
std::string NarrowText(std::wstring_view text);

} // namespace quillbay
