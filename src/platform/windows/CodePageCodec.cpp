#include "platform/windows/CodePageCodec.h"

#include "platform/windows/WideText.h"

#include <algorithm>
#include <limits>
#include <windows.h>

namespace quillbay {

namespace {

constexpr char32_t kRawBytes = 0xF700; // a byte as it was, as this plus the byte

constexpr bool IsRawByte(char32_t point) { return point >= kRawBytes && point <= kRawBytes + 0xFF; }
constexpr bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

std::size_t AsciiLength(std::string_view text) {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsAscii) - text.begin());
}

} // namespace

/// No character is guessed, none is a private code point that Encode would take for a byte, and the same
/// bytes come back.
bool CodePageCodec::DecodeExactly(std::string_view bytes, std::wstring& wide) const {
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return false;
    const int size = static_cast<int>(bytes.size());
    wide.resize(bytes.size());
    const int length =
        MultiByteToWideChar(codePage_, MB_ERR_INVALID_CHARS, bytes.data(), size, wide.data(), size);
    if (length <= 0) return false;
    wide.resize(static_cast<std::size_t>(length));
    if (std::any_of(wide.begin(), wide.end(), IsRawByte)) return false;
    std::string again;
    return EncodeExactly(wide, again) && again == bytes;
}

bool CodePageCodec::EncodeExactly(std::wstring_view wide, std::string& bytes) const {
    constexpr std::size_t kLongestChar = 4;
    if (wide.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()) / kLongestChar) return false;
    bytes.resize(wide.size() * kLongestChar);
    // UTF-8 has no characters to guess and refuses the questions about them.
    const bool isUtf8 = codePage_ == CP_UTF8;
    BOOL guessed = FALSE;
    const int length =
        WideCharToMultiByte(codePage_, isUtf8 ? WC_ERR_INVALID_CHARS : WC_NO_BEST_FIT_CHARS, wide.data(),
                            static_cast<int>(wide.size()), bytes.data(), static_cast<int>(bytes.size()),
                            nullptr, isUtf8 ? nullptr : &guessed);
    if (length <= 0 || guessed) return false;
    bytes.resize(static_cast<std::size_t>(length));
    return true;
}

std::size_t CodePageCodec::CharLength(std::string_view bytes) const {
    if (codePage_ == CP_UTF8) return ReadUtf8(bytes, 0).length;
    const bool isPair = bytes.size() > 1 && IsDBCSLeadByteEx(codePage_, static_cast<BYTE>(bytes[0]));
    return isPair ? 2 : 1;
}

std::string CodePageCodec::Decode(std::string_view bytes) const {
    if (AsciiLength(bytes) == bytes.size()) return std::string(bytes);
    std::wstring wide;
    return DecodeExactly(bytes, wide) ? NarrowText(wide) : DecodeOneByOne(bytes);
}

std::string CodePageCodec::DecodeOneByOne(std::string_view bytes) const {
    std::string text;
    text.reserve(bytes.size());
    std::wstring wide;
    while (!bytes.empty()) {
        const std::size_t ascii = AsciiLength(bytes);
        text.append(bytes.substr(0, ascii));
        bytes.remove_prefix(ascii);
        if (bytes.empty()) break;
        std::size_t length = CharLength(bytes);
        if (DecodeExactly(bytes.substr(0, length), wide)) {
            text.append(NarrowText(wide));
        } else {
            // What follows a lead byte that leads nowhere may be a character of its own.
            length = 1;
            AppendUtf8(text, kRawBytes + static_cast<unsigned char>(bytes.front()));
        }
        bytes.remove_prefix(length);
    }
    return text;
}

EncodedText CodePageCodec::Encode(std::string_view text) const {
    EncodedText result;
    const std::wstring wide = WidenText(text);
    if (std::none_of(wide.begin(), wide.end(), IsRawByte) && EncodeExactly(wide, result.bytes)) return result;

    result.bytes.clear();
    std::string bytes;
    while (!text.empty()) {
        const std::size_t ascii = AsciiLength(text);
        result.bytes.append(text.substr(0, ascii));
        text.remove_prefix(ascii);
        if (text.empty()) break;
        const Utf8Character c = ReadWideUtf8(text, 0);
        const std::string_view character = text.substr(0, c.length);
        if (c.valid && IsRawByte(c.codePoint)) {
            result.bytes.push_back(static_cast<char>(c.codePoint - kRawBytes));
        } else if (c.valid && !IsSurrogate(c.codePoint) && EncodeExactly(WidenText(character), bytes)) {
            result.bytes.append(bytes);
        } else {
            result.unencodable = std::string(character);
            return result;
        }
        text.remove_prefix(c.length);
    }
    return result;
}

} // namespace quillbay
