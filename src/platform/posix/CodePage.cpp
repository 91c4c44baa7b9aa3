#include "platform/CodePage.h"

#include "platform/Utf8.h"

#include <algorithm>
#include <array>

namespace quillbay {

namespace {

constexpr std::size_t kFirstSpecial = 0x80;

/// Windows-1252 from 80 to 9F; every other byte is its own code point. The five codes that the code page
/// leaves free stand for the control characters of the same number, so that every byte comes back.
constexpr std::array<char32_t, 32> kSpecials = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

constexpr bool IsSpecial(char32_t code) {
    return code >= kFirstSpecial && code < kFirstSpecial + kSpecials.size();
}

std::size_t AsciiRun(std::string_view text, std::size_t at) {
    const auto start = text.begin() + static_cast<std::ptrdiff_t>(at);
    const auto end =
        std::find_if(start, text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    return static_cast<std::size_t>(end - start);
}

std::optional<char> EncodeCharacter(const Utf8Character& character) {
    if (!character.valid) return std::nullopt;
    const char32_t code = character.codePoint;
    if (code < 0x100 && !IsSpecial(code)) return static_cast<char>(code);
    const auto at = std::find(kSpecials.begin(), kSpecials.end(), code);
    if (at == kSpecials.end()) return std::nullopt;
    return static_cast<char>(kFirstSpecial + static_cast<std::size_t>(at - kSpecials.begin()));
}

} // namespace

std::string DecodeSystemText(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const auto run = AsciiRun(bytes, at);
        text.append(bytes, at, run);
        at += run;
        if (at == bytes.size()) break;
        const char32_t code = static_cast<unsigned char>(bytes[at++]);
        AppendUtf8(text, IsSpecial(code) ? kSpecials[code - kFirstSpecial] : code);
    }
    return text;
}

EncodedText EncodeSystemText(std::string_view text) {
    EncodedText encoded;
    encoded.bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto run = AsciiRun(text, at);
        encoded.bytes.append(text, at, run);
        at += run;
        if (at == text.size()) break;
        const auto character = ReadUtf8(text, at);
        const auto byte = EncodeCharacter(character);
        if (!byte) {
            encoded.unencodable = text.substr(at, character.length);
            break;
        }
        encoded.bytes.push_back(*byte);
        at += character.length;
    }
    return encoded;
}

} // namespace quillbay
