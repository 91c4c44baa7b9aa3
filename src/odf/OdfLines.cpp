#include "odf/OdfLines.h"

#include "common/modMisc.h"

#include <algorithm>

namespace quillbay {

namespace {

constexpr std::string_view kAssignment = " = ";
constexpr std::string_view kWeapon = "weapon";

constexpr char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// `start` is in lower case.
bool StartsInAnyCase(std::string_view line, std::string_view start) {
    return line.size() >= start.size() && std::equal(start.begin(), start.end(), line.begin(),
                                                     [](char a, char b) { return a == LowerAscii(b); });
}

std::string_view WithoutFirst(std::string_view text) { return text.substr(CutText(text, 1).size()); }

std::string_view WithoutLast(std::string_view text) {
    while (!text.empty()) {
        const auto byte = static_cast<unsigned char>(text.back());
        text.remove_suffix(1);
        if ((byte & 0xC0U) != 0x80U) break;
    }
    return text;
}

std::optional<std::string_view> QuotedFieldAfter(std::string_view line, std::string_view start) {
    return line.starts_with(start) ? QuotedField(line) : std::nullopt;
}

bool BeginsWithNumberAboveZero(std::string_view text) {
    const std::string_view digits = text.substr(0, text.find_first_not_of("0123456789"));
    return digits.find_first_not_of('0') != std::string_view::npos;
}

/// The value of `key =`: from the second character after the `=` on.
std::optional<std::string> LoweredValue(std::string_view line, std::string_view keyAndSign) {
    if (!StartsInAnyCase(line, keyAndSign)) return std::nullopt;
    line = line.substr(0, line.find_last_not_of(' ') + 1);
    std::string value(RestFrom(line, keyAndSign.size() + 2));
    std::ranges::transform(value, value.begin(), LowerAscii);
    return value;
}

} // namespace

std::optional<std::string_view> QuotedField(std::string_view line) {
    const auto open = line.find('"');
    if (open == std::string_view::npos) return std::nullopt;
    line.remove_prefix(open + 1);
    return line.substr(0, line.find('"'));
}

std::string_view RestFrom(std::string_view line, std::size_t position) {
    return line.substr(CutText(line, position - 1).size());
}

std::optional<std::string_view> SettingValue(std::string_view line, std::string_view key) {
    if (!line.starts_with(key) || !line.substr(key.size()).starts_with(" =")) return std::nullopt;
    return RestFrom(line, key.size() + 4);
}

std::optional<std::string_view> RaceFileReference(std::string_view line) {
    return StartsInAnyCase(line, "race") ? QuotedField(line) : std::nullopt;
}

std::optional<std::string_view> RaceName(std::string_view line) {
    return QuotedFieldAfter(line, "name = \"");
}

std::optional<std::string_view> IncludedOdf(std::string_view line) {
    constexpr std::string_view start = "#include \"";
    if (!line.starts_with(start)) return std::nullopt;
    return WithoutLast(line.substr(start.size()));
}

std::optional<std::string_view> RaceValue(std::string_view line) {
    return QuotedFieldAfter(line, "race = \"");
}

std::optional<std::string> WeaponOdf(std::string_view line) {
    if (!StartsInAnyCase(line, kWeapon)) return std::nullopt;
    const std::string_view key = line.substr(0, line.find(kAssignment));
    if (!BeginsWithNumberAboveZero(key.substr(kWeapon.size(), 3))) return std::nullopt;
    const auto name = QuotedField(line);
    if (!name) return std::nullopt;
    return std::string(*name).append(kOdfEnding);
}

std::optional<std::string> TooltipValue(std::string_view line) { return LoweredValue(line, "tooltip ="); }

std::optional<std::string> VerboseTooltipValue(std::string_view line) {
    return LoweredValue(line, "verbosetooltip =");
}

std::optional<std::string> BuildItemOdf(std::string_view line) {
    if (!StartsInAnyCase(line, "builditem")) return std::nullopt;
    const auto sign = line.find(kAssignment);
    if (sign == std::string_view::npos) return std::nullopt;
    std::string_view value = line.substr(sign + kAssignment.size());
    value = value.substr(0, value.find(kAssignment));
    std::string completed(value);
    if (!value.ends_with(".odf\"")) completed = std::string(WithoutLast(value)).append(".odf\"");
    return std::string(WithoutLast(WithoutFirst(completed)));
}

} // namespace quillbay
