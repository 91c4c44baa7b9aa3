#include "library/ModInstaller.h"

#include "library/EmptyFolders.h"
#include "library/FolderMaker.h"
#include "library/InstalledMods.h"
#include "platform/PathText.h"

#include <algorithm>
#include <array>

namespace quillbay {

namespace {

class InstallRun {
public:
    InstallRun(FileSystem& files, const InstallPlan& plan, const ProgressSink& progress)
        : files_(files), plan_(plan), progress_(progress),
          self_(plan.installed.value_or(InstalledMod{plan.job.mod, plan.modFolder, {}, {}})),
          gameFolders_(files, plan.job.gameDirectory, plan.gameFolders), savedNow_(plan.items.size()),
          notSaved_(plan.items.size()) {}

    InstallResult Run() {
        if (plan_.failure) {
            Stop(InstallOutcome::Unreadable, plan_.failure.path, plan_.failure.error);
            return std::move(result_);
        }
        SweepLeftovers(files_, plan_);
        if (plan_.installed ? SaveIntoBackup() : SaveIntoNewBackup()) {
            CopyFiles();
            RemoveNeedlessCopies();
            RemoveEmptyKnownFolders(files_, plan_.gameFolders, gameFolders_, filled_);
        }
        return std::move(result_);
    }

private:
    void Report(JobPhase phase, std::size_t done, std::size_t total) const {
        if (progress_) progress_(phase, done, total);
    }

    bool Stop(InstallOutcome outcome, std::string path, std::error_code error) {
        result_.outcome = outcome;
        result_.concerned = std::move(path);
        result_.error = error;
        return false;
    }

    /// The first installation: everything that will be replaced goes into a folder which then, whole, becomes
    /// `Backup`.
    bool SaveIntoNewBackup() {
        const auto stage = Join(self_.folder, kTempBackup);
        const auto giveUp = [&](InstallOutcome outcome, std::string path, std::error_code error) {
            Ignore(files_.RemoveTree(stage));
            return Stop(outcome, std::move(path), error);
        };
        // What an earlier run left in it, and could not be swept, would become a part of `Backup`.
        const auto stale = files_.Stat(stage);
        if (stale)
            return giveUp(InstallOutcome::NoBackup, stage,
                          std::make_error_code(std::errc::directory_not_empty));
        if (stale.Error() != std::errc::no_such_file_or_directory)
            return giveUp(InstallOutcome::NoBackup, stage, stale.Error());
        if (const auto error = files_.MakeFolder(stage))
            return giveUp(InstallOutcome::NoBackup, stage, error);

        FolderMaker folders(files_, stage);
        const auto toSave = ItemsToSave();
        for (std::size_t done = 0; done < toSave.size(); ++done) {
            Report(JobPhase::Saving, done, toSave.size());
            const auto& item = plan_.items[toSave[done]];
            if (Save(toSave[done], folders)) continue;
            if (const auto error = WhyNotTold(item))
                return giveUp(InstallOutcome::UnsafeFile, item.targetPath, error);
        }
        if (const auto error = SetInstallTime(stage)) return giveUp(InstallOutcome::NoBackup, stage, error);

        self_.backup = Join(self_.folder, kBackupName);
        if (const auto error = files_.Rename(stage, self_.backup))
            return giveUp(InstallOutcome::NoBackup, self_.backup, error);
        for (auto& saved : savedNow_)
            if (!saved.empty()) saved.replace(0, stage.size(), self_.backup);
        return true;
    }

    /// A repeated installation: saved copies stay, and what has none is saved too, unless it is the file of a
    /// mod installed later.
    bool SaveIntoBackup() {
        std::vector<std::size_t> toSave;
        for (const auto i : ItemsToSave()) {
            const auto& item = plan_.items[i];
            if (!item.targetIsLink) {
                const auto own = files_.SameContents(item.targetPath, item.file.path);
                if (!own) return Stop(InstallOutcome::UnsafeFile, item.targetPath, own.Error());
                if (*own || BelongsToLaterMod(item)) continue;
            }
            toSave.push_back(i);
        }
        if (toSave.empty()) return true;

        if (const auto error = HoldBackupTime(files_, self_))
            return Stop(InstallOutcome::NoBackup, self_.backup, error);
        FolderMaker folders(files_, self_.backup, plan_.backupFolders);
        for (std::size_t done = 0; done < toSave.size(); ++done) {
            Report(JobPhase::Saving, done, toSave.size());
            Save(toSave[done], folders);
        }
        RestoreBackupTime(files_, self_);
        return true;
    }

    std::vector<std::size_t> ItemsToSave() const {
        std::vector<std::size_t> found;
        for (std::size_t i = 0; i < plan_.items.size(); ++i)
            if (plan_.items[i].target == InstallTarget::File && !plan_.items[i].isSaved) found.push_back(i);
        return found;
    }

    /// A hard link copies no data and cannot run out of space; otherwise a copy that is on the disk.
    bool Save(std::size_t index, FolderMaker& folders) {
        const auto& item = plan_.items[index];
        const auto folder = folders.Ensure(item.file.position);
        if (folder) {
            auto saved = Join(*folder, item.name);
            if (!files_.HardLink(item.targetPath, saved, false) ||
                !files_.Copy(item.targetPath, saved, {.keepLink = true, .flush = true})) {
                savedNow_[index] = std::move(saved);
                ++result_.saved;
                return true;
            }
        }
        notSaved_[index] = true;
        result_.notSaved.push_back(item.targetPath);
        return false;
    }

    /// No error when the game's file certainly differs from the mod's own: then an uninstallation will not
    /// take it for the mod's.
    std::error_code WhyNotTold(const InstallItem& item) const {
        if (item.targetIsLink) return {};
        const auto same = files_.SameContents(item.targetPath, item.file.path);
        if (!same) return same.Error();
        return *same ? std::make_error_code(std::errc::permission_denied) : std::error_code{};
    }

    /// A file of a mod that was installed later must not become a saved copy: when that mod goes, nobody
    /// would take it out of here again. That of a mod installed earlier is saved like the game's own.
    bool BelongsToLaterMod(const InstallItem& item) {
        if (!laterFiles_) {
            laterFiles_.emplace();
            for (const auto& mod : plan_.otherMods)
                if (mod.installed >= self_.installed)
                    laterFiles_->push_back(ListKnownFolders(files_, mod.folder, Detail::Names));
            for (const auto& folders : *laterFiles_)
                laterIndexes_.emplace_back(folders);
        }
        return std::ranges::any_of(laterIndexes_, [&](EntryIndex& index) {
            const auto* entry = index.Find(item.file.position, item.name);
            if (!entry || !entry->IsPlainFile()) return false;
            const auto same = files_.SameContents(item.targetPath, index.PathOf(item.file.position, *entry));
            return same && *same;
        });
    }

    /// Without a time of its own a `Backup` is as good when the file system made it the latest anyway.
    std::error_code SetInstallTime(const std::string& stage) {
        self_.installed = NextInstallTime(plan_.otherMods);
        const auto error = files_.SetModified(stage, self_.installed);
        if (!error) return {};
        const auto info = files_.Stat(stage);
        if (!info) return error;
        self_.installed = info->modified;
        const bool isLatest = std::ranges::all_of(
            plan_.otherMods, [&](const InstalledMod& mod) { return mod.installed < self_.installed; });
        return isLatest ? std::error_code{} : error;
    }

    void CopyFiles() {
        const auto total = plan_.items.size();
        for (std::size_t i = 0; i < total; ++i) {
            Report(JobPhase::Copying, i, total);
            if (notSaved_[i]) continue;
            const auto& item = plan_.items[i];
            if (CopyOne(item)) {
                ++result_.installed;
                filled_[item.file.position] = true;
            } else {
                result_.notCopied.push_back(item.file.path);
                if (!savedNow_[i].empty()) notReplaced_.push_back(i);
            }
        }
        Report(JobPhase::Copying, total, total);
    }

    bool CopyOne(const InstallItem& item) {
        if (item.target == InstallTarget::Blocked) return false;
        const auto folder = gameFolders_.Ensure(item.file.position);
        if (!folder) return false;
        if (item.file.isReadOnly) Ignore(files_.SetReadOnly(item.file.path, false));
        const bool replaces = item.target == InstallTarget::File;
        return !files_.Copy(item.file.path, replaces ? item.targetPath : Join(*folder, item.name),
                            {.replace = replaces, .makeWritable = true});
    }

    /// A game file that kept its place needs no saved copy, which an uninstallation would put over whatever
    /// the player has made of the file by then.
    void RemoveNeedlessCopies() {
        std::erase_if(notReplaced_, [&](std::size_t i) { return bool(WhyNotTold(plan_.items[i])); });
        if (notReplaced_.empty() || HoldBackupTime(files_, self_)) return;
        for (const auto i : notReplaced_)
            if (!files_.RemoveFile(savedNow_[i])) --result_.saved;
        RestoreBackupTime(files_, self_);
    }

    FileSystem& files_;
    const InstallPlan& plan_;
    const ProgressSink& progress_;
    InstalledMod self_;
    FolderMaker gameFolders_;
    std::vector<std::string> savedNow_; ///< by item: its saved copy made in this run
    std::vector<bool> notSaved_;        ///< by item: could not be saved, so it stays as it is
    std::vector<std::size_t> notReplaced_;
    std::array<bool, kGameFolderCount> filled_{};
    std::optional<std::vector<KnownFolders>> laterFiles_;
    std::vector<EntryIndex> laterIndexes_;
    InstallResult result_;
};

} // namespace

InstallPlan PlanInstall(const FileSystem& files, const ModJob& job) {
    InstallPlan plan;
    ReadJobPlan(files, job, Detail::Full, plan);
    EntryIndex game(plan.gameFolders);
    EntryIndex saved(plan.backupFolders);
    for (auto& file : plan.modFiles) {
        InstallItem item;
        item.file = std::move(file);
        item.name = item.file.name;
        const auto* copy = saved.Find(item.file.position, item.name);
        item.isSaved = copy && IsReplaceable(*copy);
        if (const auto* target = game.Find(item.file.position, item.name)) {
            item.name = target->name;
            item.target = IsReplaceable(*target) ? InstallTarget::File : InstallTarget::Blocked;
            item.targetPath = game.PathOf(item.file.position, *target);
            item.targetIsLink = target->isLink;
        }
        plan.items.push_back(std::move(item));
    }
    return plan;
}

InstallResult RunInstall(FileSystem& files, const InstallPlan& plan, const ProgressSink& progress) {
    return InstallRun(files, plan, progress).Run();
}

} // namespace quillbay
