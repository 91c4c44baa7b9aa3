#include "platform/archive/EntryName.h"

#include "platform/Utf8.h"

#include <algorithm>
#include <optional>

namespace quillbay {

namespace {

/// Code page 437 from 0x80 on.
constexpr std::u16string_view kUpperHalf = u"ÇüéâäàåçêëèïîìÄÅ"
                                           u"ÉæÆôöòûùÿÖÜ¢£¥₧ƒ"
                                           u"áíóúñÑªº¿⌐¬½¼¡«»"
                                           u"░▒▓│┤╡╢╖╕╣║╗╝╜╛┐"
                                           u"└┴┬├─┼╞╟╚╔╩╦╠═╬╧"
                                           u"╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀"
                                           u"αßΓπΣσµτΦΘΩδ∞φε∩"
                                           u"≡±≥≤⌠⌡÷≈°∙·√ⁿ²■\u00a0";

/// Nothing for a text with a character that the code page lacks.
std::optional<std::string> ToCodePage437(std::string_view text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size();) {
        const auto character = ReadUtf8(text, at);
        at += character.length;
        if (character.codePoint < 0x80) {
            bytes += static_cast<char>(character.codePoint);
            continue;
        }
        const auto found = std::ranges::find(kUpperHalf, character.codePoint);
        if (found == kUpperHalf.end()) return std::nullopt;
        bytes += static_cast<char>(0x80 + (found - kUpperHalf.begin()));
    }
    return bytes;
}

std::string FromCodePage437(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        AppendUtf8(text, byte < 0x80 ? char32_t{byte} : char32_t{kUpperHalf[byte - 0x80U]});
    }
    return text;
}

} // namespace

bool IsUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const auto character = ReadUtf8(text, at);
        if (!character.valid) return false;
        at += character.length;
    }
    return true;
}

std::string EntryNameText(std::string_view name, bool fromCodePage437) {
    if (!IsUtf8(name)) return FromCodePage437(name);
    if (!fromCodePage437) return std::string(name);
    const auto bytes = ToCodePage437(name);
    return bytes && IsUtf8(*bytes) ? *bytes : std::string(name);
}

} // namespace quillbay
