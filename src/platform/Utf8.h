#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillbay {

struct Utf8Character {
    char32_t codePoint = 0;
    std::size_t length = 1; ///< bytes it takes
    bool valid = true;      ///< false: the byte at hand belongs to no character; `codePoint` is that byte
};

/// The character that begins at `at` (inside `text`), by the strict rules: no overlong forms, no surrogates,
/// nothing beyond U+10FFFF.
Utf8Character ReadUtf8(std::string_view text, std::size_t at);

/// Appends one character of at most U+10FFFF; a lone surrogate, as names on Windows may hold, becomes three
/// bytes.
void AppendUtf8(std::string& text, char32_t codePoint);

} // namespace quillbay
