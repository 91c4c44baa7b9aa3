#include "library/ModExchange.h"

#include "library/FindEntry.h"
#include "library/InstalledMods.h"
#include "library/ModFiles.h"
#include "library/ModRows.h"
#include "platform/CaseFold.h"
#include "platform/PathText.h"

#include <algorithm>

namespace quillbay {

namespace {

constexpr std::string_view kWaiting = "new";
constexpr std::string_view kReplaced = "old";

/// A question that fails is an error, not a no, which would cost files of the game here.
Result<bool> Exists(const FileSystem& files, std::string_view path) {
    const auto found = files.Stat(path);
    if (found) return true;
    if (found.Error() == std::errc::no_such_file_or_directory) return false;
    return found.Error();
}

/// True for the folders of a mod that hold files of the game.
bool IsKept(const DirEntry& entry) {
    return entry.kind == EntryKind::Folder &&
           (EqualFolded(entry.name, kBackupName) || EqualFolded(entry.name, kChangedName));
}

Result<bool> HoldsKept(const FileSystem& files, const std::string& folder) {
    const auto entries = files.List(folder, Detail::Names);
    if (!entries) return entries.Error();
    return std::ranges::any_of(*entries, IsKept);
}

std::error_code MoveKeptFolders(FileSystem& files, const std::string& from, const std::string& to,
                                const std::vector<DirEntry>& entries) {
    for (const DirEntry& entry : entries)
        if (IsKept(entry))
            if (const auto error = files.Rename(Join(from, entry.name), Join(to, entry.name))) return error;
    return {};
}

/// An addon that both versions have keeps its new files.
std::error_code MoveKeptAddon(FileSystem& files, const std::string& from, const std::string& to,
                              bool isLink) {
    const auto isThere = Exists(files, to);
    if (!isThere) return isThere.Error();
    if (!*isThere) return files.Rename(from, to);
    if (isLink) return std::make_error_code(std::errc::operation_not_supported);
    const auto entries = files.List(from, Detail::Names);
    return entries ? MoveKeptFolders(files, from, to, *entries) : entries.Error();
}

std::error_code MoveKeptAddons(FileSystem& files, const std::string& from, const std::string& to) {
    const auto addons = files.List(from, Detail::Names);
    if (!addons) return addons.Error();
    for (const DirEntry& addon : *addons) {
        if (addon.kind != EntryKind::Folder) continue;
        const std::string folder = Join(from, addon.name);
        const auto holds = HoldsKept(files, folder);
        if (!holds) return holds.Error();
        if (!*holds) continue;
        if (const auto error = files.MakeFolder(to)) return error;
        if (const auto error = MoveKeptAddon(files, folder, Join(to, addon.name), addon.isLink)) return error;
    }
    return {};
}

/// Moves the game's files from one version of a mod to the other; called the other way round it brings them
/// back.
std::error_code MoveKept(FileSystem& files, const std::string& from, const std::string& to) {
    const auto entries = files.List(from, Detail::Names);
    if (!entries) return entries.Error();
    if (const auto error = MoveKeptFolders(files, from, to, *entries)) return error;
    const DirEntry* addons = FindEntry(*entries, kAddonName, EntryKind::Folder);
    if (!addons) return {};
    const std::string fromAddons = Join(from, addons->name);
    const std::string toAddons = Join(to, addons->name);
    // A link is moved itself; what it leads to stays where it is.
    return addons->isLink ? MoveKeptAddon(files, fromAddons, toAddons, true)
                          : MoveKeptAddons(files, fromAddons, toAddons);
}

/// `name`, or the first number behind it that nothing in `mods` has.
Result<std::string> FreePlace(const FileSystem& files, const std::string& modLibrary,
                              const std::string& name) {
    std::string place = Join(modLibrary, name);
    for (int number = 2;; ++number) {
        const auto isTaken = Exists(files, place);
        if (!isTaken) return isTaken.Error();
        if (!*isTaken) return place;
        place = Join(modLibrary, name + " (" + std::to_string(number) + ')');
    }
}

std::error_code UndoReplacement(FileSystem& files, const std::string& staging, const std::string& modLibrary,
                                const std::string& name) {
    const std::string old = Join(Join(staging, kReplaced), name);
    const std::string waiting = WaitingPlace(staging, name);
    const auto isWaiting = Exists(files, waiting);
    if (!isWaiting) return isWaiting.Error();
    if (!*isWaiting) {
        // The new version has its place, unless somebody has taken it away since.
        const auto isThere = Exists(files, Join(modLibrary, name));
        if (!isThere) return isThere.Error();
        if (*isThere) return {};
    } else if (const auto error = MoveKept(files, waiting, old)) {
        return error;
    }
    const auto place = FreePlace(files, modLibrary, name);
    return place ? files.Rename(old, *place) : place.Error();
}

std::error_code UndoReplacements(FileSystem& files, const std::string& staging,
                                 const std::string& modLibrary) {
    const auto replaced = files.List(Join(staging, kReplaced), Detail::Names);
    if (replaced.Error() == std::errc::no_such_file_or_directory) return {};
    if (!replaced) return replaced.Error();
    std::error_code first;
    for (const DirEntry& mod : *replaced) {
        const auto error = UndoReplacement(files, staging, modLibrary, mod.name);
        if (!first) first = error;
    }
    return first;
}

} // namespace

std::vector<std::string> StagingPlaces(const FileSystem& files, const std::string& modLibrary) {
    std::vector<std::string> places{Join(modLibrary, kStagingName)};
    const auto real = files.RealPath(modLibrary);
    if (!real) return places;
    const std::string_view parent = Parent(*real);
    const auto info = files.Stat(*real);
    if (!parent.empty() && info && !info->isMount) places.insert(places.begin(), Join(parent, kStagingName));
    return places;
}

std::string WaitingPlace(const std::string& staging, std::string_view name) {
    return Join(Join(staging, kWaiting), name);
}

std::error_code ReplaceMod(FileSystem& files, const std::string& staging, const std::string& modLibrary,
                           const std::string& name) {
    const std::string place = Join(modLibrary, name);
    const std::string old = Join(Join(staging, kReplaced), name);
    if (const auto error = files.MakeFolder(Join(staging, kReplaced))) return error;
    if (const auto error = files.Rename(place, old)) return error;
    auto error = MoveKept(files, old, WaitingPlace(staging, name));
    if (!error) error = files.Rename(WaitingPlace(staging, name), place);
    Ignore(error ? UndoReplacement(files, staging, modLibrary, name) : files.RemoveTree(old));
    return error;
}

std::error_code RecoverMods(FileSystem& files, const std::string& staging, const std::string& modLibrary) {
    if (const auto error = UndoReplacements(files, staging, modLibrary)) return error;
    const auto error = files.RemoveTree(staging);
    return error == std::errc::no_such_file_or_directory ? std::error_code{} : error;
}

void RecoverMods(FileSystem& files, const std::string& modLibrary) {
    for (const std::string& staging : StagingPlaces(files, modLibrary))
        Ignore(RecoverMods(files, staging, modLibrary));
}

} // namespace quillbay
