#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What the ODF checker does to the bytes of a file. Every byte keeps its value; only line ends become CR LF.
namespace quillbay {

/// Whether a text box would take too long to show the file: it has more than 4 MB, or a line of more than
/// 256 KB.
bool IsTooLargeToShow(std::string_view bytes);

/// The file without comment lines and blank lines, each line ended by CR LF; none when no line is to be
/// removed, or when the file holds a lone LF: what looks like several lines elsewhere would be one comment.
std::optional<std::string> RemoveUnusedLines(std::string_view bytes);

/// The file with each line ended by CR LF, the last one too.
std::string WithLineEnds(std::string_view bytes);

} // namespace quillbay
