#pragma once

#include "library/InstallOrder.h"
#include "library/KnownFolders.h"
#include "library/ModFiles.h"
#include "library/ModJob.h"
#include "platform/FileSystem.h"

#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace quillbay {

/// One file of the mod, the game's file of that name and the saved copy.
struct UninstallItem {
    ModFile file;
    std::string name;     ///< in the game: the spelling of the saved copy, else of the game's file
    std::string gamePath; ///< of the game's file or link; empty when there is none
    bool gameIsLink = false;
    bool gameIsBlocked = false; ///< a folder or device has the name
    std::string savedPath;      ///< empty when there is no saved copy
    bool savedIsLink = false;
};

/// A mod that was installed after the one to be uninstalled and may have saved its files.
struct LaterMod {
    InstalledMod mod;
    KnownFolders backupFolders;
};

/// What an uninstallation would do. Each folder has been listed once; nothing has been changed.
struct UninstallPlan {
    ModJob job;
    std::error_code error; ///< set when the mod's folder cannot be listed: there is nothing to run
    std::optional<InstalledMod> installed; ///< this mod; without a `Backup` its files are only deleted
    std::vector<InstalledMod> otherMods;   ///< installed ones, for the repair of their times
    std::vector<LaterMod> laterMods;
    std::vector<UninstallItem> items;
    std::vector<std::string> strangers; ///< in `Backup`, but not saved copies of the mod's present files
    KnownFolders gameFolders;
    KnownFolders backupFolders;
    std::vector<std::string> leftovers;
    std::optional<std::string> leftoverFolder;
};

/// Why `Backup` is still there after an uninstallation; the mod then still counts as installed.
struct UninstallResult {
    std::error_code error; ///< set when the mod's folder could not be listed: nothing was done

    std::size_t deleted = 0;                ///< mod files removed from the game
    std::size_t restored = 0;               ///< saved copies that are back in the game
    std::vector<std::string> notOurs;       ///< game files left alone: they are not the mod's
    std::vector<std::string> notDeleted;    ///< game files that could not be deleted or told from the mod's
    std::vector<std::string> notRestored;   ///< saved copies that could not be put back
    std::vector<std::string> notHandedOver; ///< saved copies of later mods that could not be corrected
    std::vector<std::string> strangers;     ///< files in `Backup` that are not the mod's saved copies
    std::error_code backupNotRemoved;       ///< everything was done, but `Backup` could not be renamed

    bool BackupStays() const {
        return !notDeleted.empty() || !notRestored.empty() || !notHandedOver.empty() || !strangers.empty() ||
               backupNotRemoved;
    }
};

UninstallPlan PlanUninstall(const FileSystem& files, const ModJob& job);

/// Takes the mod's files out of the game and puts the saved copies back; gives up `Backup` only when
/// everything is in place. `progress` hears of Deleting, Restoring (by GameFolders position) and
/// DeletingBackup.
UninstallResult RunUninstall(FileSystem& files, const UninstallPlan& plan, const ProgressSink& progress);

} // namespace quillbay
