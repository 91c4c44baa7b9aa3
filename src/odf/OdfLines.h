#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// How the game writes lines in its object definitions (ODF), and how each reader here recognises one. Lines
/// are UTF-8 without their line end; positions count characters from 1. A reader compares a fixed text at the
/// start of the line, so that an indented line is never recognised. A recogniser gives no value for a line
/// that is not its own, or that lacks the quote or the ` = ` that the value needs.
namespace quillbay {

/// The folders of the game's `odf` folder that hold definitions, in the order of their checking.
inline constexpr std::array<std::string_view, 9> kOdfFolders{
    "other",
    "commands",
    "special_weapons",
    "ships",
    "stations",
    "weapons",
    R"(weapons\phasers)",
    R"(weapons\photons)",
    R"(weapons\pulse)",
};
inline constexpr std::string_view kOdfEnding = ".odf";

/// Begins with `//`; an indented comment is none.
constexpr bool IsCommentLine(std::string_view line) { return line.starts_with("//"); }
/// Empty or only spaces; tabs do not count.
constexpr bool IsBlankLine(std::string_view line) {
    return line.find_first_not_of(' ') == std::string_view::npos;
}
/// What stands before the first `//`, wherever that is.
constexpr std::string_view CutAtComment(std::string_view line) { return line.substr(0, line.find("//")); }

/// The text between the first and the second double quote (or the end of the line); none without a quote.
std::optional<std::string_view> QuotedField(std::string_view line);
/// All characters from that position on; empty when the line is shorter.
std::string_view RestFrom(std::string_view line, std::size_t position);

/// The analyzer: what follows the key, a space, `=` and one more character; quotes and comments included.
std::optional<std::string_view> SettingValue(std::string_view line, std::string_view key);

// The races file and the race files.
std::optional<std::string_view> RaceFileReference(std::string_view line);
std::optional<std::string_view> RaceName(std::string_view line);

// The checker: lines that were cut at their comment.
/// The included file's name: without the last character of the line, whatever it is.
std::optional<std::string_view> IncludedOdf(std::string_view line);
std::optional<std::string_view> RaceValue(std::string_view line);
/// With `.odf`. The key must go on with a number that is not 0.
std::optional<std::string> WeaponOdf(std::string_view line);
/// Lower-cased (ASCII), with its quotes and without spaces at the end.
std::optional<std::string> TooltipValue(std::string_view line);
std::optional<std::string> VerboseTooltipValue(std::string_view line);
/// Without its first and last character, and with `.odf` unless the value ends in exactly `.odf"`.
std::optional<std::string> BuildItemOdf(std::string_view line);

} // namespace quillbay
