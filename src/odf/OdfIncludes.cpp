#include "odf/OdfIncludes.h"

#include "common/modMisc.h"
#include "platform/CaseFold.h"
#include "platform/TextLines.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>

namespace quillbay {

namespace {

constexpr std::size_t kPieceBytes = 1024 * 1024;
constexpr std::string_view kBeforeName = "#include \"";
constexpr std::string_view kAfterName = ".odf\"";

constexpr auto kStationNames = std::to_array<std::string_view>(
    {"research", "station", "turret", "pod", "weaponupgradepod", "weaponupgradepod2", "shieldupgradepod",
     "shieldupgradepod2", "sensorupgradepod", "sensorupgradepod2", "engineupgradepod", "engineupgradepod2",
     "lifesupportupgradepod", "lifesupportupgradepod2"});
constexpr auto kShipNames = std::to_array<std::string_view>({
    "const",    "battle1", "battle2",    "freight",   "cruise1", "cruise2", "cruise3",
    "fdestroy", "destroy", "frigate",    "scoutbase", "craft",   "assault", "colony",
    "fspecial", "special", "repairbase", "saucer",    "super",   "cargo",
});
constexpr auto kCommandNames = std::to_array<std::string_view>({"alert", "button", "formation", "trade"});

bool Holds(std::span<const std::string_view> names, std::string_view name) {
    return std::ranges::any_of(names, [&](std::string_view one) { return EqualFolded(one, name); });
}

void NoteLine(std::string_view line, OdfClasses& found) {
    line = TrimBlanks(line);
    if (line.size() < kBeforeName.size() + kAfterName.size()) return;
    if (!StartsFolded(line, kBeforeName)) return;
    line.remove_prefix(kBeforeName.size());
    if (!EndsFolded(line, kAfterName)) return;
    const auto name = line.substr(0, line.size() - kAfterName.size());
    if (Holds(kStationNames, name)) found.set(OdfStation);
    if (Holds(kShipNames, name)) found.set(OdfShip);
    if (Holds(kCommandNames, name)) found.set(OdfCommand);
}

} // namespace

OdfClasses OdfIncludesClass(const FileSystem& files, std::string_view file) {
    OdfClasses found;
    std::string text;
    for (std::uint64_t offset = 0;;) {
        const auto piece = files.Read(file, offset, kPieceBytes);
        if (piece) text += *piece;
        const bool isLast = !piece || piece->size() < kPieceBytes;
        // The line at the end goes on in the next piece, and its line end may still lack the LF.
        const auto lastEnd = isLast ? text.size() : text.rfind('\r');
        const std::size_t complete = lastEnd == std::string::npos ? 0 : lastEnd;
        ForEachLine(std::string_view(text).substr(0, complete), [&](auto line) { NoteLine(line, found); });
        if (isLast) return found;
        offset += piece->size();
        text.erase(0, complete);
        if (text.size() > kPieceBytes) text.assign(1, '?');
    }
}

} // namespace quillbay
