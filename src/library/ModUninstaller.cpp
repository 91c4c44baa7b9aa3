#include "library/ModUninstaller.h"

#include "library/FolderMaker.h"
#include "platform/PathText.h"

#include <unordered_set>

namespace quillbay {

namespace {

class UninstallRun {
public:
    UninstallRun(FileSystem& files, const UninstallPlan& plan, const ProgressSink& progress)
        : files_(files), plan_(plan), progress_(progress),
          gameFolders_(files, plan.job.gameDirectory, plan.gameFolders), inPlace_(plan.items.size()) {}

    UninstallResult Run() {
        result_.failure = plan_.failure;
        if (plan_.failure) return std::move(result_);
        SweepLeftovers(files_, plan_);
        DeleteFiles();
        RestoreFiles();
        if (plan_.installed) {
            HandOver();
            result_.strangers = plan_.strangers;
            if (result_.BackupStays() || !GiveUpBackup()) KeepBackup();
        }
        const auto total = plan_.items.size();
        Report(JobPhase::DeletingBackup, total, total);
        return std::move(result_);
    }

private:
    void Report(JobPhase phase, std::size_t done, std::size_t total) const {
        if (progress_) progress_(phase, done, total);
    }

    /// What the mod added. Files with a saved copy leave the game when that takes their place, so that the
    /// game has one or the other at every moment.
    void DeleteFiles() {
        const auto total = plan_.items.size();
        for (std::size_t i = 0; i < total; ++i) {
            Report(JobPhase::Deleting, i, total);
            const auto& item = plan_.items[i];
            if (!item.savedPath.empty()) continue;
            inPlace_[i] = true;
            if (item.gamePath.empty() || item.gameIsBlocked) continue;
            if (plan_.installed && !IsModsOwn(item)) continue;
            if (files_.RemoveFile(item.gamePath))
                result_.notDeleted.push_back(item.gamePath);
            else
                ++result_.deleted;
        }
        Report(JobPhase::Deleting, total, total);
    }

    bool IsModsOwn(const UninstallItem& item) {
        if (item.gameIsLink) {
            result_.notOurs.push_back(item.gamePath);
            return false;
        }
        const auto same = files_.SameContents(item.gamePath, item.file.path);
        if (same && *same) return true;
        (same ? result_.notOurs : result_.notDeleted).push_back(item.gamePath);
        return false;
    }

    void RestoreFiles() {
        std::size_t next = 0;
        for (std::size_t position = 0; position < kGameFolderCount; ++position) {
            for (; next < plan_.items.size() && plan_.items[next].file.position == position; ++next)
                if (!plan_.items[next].savedPath.empty()) RestoreOne(next);
            Report(JobPhase::Restoring, position + 1, kGameFolderCount);
        }
    }

    void RestoreOne(std::size_t index) {
        const auto& item = plan_.items[index];
        inPlace_[index] = !item.gameIsBlocked && (PutBack(item) || IsBackAlready(item));
        if (inPlace_[index])
            ++result_.restored;
        else
            result_.notRestored.push_back(item.savedPath);
    }

    bool PutBack(const UninstallItem& item) {
        const auto folder = gameFolders_.Ensure(item.file.position);
        if (!folder) return false;
        const auto target = Join(*folder, item.name);
        const bool replaces = !item.gamePath.empty();
        if (replaces && LastComponent(item.gamePath) != item.name && files_.Rename(item.gamePath, target))
            return false;
        return !files_.HardLink(item.savedPath, target, replaces) ||
               !files_.Copy(item.savedPath, target, {.replace = replaces, .keepLink = true, .flush = true});
    }

    bool IsBackAlready(const UninstallItem& item) {
        if (item.gamePath.empty() || item.gameIsLink != item.savedIsLink) return false;
        if (item.savedIsLink) {
            const auto saved = files_.ReadLink(item.savedPath);
            const auto game = files_.ReadLink(item.gamePath);
            return saved && game && *saved == *game;
        }
        const auto saved = files_.Stat(item.savedPath);
        const auto game = files_.Stat(item.gamePath);
        if (!saved || !game || saved->modified != game->modified || saved->readOnly != game->readOnly)
            return false;
        const auto same = files_.SameContents(item.savedPath, item.gamePath);
        return same && *same;
    }

    /// A mod installed later has saved this mod's files where it replaced them. They get what the game gets
    /// now, so that uninstalling the later mod does not bring this one back.
    void HandOver() {
        for (const auto& later : plan_.laterMods) {
            EntryIndex copies(later.backupFolders);
            bool isHeld = false;
            for (std::size_t i = 0; i < plan_.items.size(); ++i) {
                const auto& item = plan_.items[i];
                const auto* copy = inPlace_[i] ? copies.Find(item.file.position, item.name) : nullptr;
                if (!copy || copy->kind != EntryKind::File || copy->isLink) continue;
                const auto path = copies.PathOf(item.file.position, *copy);
                const auto isOurs = files_.SameContents(path, item.file.path);
                if (isOurs && !*isOurs) continue;
                if (isOurs && !isHeld) isHeld = !HoldBackupTime(files_, later.mod);
                if (!isOurs || !isHeld || HandOverOne(item, path)) result_.notHandedOver.push_back(path);
            }
            if (isHeld) RestoreBackupTime(files_, later.mod);
        }
    }

    std::error_code HandOverOne(const UninstallItem& item, const std::string& copy) {
        if (item.savedPath.empty()) return files_.RemoveFile(copy);
        return files_.Copy(item.savedPath, copy, {.replace = true, .keepLink = true, .flush = true});
    }

    /// One rename ends the installed state; what is swept afterwards is nobody's data any more.
    bool GiveUpBackup() {
        const auto& backup = plan_.installed->backup;
        const auto swept = Join(plan_.installed->folder, kTempBackup);
        result_.backupNotRemoved = files_.Rename(backup, swept);
        if (result_.backupNotRemoved) return false;
        const auto total = plan_.items.size();
        for (std::size_t i = 0; i < total; ++i) {
            Report(JobPhase::DeletingBackup, i, total);
            const auto& saved = plan_.items[i].savedPath;
            if (!saved.empty()) Ignore(files_.RemoveFile(swept + saved.substr(backup.size())));
        }
        Ignore(files_.RemoveTree(swept));
        return true;
    }

    /// `Backup` keeps what could not be put back, what is not the mod's, and the copies that a second
    /// uninstallation would otherwise take for the mod's own files and delete from the game.
    void KeepBackup() {
        const auto& backup = plan_.installed->backup;
        const bool isHeld = !HoldBackupTime(files_, *plan_.installed);
        // Without a note of its time nothing directly in `Backup` may change.
        const auto mayChange = [&](const std::string& path) { return isHeld || Parent(path) != backup; };
        const auto total = plan_.items.size();
        for (std::size_t i = 0; i < total; ++i) {
            Report(JobPhase::DeletingBackup, i, total);
            const auto& item = plan_.items[i];
            if (item.savedPath.empty() || !mayChange(item.savedPath)) continue;
            if (!inPlace_[i] || MayBeModsOwn(item))
                EndSharing(item.savedPath);
            else
                Ignore(files_.RemoveFile(item.savedPath));
        }
        for (const auto& path : plan_.strangers)
            if (mayChange(path)) EndSharing(path);
        if (!isHeld) return;
        RemoveEmptyBackupFolders();
        RestoreBackupTime(files_, *plan_.installed);
    }

    bool MayBeModsOwn(const UninstallItem& item) const {
        if (item.savedIsLink) return false;
        const auto same = files_.SameContents(item.savedPath, item.file.path);
        return !same || *same;
    }

    /// What stays in `Backup` must not change with the game's file.
    void EndSharing(const std::string& copy) {
        const auto info = files_.Stat(copy);
        if (info && info->kind != EntryKind::Folder && info->links > 1)
            Ignore(files_.Copy(copy, copy, {.replace = true, .keepLink = true, .flush = true}));
    }

    void RemoveEmptyBackupFolders() {
        for (std::size_t i = kKnownFolderCount; i-- > 0;)
            for (const auto& folder : plan_.backupFolders[i])
                Ignore(files_.RemoveEmptyFolder(folder.path));
    }

    FileSystem& files_;
    const UninstallPlan& plan_;
    const ProgressSink& progress_;
    FolderMaker gameFolders_;
    std::vector<bool> inPlace_; ///< by item: the game has what it had without the mod
    UninstallResult result_;
};

/// Everything in `Backup` that is neither one of `saved` nor a known folder.
std::vector<std::string> FindStrangers(const KnownFolders& backup,
                                       const std::unordered_set<std::string>& saved) {
    std::unordered_set<std::string_view> folders;
    for (const auto& atPosition : backup)
        for (const auto& folder : atPosition)
            folders.insert(folder.path);

    std::vector<std::string> found;
    for (const auto& atPosition : backup) {
        for (const auto& folder : atPosition) {
            for (const auto& entry : folder.entries) {
                auto path = Join(folder.path, entry.name);
                if (!folders.contains(path) && !saved.contains(path) && !IsLeftover(entry.name))
                    found.push_back(std::move(path));
            }
        }
    }
    return found;
}

} // namespace

UninstallPlan PlanUninstall(const FileSystem& files, const ModJob& job) {
    UninstallPlan plan;
    ReadJobPlan(files, job, Detail::Names, plan);
    if (plan.installed) {
        for (const auto& mod : plan.otherMods) {
            if (mod.installed <= plan.installed->installed) continue;
            plan.laterMods.push_back(
                {mod, ListKnownFolders(files, mod.backup, Detail::Names, &plan.failure)});
            AddLeftovers(plan.laterMods.back().backupFolders, plan.leftoverFiles);
        }
    }

    EntryIndex game(plan.gameFolders);
    EntryIndex saved(plan.backupFolders);
    std::unordered_set<std::string> savedPaths;
    for (auto& file : plan.modFiles) {
        UninstallItem item;
        item.name = file.name;
        item.file = std::move(file);
        const auto position = item.file.position;
        const auto* copy = saved.Find(position, item.name);
        if (copy && IsReplaceable(*copy)) {
            item.name = copy->name;
            item.savedPath = saved.PathOf(position, *copy);
            item.savedIsLink = copy->isLink;
            savedPaths.insert(item.savedPath);
        }
        if (const auto* inGame = game.Find(position, item.name)) {
            item.gamePath = game.PathOf(position, *inGame);
            item.gameIsLink = inGame->isLink;
            item.gameIsBlocked = !IsReplaceable(*inGame);
            if (item.savedPath.empty()) item.name = inGame->name;
        }
        plan.items.push_back(std::move(item));
    }
    plan.strangers = FindStrangers(plan.backupFolders, savedPaths);
    return plan;
}

UninstallResult RunUninstall(FileSystem& files, const UninstallPlan& plan, const ProgressSink& progress) {
    return UninstallRun(files, plan, progress).Run();
}

} // namespace quillbay
