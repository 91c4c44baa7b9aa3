#include "library/JobPlan.h"

#include "common/PathText.h"

namespace quillbay {

namespace {

/// The known folders of a folder that must be there.
KnownFolders ListExisting(const FileSystem& files, const std::string& root, Detail detail,
                          ReadFailure& failure) {
    auto folders = ListKnownFolders(files, root, detail, {}, &failure);
    if (folders.back().empty() && !failure) {
        failure.path = root;
        failure.error = std::make_error_code(std::errc::no_such_file_or_directory);
    }
    return folders;
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
    for (auto& mod : library.mods) {
        if (mod.path == job.mod)
            plan.installed = std::move(mod);
        else
            plan.otherMods.push_back(std::move(mod));
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
