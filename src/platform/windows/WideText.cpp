#include "platform/windows/WideText.h"

namespace quillbay {

namespace {

constexpr bool IsHigh(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLow(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

} // namespace

DecodedChar DecodeChar(std::string_view text) {
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byteAt(0);
    if (lead < 0x80) return {lead, 1, true};

    std::size_t length = 0;
    char32_t point = 0;
    char32_t smallest = 0;
    if ((lead & 0xE0) == 0xC0) {
        length = 2, point = lead & 0x1F, smallest = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3, point = lead & 0x0F, smallest = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4, point = lead & 0x07, smallest = 0x10000;
    }
    if (length == 0 || text.size() < length) return {lead, 1, false};
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(i) & 0xC0) != 0x80) return {lead, 1, false};
        point = (point << 6) | (byteAt(i) & 0x3F);
    }
    if (point < smallest || point > 0x10FFFF) return {lead, 1, false};
    return {point, length, true};
}

void AppendUtf8(std::string& text, char32_t point) {
    const auto put = [&](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (point < 0x80) {
        put(point);
    } else if (point < 0x800) {
        put(0xC0 | (point >> 6));
        put(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        put(0xE0 | (point >> 12));
        put(0x80 | ((point >> 6) & 0x3F));
        put(0x80 | (point & 0x3F));
    } else {
        put(0xF0 | (point >> 18));
        put(0x80 | ((point >> 12) & 0x3F));
        put(0x80 | ((point >> 6) & 0x3F));
        put(0x80 | (point & 0x3F));
    }
}

void AppendUtf16(std::wstring& text, char32_t point) {
    if (point < 0x10000) {
        text.push_back(static_cast<wchar_t>(point));
        return;
    }
    text.push_back(static_cast<wchar_t>(0xD800 + ((point - 0x10000) >> 10)));
    text.push_back(static_cast<wchar_t>(0xDC00 + ((point - 0x10000) & 0x3FF)));
}

std::wstring WidenText(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    while (!text.empty()) {
        const DecodedChar c = DecodeChar(text);
        AppendUtf16(wide, c.valid ? c.point : 0xDC00 + c.point);
        text.remove_prefix(c.length);
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
