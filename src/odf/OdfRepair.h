#pragma once

#include "platform/CodePage.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// What the ODF checker does to the bytes of a file. Every byte keeps its value; only line ends become CR LF.
namespace quillbay {

/// A larger file is not shown for repair.
inline constexpr std::size_t kLargestShownOdf = std::size_t{4} * 1024 * 1024; // bytes

/// The file without comment lines and blank lines, each line ended by CR LF; none when no line is to be
/// removed, or when the file holds a lone LF: what looks like several lines elsewhere would be one comment.
std::optional<std::string> RemoveUnusedLines(std::string_view bytes);

/// The file as a text to edit, UTF-8: its lines with CR LF between them and none at the end. A lone LF inside
/// a line becomes U+2028, which text boxes keep apart from an end of line.
std::string OdfBytesToText(std::string_view bytes);
/// The same for one line that is decoded.
std::string OdfLineToText(std::string_view line);
/// The text as the bytes of a file: CR LF after the last line too.
EncodedText OdfTextToBytes(std::string_view text);
/// Whether the two turn the file into itself but for its line ends. Not so for the rare byte sequences that
/// a code page decodes like others.
bool KeepsEveryByte(std::string_view bytes, std::string_view text);

} // namespace quillbay
