#include "platform/Utf8.h"

namespace quillbay {

namespace {

struct SequenceForm {
    unsigned char mask;   ///< of the first byte
    unsigned char marker; ///< what the first byte is under the mask
    std::size_t length;
    char32_t smallest; ///< code point that needs this length
};

constexpr SequenceForm kForms[] = {
    {0x80, 0x00, 1, 0},
    {0xE0, 0xC0, 2, 0x80},
    {0xF0, 0xE0, 3, 0x800},
    {0xF8, 0xF0, 4, 0x10000},
};

constexpr unsigned char ByteAt(std::string_view text, std::size_t at) {
    return static_cast<unsigned char>(text[at]);
}

bool IsCharacter(char32_t codePoint) {
    return codePoint <= 0x10FFFF && !(codePoint >= 0xD800 && codePoint <= 0xDFFF);
}

} // namespace

Utf8Character ReadUtf8(std::string_view text, std::size_t at) {
    const unsigned char first = ByteAt(text, at);
    const Utf8Character invalid{first, 1, false};
    for (const auto& form : kForms) {
        if ((first & form.mask) != form.marker) continue;
        if (text.size() - at < form.length) return invalid;
        char32_t codePoint = static_cast<char32_t>(first & static_cast<unsigned char>(~form.mask));
        for (std::size_t i = 1; i < form.length; ++i) {
            const unsigned char next = ByteAt(text, at + i);
            if ((next & 0xC0) != 0x80) return invalid;
            codePoint = (codePoint << 6) | (next & 0x3FU);
        }
        if (codePoint < form.smallest || !IsCharacter(codePoint)) return invalid;
        return {codePoint, form.length, true};
    }
    return invalid;
}

void AppendUtf8(std::string& text, char32_t codePoint) {
    const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (codePoint < 0x80) {
        put(codePoint);
    } else if (codePoint < 0x800) {
        put(0xC0 | (codePoint >> 6));
        put(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        put(0xE0 | (codePoint >> 12));
        put(0x80 | ((codePoint >> 6) & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    } else {
        put(0xF0 | (codePoint >> 18));
        put(0x80 | ((codePoint >> 12) & 0x3F));
        put(0x80 | ((codePoint >> 6) & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    }
}

} // namespace quillbay
