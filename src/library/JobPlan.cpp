#include "library/JobPlan.h"

#include "platform/CaseFold.h"

#include <algorithm>
#include <utility>

namespace quillbay {

namespace {

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
    const auto rows = ScanModLibrary(files, job.modsFolder);
    return std::ranges::find(rows, job.mod, &ModRow::path) == rows.end() ? respelled : mods.end();
}

} // namespace

void ReadJobPlan(const FileSystem& files, const ModJob& job, Detail detail, JobPlan& plan) {
    plan.job = job;
    plan.job.gameDirectory = files.RealPath(job.gameDirectory).ValueOr(job.gameDirectory);
    plan.modFolder = files.RealPath(job.ModFolder()).ValueOr(job.ModFolder());

    const auto modFolders = ListExisting(files, plan.modFolder, detail, plan.failure);
    plan.gameFolders = ListExisting(files, plan.job.gameDirectory, Detail::Names, plan.failure);
    if (plan.failure) return;
    const auto& ownEntries = modFolders.back().front().entries;
    auto library = ListInstalledMods(files, job.modsFolder, {job.mod, ownEntries}, plan.failure);
    plan.leftoverFolders = std::move(library.tempBackups);
    plan.otherMods = std::move(library.mods);
    if (const auto own = FindOwn(files, job, plan.otherMods); own != plan.otherMods.end()) {
        plan.installed = std::move(*own);
        plan.otherMods.erase(own);
    }
    if (plan.installed)
        plan.backupFolders = ListExisting(files, plan.installed->backup, Detail::Names, plan.failure);
    if (plan.failure) return;

    plan.modFiles = CollectModFiles(modFolders);
    AddLeftovers(modFolders, plan.leftoverFiles);
    AddLeftovers(plan.gameFolders, plan.leftoverFiles);
    AddLeftovers(plan.backupFolders, plan.leftoverFiles);
}

void SweepLeftovers(FileSystem& files, const JobPlan& plan) {
    RestoreBackupTimes(files, plan.otherMods);
    if (plan.installed) RestoreBackupTimes(files, {*plan.installed});
    for (const auto& path : plan.leftoverFiles)
        Ignore(files.RemoveFile(path));
    for (const auto& path : plan.leftoverFolders)
        Ignore(files.RemoveTree(path));
}

} // namespace quillbay
