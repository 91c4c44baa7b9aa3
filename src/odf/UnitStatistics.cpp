#include "odf/UnitStatistics.h"

#include "common/TextLines.h"
#include "common/modMisc.h"
#include "platform/CodePage.h"

#include <optional>

namespace quillbay {

namespace {

constexpr std::size_t kMaxFileBytes = 64u << 20;

std::string Caption(std::string_view key, const std::optional<std::string_view>& value) {
    std::string caption = std::string(key) + " = ";
    if (!value) return caption + "(File does not contain '" + std::string(key) + "')";
    // A character of the code page takes two bytes at most.
    const std::string text = DecodeSystemText(value->substr(0, 4 * kMaxUnitValueCharacters));
    caption += CutText(text, kMaxUnitValueCharacters);
    return caption;
}

/// What stands behind the key, a blank, `=` and one more character.
std::string_view ValueOf(std::string_view key, std::string_view line) {
    line.remove_prefix(key.size() + 2);
    return line.substr(line.empty() ? 0 : 1);
}

} // namespace

UnitCaptions FindUnitStatistics(std::string_view odf) {
    std::array<std::optional<std::string_view>, kUnitKeys.size()> values;
    ForEachLine(odf, [&](std::string_view line) {
        for (std::size_t i = 0; i < kUnitKeys.size(); ++i) {
            const std::string_view key = kUnitKeys[i];
            if (line.starts_with(key) && line.substr(key.size()).starts_with(" ="))
                values[i] = ValueOf(key, line);
        }
    });
    UnitCaptions captions;
    for (std::size_t i = 0; i < kUnitKeys.size(); ++i)
        captions[i] = Caption(kUnitKeys[i], values[i]);
    return captions;
}

UnitCaptions ReadUnitStatistics(const FileSystem& files, std::string_view file) {
    return FindUnitStatistics(files.Read(file, 0, kMaxFileBytes).ValueOf({}));
}

} // namespace quillbay
