#include "odf/UnitStatistics.h"

#include "common/modMisc.h"
#include "odf/OdfLines.h"
#include "platform/CodePage.h"
#include "platform/TextLines.h"

#include <optional>

namespace quillbay {

namespace {

constexpr std::size_t kMaxFileBytes = 64u << 20;

/// `line` is the one that holds the value, as its bytes; none when there is none.
std::string Caption(std::string_view key, const std::optional<std::string_view>& line) {
    std::string caption = std::string(key) + " = ";
    if (!line) return caption + "(File does not contain '" + std::string(key) + "')";
    // More bytes than the shown characters can take: a character has two at most.
    const std::string text = DecodeSystemText(line->substr(0, 4 * kMaxUnitValueCharacters));
    return caption.append(CutText(SettingValue(text, key).value_or(""), kMaxUnitValueCharacters));
}

} // namespace

UnitCaptions FindUnitStatistics(std::string_view odf) {
    std::array<std::optional<std::string_view>, kUnitKeys.size()> lines;
    ForEachLine(odf, [&](std::string_view line) {
        for (std::size_t i = 0; i < kUnitKeys.size(); ++i)
            if (SettingValue(line, kUnitKeys[i])) lines[i] = line;
    });
    UnitCaptions captions;
    for (std::size_t i = 0; i < kUnitKeys.size(); ++i)
        captions[i] = Caption(kUnitKeys[i], lines[i]);
    return captions;
}

UnitCaptions ReadUnitStatistics(const FileSystem& files, std::string_view file) {
    return FindUnitStatistics(files.Read(file, 0, kMaxFileBytes).ValueOr({}));
}

} // namespace quillbay
