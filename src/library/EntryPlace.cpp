#include "library/EntryPlace.h"

#include "library/FileNames.h"
#include "library/InstalledMods.h"
#include "library/ModRows.h"
#include "platform/CaseFold.h"
#include "platform/PathText.h"

#include <algorithm>

namespace quillbay {

namespace {

constexpr std::string_view kClutter[] = {"__MACOSX", "Thumbs.db", ".DS_Store"};

bool HasDrive(std::string_view name) {
    return name.size() >= 2 && name[1] == ':' && ((name[0] | 0x20) >= 'a' && (name[0] | 0x20) <= 'z');
}

std::optional<LeftOutReason> WhyNot(std::string_view name) {
    const auto isName = [name](std::string_view other) { return EqualFolded(name, other); };
    if (isName(kBackupName)) return LeftOutReason::Backup;
    if (std::ranges::any_of(kClutter, isName) || StartsFolded(name, kLeftoverPrefix))
        return LeftOutReason::Clutter;
    if (FindNameFault(name) != NameFault::None) return LeftOutReason::Name;
    return std::nullopt;
}

} // namespace

EntryPlace FindPlace(const ArchiveEntry& entry) {
    EntryPlace place;
    std::string_view rest = entry.name;
    place.leadsOut = HasDrive(rest) || (!rest.empty() && IsSeparator(rest.front()));
    while (!rest.empty()) {
        const auto end = static_cast<std::size_t>(std::ranges::find_if(rest, IsSeparator) - rest.begin());
        const auto name = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (name.empty() || name == ".") continue;
        if (name == "..") place.leadsOut = true;
        place.names.push_back(name);
        if (place.leftOut) continue;
        place.leftOut = WhyNot(name);
        place.leftOutAt = place.names.size() - 1;
    }
    if (!place.leftOut && (entry.kind == EntryKind::Other || (entry.name.empty()))) {
        place.leftOut = entry.kind == EntryKind::Other ? LeftOutReason::Link : LeftOutReason::Name;
        place.leftOutAt = place.names.empty() ? 0 : place.names.size() - 1;
    }
    return place;
}

} // namespace quillbay
