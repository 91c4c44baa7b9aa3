#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The system code page in which the game's and the mods' text files are written: on Windows the ANSI code
/// page, on POSIX Windows-1252 with all 256 codes mapped.
namespace quillbay {

/// Bytes of the code page as UTF-8. Every sequence of bytes decodes: a byte that the code page cannot decode
/// becomes the private code point U+F700 + byte, which EncodeSystemText turns back.
std::string DecodeSystemText(std::string_view bytes);

struct EncodedText {
    std::string bytes;
    /// The first character (UTF-8) that the code page does not hold; when set, `bytes` must not be written.
    std::optional<std::string> unencodable;
};

/// UTF-8 as bytes of the code page; never substitutes a character.
EncodedText EncodeSystemText(std::string_view text);

} // namespace quillbay
