#include "library/ModInstaller.h"

#include "library/FolderMaker.h"
#include "library/GivenUpBackup.h"
#include "library/InstalledMods.h"
#include "library/RecordKeeper.h"
#include "library/WriteRefusal.h"
#include "platform/PathText.h"

#include <algorithm>
#include <array>
#include <unordered_set>

namespace quillbay {

namespace {

class InstallRun {
public:
    InstallRun(FileSystem& files, const InstallPlan& plan, const ProgressSink& progress)
        : files_(files), plan_(plan), progress_(progress),
          self_(plan.installed.value_or(InstalledMod{plan.job.mod, plan.modFolder, {}, false, 0, {}})),
          record_(files, plan), guard_(files, plan),
          gameFolders_(files, plan.job.gameDirectory, plan.gameFolders), secondPlace_(files),
          isSavedNow_(plan.items.size()), over_(plan.items.size()), isLeftAlone_(plan.items.size()) {}

    InstallResult Run() {
        if (plan_.failure) {
            Stop(InstallOutcome::Unreadable, plan_.failure.path, plan_.failure.error);
        } else if (plan_.refusal != Refusal::None) {
            result_.refusal = plan_.refusal;
            Stop(InstallOutcome::Refused, plan_.refused, {});
        } else if (const auto refusal = TryToWrite(files_, TargetFolders())) {
            Stop(InstallOutcome::NoRights, refusal.folder, refusal.error);
        } else {
            SweepLeftovers(files_, plan_);
            record_.ReadAhead();
            if (NoteMissing() && (plan_.installed ? SaveIntoBackup() : SaveIntoNewBackup())) Install();
        }
        result_.kept = guard_.Kept();
        for (const auto& [mod, files] : guard_.ReplacedOfOthers())
            result_.replaced[mod] += files;
        return std::move(result_);
    }

private:
    void Install() {
        GiveBackDropped();
        CopyFiles();
        RemoveNeedlessCopies();
        if (result_.installed == 0 && !plan_.items.empty()) {
            const auto& first = result_.notCopied.empty() ? result_.notSaved : result_.notCopied;
            Stop(InstallOutcome::NothingCopied, first.front().path, first.front().error);
        }
        if (result_.outcome == InstallOutcome::NothingCopied && !plan_.installed)
            GiveUpNewBackup();
        else
            // Without the time of its end the record is as good: then every file is read that is asked for.
            Ignore(record_.WriteFinished(self_.backup));
        RemoveEmptyKnownFolders(files_, plan_.gameFolders, gameFolders_, filled_);
    }

    /// The game's folders that files will come to, each once.
    std::vector<std::string> TargetFolders() const {
        std::vector<std::string> folders;
        std::unordered_set<std::string_view> known;
        for (const auto& item : plan_.items) {
            const auto& folder = gameFolders_.Existing(item.place.position);
            if (known.insert(folder).second) folders.push_back(folder);
        }
        return folders;
    }

    void Report(JobPhase phase, std::size_t done, std::size_t total) const {
        if (progress_) progress_(phase, done, total);
    }

    bool Stop(InstallOutcome outcome, std::string path, std::error_code error) {
        result_.outcome = outcome;
        result_.concerned = std::move(path);
        result_.error = error;
        return false;
    }

    /// Saving ends when what will come into the game has been read, too.
    void ReportSaving(std::size_t done, std::size_t toSave) const {
        Report(JobPhase::Saving, done, toSave + plan_.items.size());
    }

    /// Where the game has no file although another mod has saved one, that mod's was taken out with a third
    /// mod's over it. What it has saved is what this mod's file stands for.
    bool NoteMissing() {
        ReadFailure failure;
        for (std::size_t i = 0; i < plan_.items.size() && !failure; ++i) {
            const auto& place = plan_.items[i].place;
            if (place.game || place.saved || IsBelow(place)) continue;
            const auto* saver = guard_.Owners().FindSaver(place.position, place.name, failure);
            if (saver) over_[i] = saver->order;
        }
        return !failure || Stop(InstallOutcome::Unreadable, failure.path, failure.error);
    }

    /// A file of the mod that was there before has its place below those that were installed later.
    static bool IsBelow(const GamePlace& place) {
        return place.recorded && place.recorded->state != RecordedState::GivenBack;
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
            ReportSaving(done, toSave.size());
            const auto& item = plan_.items[toSave[done]];
            if (Save(toSave[done], folders)) continue;
            if (const auto error = WhyNotTold(item))
                return giveUp(InstallOutcome::UnsafeFile, item.place.game.Path(), error);
        }
        NoteModFiles(toSave.size());
        if (const auto error = record_.WriteBegun(stage))
            return giveUp(InstallOutcome::NoBackup, stage, error);

        self_.backup = Join(self_.folder, kBackupName);
        if (const auto error = files_.Rename(stage, self_.backup))
            return giveUp(InstallOutcome::NoBackup, self_.backup, error);
        for (auto& folder : savedIn_)
            if (!folder.empty()) folder.replace(0, stage.size(), self_.backup);
        return true;
    }

    /// A repeated installation: saved copies stay, and what has none is saved too, unless this mod or one
    /// that was installed later has put it there: when that mod goes, nobody would take it out of here again.
    /// The file of a mod installed earlier is saved like the game's own.
    bool SaveIntoBackup() {
        std::vector<std::size_t> toSave;
        std::vector<const GamePlace*> notSaved;
        for (const auto& item : plan_.items)
            if (item.Replaces() && item.place.saved) notSaved.push_back(&item.place);
        for (const auto i : ItemsToSave()) {
            const auto& place = plan_.items[i].place;
            LookedAtFile file(files_, place.game.Path(), place.gameIsLink);
            const auto own = guard_.IsModsOwn(file, place);
            if (!own) return Stop(InstallOutcome::UnsafeFile, place.game.Path(), own.Error());
            if (*own) continue;
            const auto later = guard_.Owners().FindOwner(file, place.position, place.name, self_.order);
            if (!later) return Stop(InstallOutcome::UnsafeFile, place.game.Path(), later.Error());
            if (*later) {
                ++result_.replaced[std::string((*later)->Name())];
                notSaved.push_back(&place);
                if (!IsBelow(place)) over_[i] = (*later)->order;
            } else {
                toSave.push_back(i);
            }
        }
        ReadFailure failure;
        guard_.TellOwners(notSaved, failure);
        if (failure) return Stop(InstallOutcome::NoBackup, failure.path, failure.error);
        FolderMaker folders(files_, self_.backup, plan_.backupFolders);
        for (std::size_t done = 0; done < toSave.size(); ++done) {
            ReportSaving(done, toSave.size());
            Save(toSave[done], folders);
        }
        NoteModFiles(toSave.size());
        if (const auto error = record_.WriteBegun(self_.backup))
            return Stop(InstallOutcome::NoBackup, self_.backup, error);
        return true;
    }

    std::vector<std::size_t> ItemsToSave() const {
        std::vector<std::size_t> found;
        for (std::size_t i = 0; i < plan_.items.size(); ++i)
            if (plan_.items[i].Replaces() && !plan_.items[i].place.saved) found.push_back(i);
        return found;
    }

    bool Save(std::size_t index, FolderMaker& folders) {
        const auto& place = plan_.items[index].place;
        const auto folder = folders.Ensure(place.position);
        auto error = folder.Error();
        if (folder) error = secondPlace_.Give(place.game.Path(), Join(*folder, place.name), false);
        if (!error) {
            savedIn_[place.position] = *folder;
            isSavedNow_[index] = true;
            ++result_.saved;
            return true;
        }
        isLeftAlone_[index] = true;
        result_.notSaved.push_back({place.game.Path(), error});
        return false;
    }

    /// No error when the game's file certainly differs from the mod's own: then an uninstallation will not
    /// take it for the mod's.
    std::error_code WhyNotTold(const InstallItem& item) const {
        if (item.place.gameIsLink) return {};
        const auto same = files_.SameContents(item.place.game.Path(), item.place.mod.Path());
        if (!same) return same.Error();
        return *same ? std::make_error_code(std::errc::permission_denied) : std::error_code{};
    }

    /// What will be in the game is written down before the first file is there.
    void NoteModFiles(std::size_t saved) {
        for (std::size_t i = 0; i < plan_.items.size(); ++i) {
            ReportSaving(saved + i, saved);
            if (isLeftAlone_[i]) continue;
            const auto& item = plan_.items[i];
            const auto error = item.place.gameIsBlocked ? std::make_error_code(std::errc::is_a_directory)
                                                        : record_.Add(i, isSavedNow_[i], over_[i]);
            if (error) NotCopied(i, error);
        }
    }

    void NotCopied(std::size_t index, std::error_code error) {
        isLeftAlone_[index] = true;
        result_.notCopied.push_back({plan_.items[index].place.mod.Path(), error});
        notReplaced_.push_back(index);
    }

    void GiveBackDropped() {
        if (plan_.dropped.empty()) return;
        GiveBack giveBack(files_, plan_, gameFolders_, guard_, result_.givenBack);
        std::vector<const GamePlace*> places;
        ReadFailure failure;
        guard_.Bequeath(plan_.dropped, failure);
        if (failure) {
            result_.givenBack.notHandedOver.push_back(failure.path);
            return;
        }
        std::vector<std::pair<const GamePlace*, bool>> dropped; // with whether the mod's file is there
        std::vector<const GamePlace*> toRestore;
        for (const auto& place : plan_.dropped) {
            LookedAtFile file(files_, place.game.Path(), place.gameIsLink);
            const auto own = place.game ? guard_.IsModsOwn(file, place) : Result<bool>(true);
            if (own) dropped.emplace_back(&place, *own);
            if (own && *own) toRestore.push_back(&place);
        }
        guard_.SettleClaims(toRestore, failure);
        if (failure) {
            result_.givenBack.notHandedOver.push_back(failure.path);
            return;
        }
        for (const auto& [dropping, isOwn] : dropped) {
            const GamePlace& place = *dropping;
            // What somebody else has put there stays, and is asked about again when the mod is uninstalled.
            const auto giveBackHere = [&giveBack, &place] {
                if (!place.saved) return giveBack.Delete(place);
                return giveBack.Restore(place, GiveBack::SavedCopy::Stays) != GiveBack::Restored::No;
            };
            if (isOwn && !giveBackHere()) continue;
            places.push_back(&place);
            filled_[place.position] = filled_[place.position] || bool(place.saved);
        }
        const auto notHandedOver = giveBack.HandOver(plan_.laterMods, places);
        for (const auto* place : places)
            if (!notHandedOver.contains(place)) record_.SetGivenBack(*place->recorded);
    }

    void CopyFiles() {
        const auto total = plan_.items.size();
        for (std::size_t i = 0; i < total; ++i) {
            Report(JobPhase::Copying, i, total);
            if (isLeftAlone_[i] || !SecureOld(i)) continue;
            if (const auto error = CopyOne(plan_.items[i])) {
                NotCopied(i, error);
            } else {
                const auto& place = plan_.items[i].place;
                if (++result_.installed <= kNamedFiles)
                    result_.firstInstalled.push_back(std::string(GameFolders[place.position]) + place.name);
                filled_[place.position] = true;
                record_.SetCopied(i);
            }
        }
        Report(JobPhase::Copying, total, total);
    }

    /// What has a saved copy of its own may still have changed since that was made.
    bool SecureOld(std::size_t index) {
        const auto& item = plan_.items[index];
        if (!item.Replaces() || !item.place.saved) return true;
        LookedAtFile file(files_, item.place.game.Path(), item.place.gameIsLink);
        const auto own = guard_.IsModsOwn(file, item.place);
        if (own && *own) return true;
        const auto error = guard_.Secure(file, item.place);
        if (!error) return true;
        isLeftAlone_[index] = true;
        result_.notSaved.push_back({item.place.game.Path(), error});
        return false;
    }

    /// Another name of the file may be a game file that was saved with its attributes.
    void MakeSourceWritable(const std::string& path) {
        const auto info = files_.StatContents(path);
        if (info && info->links < 2) Ignore(files_.SetReadOnly(path, false));
    }

    std::error_code CopyOne(const InstallItem& item) {
        const auto folder = gameFolders_.Ensure(item.place.position);
        if (!folder) return folder.Error();
        if (item.isReadOnly) MakeSourceWritable(item.place.mod.Path());
        const auto& target = item.Replaces() ? item.place.game.Path() : Join(*folder, item.place.name);
        const auto error =
            files_.Copy(item.place.mod.Path(), target, {.replace = item.Replaces(), .makeWritable = true});
        if (error && item.Replaces()) guard_.StaysInGame(LookedAtFile(files_, item.place.game.Path(), false));
        return error;
    }

    /// A game file that kept its place needs no saved copy, which an uninstallation would put over whatever
    /// the player has made of the file by then. One that cannot be told from the mod's own keeps it.
    void RemoveNeedlessCopies() {
        for (const auto i : notReplaced_) {
            const auto& place = plan_.items[i].place;
            const auto saved = Join(savedIn_[place.position], place.name);
            if (isSavedNow_[i] && WhyNotTold(plan_.items[i])) {
                EndSharing(files_, saved);
            } else if (isSavedNow_[i] && !files_.RemoveFile(saved)) {
                --result_.saved;
                isSavedNow_[i] = false;
            }
            if (!isSavedNow_[i] && !place.saved) record_.Drop(i);
        }
    }

    /// The game is as it was, so that nothing saved is needed and the mod does not count as installed.
    void GiveUpNewBackup() {
        std::string remains;
        if (EndInstalledState(files_, self_, remains)) return;
        Ignore(SweepRemains(files_, remains));
        result_.saved = 0;
    }

    FileSystem& files_;
    const InstallPlan& plan_;
    const ProgressSink& progress_;
    InstalledMod self_;
    RecordKeeper record_;
    GameGuard guard_;
    FolderMaker gameFolders_;
    SecondPlace secondPlace_;
    std::vector<bool> isSavedNow_;                      ///< by item: this run has made its saved copy
    std::array<std::string, kGameFolderCount> savedIn_; ///< by position: the folder of the copies made
    std::vector<std::int64_t> over_;                    ///< by item: as in the record
    std::vector<bool> isLeftAlone_;                     ///< by item: what is in the game stays as it is
    std::vector<std::size_t> notReplaced_;
    std::array<bool, kGameFolderCount> filled_{};
    InstallResult result_;
};

/// The recorded places that no file of the mod has now, and that have not been given back yet.
std::vector<GamePlace> FindDropped(const InstallPlan& plan) {
    std::unordered_set<const RecordedFile*> present;
    for (const auto& item : plan.items)
        present.insert(item.place.recorded);
    auto dropped = FindOtherRecorded(plan, present);
    std::erase_if(dropped,
                  [](const GamePlace& place) { return place.recorded->state == RecordedState::GivenBack; });
    return dropped;
}

} // namespace

InstallPlan PlanInstall(const FileSystem& files, const ModJob& job) {
    InstallPlan plan;
    ReadJobPlan(files, job, Detail::Full, plan);
    PlaceFinder finder(plan);
    plan.items.reserve(plan.modFiles.size());
    for (auto& file : plan.modFiles) {
        auto place = finder.Find(file.position, file.file.name);
        if (place.game) place.name = place.game.name;
        place.mod = std::move(file.file);
        plan.items.push_back({std::move(place), file.isReadOnly, file.size, file.modified});
    }
    plan.modFiles = std::vector<ModFile>(); // frees its memory, too
    if (plan.Record()) {
        plan.dropped = FindDropped(plan);
        if (!plan.dropped.empty()) plan.laterMods = ListLaterMods(files, plan);
    }
    ForgetFiles(plan.gameFolders);
    return plan;
}

InstallResult RunInstall(FileSystem& files, const InstallPlan& plan, const ProgressSink& progress) {
    return InstallRun(files, plan, progress).Run();
}

} // namespace quillbay
