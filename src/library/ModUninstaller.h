#pragma once

#include "library/GiveBack.h"
#include "library/ModJob.h"
#include "platform/FileSystem.h"

#include <map>
#include <string>
#include <system_error>
#include <vector>

namespace quillbay {

/// What an uninstallation would do. A mod without a `Backup` only loses its files.
struct UninstallPlan : JobPlan {
    std::vector<GamePlace>
        places; ///< of every file that was ever installed; without a record of the mod's present ones
    std::vector<LaterMod> laterMods;
    std::vector<std::string> strangers; ///< in `Backup`, but not saved copies of the mod's files
    bool hasSharedCopies = false; ///< two places have one saved copy, as where names differ in letter case
};

struct UninstallResult : GiveBackResult {
    ReadFailure failure; ///< set when what has to be known could not be read or noted: nothing was done
    Refusal refusal = Refusal::None; ///< then nothing was done
    std::string refused;             ///< and this is why

    std::map<std::string, std::string> kept; ///< game files that nobody else had, and where they were kept
    std::map<std::string, std::size_t>
        wentWithIt;                     ///< files of other mods that are gone from the game, by mod
    std::vector<std::string> strangers; ///< files in `Backup` that are not the mod's saved copies
    std::error_code backupNotRemoved;   ///< everything was done, but `Backup` could not be removed

    /// True when the mod still counts as installed, whatever the reason.
    bool StaysInstalled() const { return failure || refusal != Refusal::None || BackupStays(); }
    /// True when `Backup` is still there because of one of these; the mod then still counts as installed.
    bool BackupStays() const {
        return !notDeleted.empty() || !notRestored.empty() || !notHandedOver.empty() || !strangers.empty() ||
               backupNotRemoved;
    }
};

/// What the uninstallation of several mods, one after the other, has done.
struct UninstallSummary {
    std::vector<std::string> uninstalled; ///< names of mods
    std::string stopped;                  ///< the name of the first that still counts as installed
    UninstallResult total;                ///< of all of them; why it stopped, that of the last one

    void Add(std::string name, UninstallResult result);
};

UninstallPlan PlanUninstall(const FileSystem& files, const ModJob& job);

/// Takes the mod's files out of the game and puts the saved copies back; gives up `Backup` only when
/// everything is in place. `progress` hears of Deleting, Restoring (by GameFolders position) and
/// DeletingBackup.
UninstallResult RunUninstall(FileSystem& files, const UninstallPlan& plan, const ProgressSink& progress);

} // namespace quillbay
