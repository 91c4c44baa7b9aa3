#include "library/InstalledMods.h"

#include "library/FindEntry.h"
#include "platform/PathText.h"

#include <algorithm>
#include <functional>

namespace quillbay {

namespace {

class LibraryWalk {
public:
    LibraryWalk(const FileSystem& files, const ListedMod& listed, InstalledMods& found, ReadFailure& failure)
        : files_(files), listed_(listed), found_(found), failure_(failure) {}

    std::vector<DirEntry> List(std::string_view folder) {
        auto entries = files_.List(folder, Detail::Names);
        failure_.Note(folder, entries.Error());
        return std::move(entries).ValueOr({});
    }

    void Visit(ModPath path, std::string folder, bool withAddons) {
        const bool isListed = path == listed_.path;
        const auto listedNow = isListed ? std::vector<DirEntry>() : List(folder);
        const auto& entries = isListed ? listed_.entries : listedNow;
        const auto addons = withAddons ? FindEntry(entries, kAddonName, EntryKind::Folder) : nullptr;
        if (addons) VisitAddons(path, Join(folder, addons->name));
        if (FindEntry(entries, kTempBackup, EntryKind::Folder))
            found_.leftovers.push_back(Join(folder, kTempBackup));
        const auto* backup = FindBackup(entries);
        if (!backup) return;

        InstalledMod mod;
        mod.path = std::move(path);
        mod.folder = std::move(folder);
        mod.backup = Join(mod.folder, backup->name);
        mod.backupIsLink = backup->isLink;
        auto record = ReadInstallRecord(files_, mod.backup);
        failure_.Note(mod.backup, record.Error());
        mod.record = std::move(record).ValueOr({});
        if (mod.record && mod.record->finished == kGivenUp) {
            found_.leftovers.push_back(std::move(mod.backup));
            return;
        }
        mod.order = mod.record ? mod.record->number : TimeOf(mod.backup);
        found_.mods.push_back(std::move(mod));
    }

private:
    void VisitAddons(const ModPath& mod, const std::string& addonFolder) {
        for (const auto& entry : List(addonFolder))
            if (entry.kind == EntryKind::Folder)
                Visit({mod.text + "\\Addon\\" + entry.name}, Join(addonFolder, entry.name), false);
    }

    std::int64_t TimeOf(const std::string& backup) {
        const auto info = files_.Stat(backup);
        failure_.Note(backup, info.Error());
        return info ? info->modified.time_since_epoch().count() : 0;
    }

    const FileSystem& files_;
    const ListedMod& listed_;
    InstalledMods& found_;
    ReadFailure& failure_;
};

} // namespace

const DirEntry* FindBackup(const std::vector<DirEntry>& modFolderEntries) {
    return FindEntry(modFolderEntries, kBackupName, EntryKind::Folder);
}

bool IsInstalled(const FileSystem& files, std::string_view modFolder) {
    if (modFolder.empty()) return false;
    const auto found = files.Stat(Join(modFolder, kBackupName));
    if (!found || found->kind == EntryKind::Folder) return static_cast<bool>(found);
    // A file `Backup` may hide a folder `backup`.
    const auto entries = files.List(modFolder, Detail::Names);
    return entries && FindBackup(*entries);
}

bool HasExactBackup(const FileSystem& files, std::string_view modFolder) {
    return !modFolder.empty() && IsFolderSpelled(files, Join(modFolder, kBackupName));
}

std::vector<ModRow> FilterInstalled(const FileSystem& files, std::string_view modLibrary,
                                    const std::vector<ModRow>& rows) {
    std::vector<ModRow> installed;
    for (const ModRow& row : rows) {
        if (!row.path.Empty() && HasExactBackup(files, Join(modLibrary, row.path.text))) {
            installed.push_back(row);
        }
    }
    return installed;
}

std::string_view InstalledMod::Name() const { return LastComponent(path.text); }

InstalledMods ListInstalledMods(const FileSystem& files, std::string_view modLibrary, const ListedMod& listed,
                                ReadFailure& failure) {
    InstalledMods found;
    LibraryWalk walk(files, listed, found, failure);
    for (const auto& entry : walk.List(modLibrary))
        if (entry.kind == EntryKind::Folder) walk.Visit({entry.name}, Join(modLibrary, entry.name), true);
    return found;
}

std::vector<InstalledMod> ListNewestFirst(const FileSystem& files, std::string_view modLibrary,
                                          ReadFailure& failure) {
    auto mods = ListInstalledMods(files, modLibrary, {{}, {}}, failure).mods;
    std::erase_if(mods, [](const InstalledMod& mod) {
        const std::string_view top = std::string_view(mod.path.text).substr(0, mod.path.text.find('\\'));
        return IsAddonRow(top) || top == kNoModsRow || top.starts_with(kLeftoverPrefix);
    });
    std::ranges::stable_sort(mods, std::greater(), &InstalledMod::order);
    return mods;
}

std::int64_t NextInstallNumber(const std::vector<InstalledMod>& installed) {
    const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    std::int64_t number = now.time_since_epoch().count();
    for (const auto& mod : installed)
        number = std::max(number, 1 + (mod.record ? mod.record->lastNumber : mod.order));
    return number;
}

} // namespace quillbay
