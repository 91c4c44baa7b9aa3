#include "library/ModJob.h"

#include "library/FindEntry.h"
#include "library/GameDirectory.h"
#include "library/GivenUpBackup.h"
#include "platform/CaseFold.h"
#include "platform/PathText.h"

#include <algorithm>
#include <utility>

namespace quillbay {

namespace {

/// Takes the first component off `path`; empty when nothing is left.
std::string_view TakeComponent(std::string_view& path) {
    while (!path.empty() && IsSeparator(path.front()))
        path.remove_prefix(1);
    std::size_t length = 0;
    while (length < path.size() && !IsSeparator(path[length]))
        ++length;
    const std::string_view component = path.substr(0, length);
    path.remove_prefix(length);
    return component;
}

/// The known folders of a folder that must be there.
KnownFolders ListExisting(const FileSystem& files, const std::string& root, Detail detail,
                          ReadFailure& failure) {
    auto folders = ListKnownFolders(files, root, detail, &failure);
    if (folders.back().empty() && !failure) {
        failure.path = root;
        failure.error = std::make_error_code(std::errc::no_such_file_or_directory);
    }
    return folders;
}

/// The installed mod that is the job's. The library may list it in another letter case, which is another mod
/// only where it lists the job's own spelling too.
std::vector<InstalledMod>::iterator FindOwn(const FileSystem& files, const ModJob& job,
                                            std::vector<InstalledMod>& mods) {
    const auto exact = std::ranges::find(mods, job.mod, &InstalledMod::path);
    if (exact != mods.end()) return exact;
    const auto respelled = std::ranges::find_if(
        mods, [&](const InstalledMod& mod) { return EqualFolded(mod.path.text, job.mod.text); });
    if (respelled == mods.end()) return respelled;
    const auto rows = ScanModLibrary(files, job.modLibrary);
    return std::ranges::find(rows, job.mod, &ModRow::path) == rows.end() ? respelled : mods.end();
}

/// Whether a real path lies in a real folder, but not in a part of it that does not count; without a part it
/// is empty.
bool IsInside(const std::string& path, const std::string& folder, const std::string& part) {
    return IsSameOrInside(path, folder) && (part.empty() || !IsSameOrInside(path, part));
}

/// The first link among the folders and files that leads into `root`, but not into a `part` of it that does
/// not count; empty when none does.
std::string FindLinkInto(const FileSystem& files, const KnownFolders& known, const std::string& root,
                         const std::string& part = {}) {
    const auto leadsIn = [&](const std::string& path) {
        const auto real = files.RealPath(path);
        return real && IsInside(*real, root, part);
    };
    for (const auto& atPosition : known) {
        for (const auto& folder : atPosition) {
            if (folder.isLink && leadsIn(folder.path)) return folder.path;
            for (const auto& entry : folder.entries) {
                if (!entry.isLink || entry.kind != EntryKind::File) continue;
                if (auto path = Join(folder.path, entry.name); leadsIn(path)) return path;
            }
        }
    }
    return {};
}

void FindRefusal(const FileSystem& files, JobPlan& plan) {
    const auto library = files.RealPath(plan.job.modLibrary).ValueOr({});
    plan.refused = FindWayIntoGame(files, plan.modFolder, plan.foldersInMod, library, plan.job.gameDirectory);
    if (plan.refused.empty()) plan.refused = FindLinkInto(files, plan.gameFolders, plan.modFolder);
    if (!plan.refused.empty()) {
        plan.refusal = Refusal::LeadsIntoGame;
    } else if (plan.installed && plan.installed->backupIsLink) {
        plan.refusal = Refusal::BackupIsLink;
        plan.refused = plan.installed->backup;
    }
}

/// The latest folder of kept files: its name is a date, so that it is the last one by name.
void ReadLastChanged(const FileSystem& files, const std::vector<DirEntry>& modEntries, JobPlan& plan) {
    const auto* changed = FindEntry(modEntries, kChangedName, EntryKind::Folder);
    if (!changed) return;
    const auto folder = Join(plan.modFolder, changed->name);
    const auto entries = files.List(folder, Detail::Names);
    plan.failure.Note(folder, entries.Error());
    if (!entries || entries->empty()) return;
    plan.lastChanged = Join(folder, std::ranges::max_element(*entries, {}, &DirEntry::name)->name);
    plan.lastChangedFolders = ListKnownFolders(files, plan.lastChanged, Detail::Names);
    AddLeftovers(plan.lastChangedFolders, plan.leftoverFiles);
}

} // namespace

std::string FindWayIntoGame(const FileSystem& files, const std::string& modFolder,
                            const KnownFolders& foldersInMod, const std::string& library,
                            const std::string& game) {
    if (IsInside(modFolder, game, library) || IsSameOrInside(game, modFolder)) return modFolder;
    return FindLinkInto(files, foldersInMod, game, library);
}

bool IsSameOrInside(std::string_view path, std::string_view folder) {
    for (;;) {
        const std::string_view expected = TakeComponent(folder);
        if (expected.empty()) return true;
        if (!EqualFolded(TakeComponent(path), expected)) return false;
    }
}

std::string ModJob::FolderInLibrary() const {
    return mod.Empty() ? std::string() : Join(modLibrary, mod.text);
}

GameDirectoryState CheckGameDirectory(const FileSystem& files, std::string_view gameDirectory,
                                      std::string_view modLibrary) {
    if (!IsExistingFolder(files, gameDirectory)) return GameDirectoryState::Missing;
    const auto game = files.RealPath(gameDirectory);
    if (!game) return GameDirectoryState::Missing;
    const auto mods = files.RealPath(modLibrary);
    if (mods && IsSameOrInside(*game, *mods)) return GameDirectoryState::InsideMods;
    return GameDirectoryState::Usable;
}

void ReadJobPlan(const FileSystem& files, const ModJob& job, Detail detail, JobPlan& plan) {
    plan.job = job;
    plan.job.gameDirectory = files.RealPath(job.gameDirectory).ValueOr(job.gameDirectory);
    plan.modFolder = files.RealPath(job.FolderInLibrary()).ValueOr(job.FolderInLibrary());

    plan.foldersInMod = ListExisting(files, plan.modFolder, detail, plan.failure);
    plan.gameFolders = ListExisting(files, plan.job.gameDirectory, Detail::Names, plan.failure);
    if (plan.failure) return;
    const auto& ownEntries = plan.foldersInMod.back().front().entries;
    auto library = ListInstalledMods(files, job.modLibrary, {job.mod, ownEntries}, plan.failure);
    plan.leftoverFolders = std::move(library.leftovers);
    plan.otherMods = std::move(library.mods);
    if (const auto own = FindOwn(files, job, plan.otherMods); own != plan.otherMods.end()) {
        plan.installed = std::move(*own);
        plan.otherMods.erase(own);
        plan.backupFolders = ListExisting(files, plan.installed->backup, Detail::Names, plan.failure);
    } else if (const auto* backup = FindBackup(ownEntries)) {
        const auto record = ReadInstallRecord(files, Join(plan.modFolder, backup->name));
        plan.wasGivenUp = record && *record && (*record)->finished == kGivenUp;
    }
    ReadLastChanged(files, ownEntries, plan);
    if (plan.failure) return;

    FindRefusal(files, plan);
    plan.modFiles = CollectModFiles(plan.foldersInMod);
    AddLeftovers(plan.foldersInMod, plan.leftoverFiles);
    AddLeftovers(plan.gameFolders, plan.leftoverFiles);
    AddLeftovers(plan.backupFolders, plan.leftoverFiles);
    for (auto& atPosition : plan.foldersInMod)
        for (auto& folder : atPosition)
            folder.entries = std::vector<DirEntry>(); // frees its memory, too
}

void SweepLeftovers(FileSystem& files, const JobPlan& plan) {
    for (const auto& path : plan.leftoverFiles)
        Ignore(files.RemoveFile(path));
    for (const auto& path : plan.leftoverFolders)
        Ignore(SweepRemains(files, path));
}

} // namespace quillbay
