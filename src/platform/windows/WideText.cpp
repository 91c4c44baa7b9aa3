#include "platform/windows/WideText.h"

namespace quillbay {

namespace {

constexpr bool IsHigh(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLow(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

void AppendUtf16(std::wstring& text, char32_t point) {
    if (point < 0x10000) {
        text.push_back(static_cast<wchar_t>(point));
        return;
    }
    text.push_back(static_cast<wchar_t>(0xD800 + ((point - 0x10000) >> 10)));
    text.push_back(static_cast<wchar_t>(0xDC00 + ((point - 0x10000) & 0x3FF)));
}

} // namespace

Utf8Character ReadWideUtf8(std::string_view text, std::size_t at) {
    const Utf8Character character = ReadUtf8(text, at);
    constexpr std::size_t kSurrogateLength = 3;
    if (character.valid || character.codePoint != 0xED || text.size() - at < kSurrogateLength)
        return character;
    const auto second = static_cast<unsigned char>(text[at + 1]);
    const auto third = static_cast<unsigned char>(text[at + 2]);
    if (second < 0xA0 || second > 0xBF || (third & 0xC0) != 0x80) return character;
    return {0xD000U | ((second & 0x3FU) << 6) | (third & 0x3FU), kSurrogateLength, true};
}

std::wstring WidenText(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Character c = ReadWideUtf8(text, at);
        AppendUtf16(wide, c.valid ? c.codePoint : 0xDC00 + c.codePoint);
        at += c.length;
    }
    return wide;
}

std::string NarrowText(std::wstring_view text) {
    std::string narrow;
    narrow.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t point = text[i];
        if (IsHigh(point) && i + 1 < text.size() && IsLow(text[i + 1])) {
            point = 0x10000 + ((point - 0xD800) << 10) + (static_cast<char32_t>(text[i + 1]) - 0xDC00);
            ++i;
        }
        AppendUtf8(narrow, point);
    }
    return narrow;
}

} // namespace quillbay
