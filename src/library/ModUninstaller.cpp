#include "library/ModUninstaller.h"

#include "library/FolderMaker.h"
#include "library/GivenUpBackup.h"
#include "platform/PathText.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

namespace quillbay {

namespace {

class UninstallRun {
public:
    UninstallRun(FileSystem& files, const UninstallPlan& plan, const ProgressSink& progress)
        : files_(files), plan_(plan), progress_(progress),
          gameFolders_(files, plan.job.gameDirectory, plan.gameFolders), guard_(files, plan),
          giveBack_(files, plan, gameFolders_, guard_, result_), inPlace_(plan.places.size()),
          hasLeft_(plan.places.size()) {}

    UninstallResult Run() {
        result_.failure = plan_.failure;
        result_.refusal = plan_.refusal;
        result_.refused = plan_.refused;
        if (plan_.failure || plan_.refusal != Refusal::None) return std::move(result_);
        SweepLeftovers(files_, plan_);
        if (plan_.wasGivenUp) return std::move(result_);
        guard_.Bequeath(plan_.places, result_.failure);
        if (!result_.failure) guard_.SettleClaims(SavedPlaces(), result_.failure);
        if (!result_.failure) guard_.TellOwners(SavedPlaces(), result_.failure);
        if (result_.failure) return std::move(result_);
        DeleteFiles();
        RestoreFiles(NoteLeaving());
        if (plan_.installed) {
            HandOver();
            result_.strangers = plan_.strangers;
            if (result_.BackupStays() || !GiveUpBackup()) KeepBackup();
        }
        const auto total = plan_.places.size();
        Report(JobPhase::DeletingBackup, total, total);
        result_.kept = guard_.Kept();
        result_.wentWithIt = guard_.ReplacedOfOthers();
        return std::move(result_);
    }

private:
    void Report(JobPhase phase, std::size_t done, std::size_t total) const {
        if (progress_) progress_(phase, done, total);
    }

    std::vector<const GamePlace*> SavedPlaces() const {
        std::vector<const GamePlace*> saved;
        for (const auto& place : plan_.places)
            if (place.saved) saved.push_back(&place);
        return saved;
    }

    /// What the mod added. Files with a saved copy leave the game when that takes their place, so that the
    /// game has one or the other at every moment.
    void DeleteFiles() {
        const auto total = plan_.places.size();
        for (std::size_t i = 0; i < total; ++i) {
            Report(JobPhase::Deleting, i, total);
            if (plan_.places[i].saved) continue;
            inPlace_[i] = true;
            giveBack_.Delete(plan_.places[i]);
        }
        Report(JobPhase::Deleting, total, total);
    }

    /// From now on the record says of each saved copy that it may have left `Backup`. Then it can be moved,
    /// which is half the work of a second name that is removed later. False when it must stay for now: a mod
    /// that was installed later is to get it, too, `Backup` will stay, or no record says whose it is.
    bool NoteLeaving() {
        const bool isSimple = plan_.Record() && !plan_.IsOfAnotherGame() && plan_.laterMods.empty() &&
                              plan_.strangers.empty() && !plan_.hasSharedCopies;
        if (!isSimple || result_.BackupStays()) return false;
        const auto& record = *plan_.Record();
        std::vector<bool> leaving(record.files.size());
        bool isAny = false;
        for (const auto& place : plan_.places) {
            if (!place.recorded || !place.saved) continue;
            leaving[static_cast<std::size_t>(place.recorded - record.files.data())] = isAny = true;
        }
        return isAny &&
               !files_.WriteFile(Join(plan_.installed->backup, kRecordName), ToText(record, leaving));
    }

    void RestoreFiles(bool mayLeave) {
        const auto& places = plan_.places;
        std::size_t next = 0;
        for (std::size_t position = 0; position < kGameFolderCount; ++position) {
            for (; next < places.size() && places[next].position == position; ++next) {
                Report(JobPhase::Restoring, position, kGameFolderCount);
                const auto& place = places[next];
                if (!place.saved) continue;
                const auto restored =
                    giveBack_.Restore(place, mayLeave && place.recorded ? GiveBack::SavedCopy::MayLeave
                                                                        : GiveBack::SavedCopy::MayBeShared);
                inPlace_[next] = restored != GiveBack::Restored::No;
                hasLeft_[next] = restored == GiveBack::Restored::ByMoving;
            }
            Report(JobPhase::Restoring, position + 1, kGameFolderCount);
        }
    }

    void HandOver() {
        if (plan_.laterMods.empty()) return;
        std::vector<const GamePlace*> places;
        for (std::size_t i = 0; i < plan_.places.size(); ++i)
            if (inPlace_[i]) places.push_back(&plan_.places[i]);
        const auto failed = giveBack_.HandOver(plan_.laterMods, places);
        for (std::size_t i = 0; i < plan_.places.size(); ++i)
            if (failed.contains(&plan_.places[i])) inPlace_[i] = false;
    }

    bool GiveUpBackup() {
        std::string remains;
        result_.backupNotRemoved = EndInstalledState(files_, *plan_.installed, remains);
        if (result_.backupNotRemoved) return false;
        const auto& backup = plan_.installed->backup;
        const auto total = plan_.places.size();
        for (std::size_t i = 0; i < total; ++i) {
            Report(JobPhase::DeletingBackup, i, total);
            const auto& saved = plan_.places[i].saved;
            if (saved && !hasLeft_[i])
                Ignore(files_.RemoveFile(remains + saved.Path().substr(backup.size())));
        }
        const auto error = SweepRemains(files_, remains);
        if (remains == backup) result_.backupNotRemoved = error;
        return true;
    }

    /// `Backup` keeps what could not be put back or handed over, what is not the mod's, and the copies that a
    /// second uninstallation would otherwise take for the mod's own files and delete from the game.
    void KeepBackup() {
        const auto total = plan_.places.size();
        for (std::size_t i = 0; i < total; ++i) {
            Report(JobPhase::DeletingBackup, i, total);
            const auto& place = plan_.places[i];
            if (!place.saved || hasLeft_[i]) continue;
            if (!inPlace_[i] || giveBack_.MayBeModsOwn(place))
                EndSharing(files_, place.saved.Path());
            else
                Ignore(files_.RemoveFile(place.saved.Path()));
        }
        for (const auto& path : plan_.strangers)
            EndSharing(files_, path);
        for (std::size_t i = kKnownFolderCount; i-- > 0;)
            for (const auto& folder : plan_.backupFolders[i])
                Ignore(files_.RemoveEmptyFolder(folder.path));
    }

    FileSystem& files_;
    const UninstallPlan& plan_;
    const ProgressSink& progress_;
    UninstallResult result_;
    FolderMaker gameFolders_;
    GameGuard guard_;
    GiveBack giveBack_;
    std::vector<bool> inPlace_; ///< by place: the game, and every later mod, has what it had without the mod
    std::vector<bool> hasLeft_; ///< by place: the saved copy was moved into the game
};

/// A saved copy: its folder, as listed, and its name.
using SavedName = std::pair<const std::string*, std::string_view>;

/// In order, each as often as places have it.
std::vector<SavedName> ListSaved(const std::vector<GamePlace>& places) {
    std::vector<SavedName> saved;
    saved.reserve(places.size());
    for (const auto& place : places)
        if (place.saved) saved.emplace_back(place.saved.folder, place.saved.name);
    std::ranges::sort(saved);
    return saved;
}

/// Everything in `Backup` that is neither one of `saved` nor a known folder nor the record.
std::vector<std::string> FindStrangers(const KnownFolders& backup, const std::vector<SavedName>& saved) {
    std::unordered_set<std::string_view> folders;
    for (const auto& atPosition : backup)
        for (const auto& folder : atPosition)
            folders.insert(folder.path);

    std::vector<std::string> found;
    for (const auto& atPosition : backup) {
        for (const auto& folder : atPosition) {
            for (const auto& entry : folder.entries) {
                if (IsProgramsOwn(entry.name) ||
                    std::ranges::binary_search(saved, SavedName(&folder.path, entry.name)))
                    continue;
                auto path = Join(folder.path, entry.name);
                if (!folders.contains(path)) found.push_back(std::move(path));
            }
        }
    }
    return found;
}

/// The record's files, each with the mod's present file; without a record the mod's present files. An
/// installation that was interrupted may have saved a game file that it had not recorded yet.
void FindPlaces(UninstallPlan& plan) {
    PlaceFinder finder(plan);
    plan.places.reserve(plan.modFiles.size());
    for (auto& file : plan.modFiles) {
        auto place = finder.Find(file.position, file.file.name);
        if (plan.Record() && !place.recorded && !place.saved) continue;
        place.mod = std::move(file.file);
        plan.places.push_back(std::move(place));
    }
    plan.modFiles = std::vector<ModFile>(); // frees its memory, too
    if (!plan.Record()) return;
    std::unordered_set<const RecordedFile*> present;
    for (const auto& place : plan.places)
        present.insert(place.recorded);
    std::ranges::move(FindOtherRecorded(plan, present), std::back_inserter(plan.places));
    std::ranges::stable_sort(plan.places, {}, &GamePlace::position);
}

} // namespace

UninstallPlan PlanUninstall(const FileSystem& files, const ModJob& job) {
    UninstallPlan plan;
    ReadJobPlan(files, job, Detail::Names, plan);
    plan.laterMods = ListLaterMods(files, plan);
    FindPlaces(plan);
    const auto saved = ListSaved(plan.places);
    plan.hasSharedCopies = std::ranges::adjacent_find(saved) != saved.end();
    plan.strangers = FindStrangers(plan.backupFolders, saved);
    ForgetFiles(plan.gameFolders);
    return plan;
}

UninstallResult RunUninstall(FileSystem& files, const UninstallPlan& plan, const ProgressSink& progress) {
    return UninstallRun(files, plan, progress).Run();
}

void UninstallSummary::Add(std::string name, UninstallResult result) {
    if (result.StaysInstalled())
        stopped = std::move(name);
    else
        uninstalled.push_back(std::move(name));
    result.deleted += total.deleted;
    result.restored += total.restored;
    result.notOurs.insert(result.notOurs.begin(), total.notOurs.begin(), total.notOurs.end());
    result.kept.merge(total.kept);
    for (const auto& [mod, files] : total.wentWithIt)
        result.wentWithIt[mod] += files;
    for (const auto& mod : uninstalled)
        result.wentWithIt.erase(mod);
    total = std::move(result);
}

} // namespace quillbay
