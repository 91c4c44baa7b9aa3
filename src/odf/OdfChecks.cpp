#include "odf/OdfChecks.h"

#include "odf/OdfLines.h"
#include "platform/TextLines.h"

#include <algorithm>

namespace quillbay {

namespace {

bool HasOddQuotes(std::string_view line, const OdfSurroundings&) {
    return std::ranges::count(line, '"') % 2 != 0;
}

template <auto NamedOdf>
bool NamesNoOdf(std::string_view line, const OdfSurroundings& around) {
    const auto name = NamedOdf(line);
    return name && !around.odfs.OdfExists(*name);
}

bool NamesNoRace(std::string_view line, const OdfSurroundings& around) {
    const auto race = RaceValue(line);
    return race && !around.races.contains(*race);
}

template <auto Value>
bool IsUnwritten(std::string_view line, const OdfSurroundings&) {
    constexpr std::array<std::string_view, 4> unwritten{"", R"("")", R"("writeme")", R"("write me")"};
    const auto value = Value(line);
    return value && std::ranges::find(unwritten, *value) != unwritten.end();
}

} // namespace

const std::array<OdfCheck, 7> kOdfChecks = std::to_array<OdfCheck>({
    {"Quotation error", "Incorrect quotation detected. Please repair.", "Incorrect quotation", HasOddQuotes},
    {"#include error", "Nonexistant #include value detected. Please repair.", "Nonexistant #include value",
     NamesNoOdf<IncludedOdf>},
    {"Race value error", "Incorrect race value detected. Please repair.", "Incorrect race value",
     NamesNoRace},
    {"Weapon odf error", "Nonexistant weapon value detected. Please repair.", "Nonexistant weapon value",
     NamesNoOdf<WeaponOdf>},
    {"Tooltip error", "Unwritten tooltip detected. Please repair.", "Unwritten toolip",
     IsUnwritten<TooltipValue>},
    {"Builditem value error", "Nonexistant buildItem value detected. Please repair.",
     "Nonexistant buildItem value", NamesNoOdf<BuildItemOdf>},
    {"Verbose Tooltip error", "Unwritten verbose tooltip detected. Please repair.",
     "Unwritten verbose tooltip", IsUnwritten<VerboseTooltipValue>},
});

std::optional<FailedOdfCheck> CheckOdfText(std::string_view text, const OdfCheckSet& checks,
                                           const OdfSurroundings& around) {
    std::optional<FailedOdfCheck> failed;
    std::size_t number = 0;
    ForEachLine(text, [&](std::string_view line) {
        const std::size_t at = number++;
        if (failed || IsCommentLine(line) || IsBlankLine(line)) return;
        line = CutAtComment(line);
        for (std::size_t i = 0; i < kOdfChecks.size() && !failed; ++i) {
            if (checks[i] && kOdfChecks[i].fails(line, around))
                failed = FailedOdfCheck{at, std::string(line), &kOdfChecks[i]};
        }
    });
    return failed;
}

} // namespace quillbay
