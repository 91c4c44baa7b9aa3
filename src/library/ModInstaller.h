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

enum class InstallTarget {
    New,     ///< the game has no such file
    File,    ///< a game file (or link) will be replaced
    Blocked, ///< a folder or device has the name: the file cannot be installed
};

/// One file of the mod and where it goes.
struct InstallItem {
    ModFile file;
    std::string name; ///< in the game: the spelling of the replaced file, else that of the mod
    InstallTarget target = InstallTarget::New;
    std::string targetPath; ///< of the replaced file; empty when New
    bool targetIsLink = false;
    bool isSaved = false; ///< `Backup` has a saved copy from an earlier installation
};

/// What an installation would do. Each folder has been listed once; nothing has been changed.
struct InstallPlan {
    ModJob job;
    std::string modFolder;
    std::error_code error; ///< set when the mod's folder cannot be listed: there is nothing to run
    std::optional<InstalledMod> installedBefore; ///< this mod, when it has a `Backup` already
    std::vector<InstalledMod> otherMods;         ///< installed ones
    std::vector<InstallItem> items;
    KnownFolders gameFolders;
    KnownFolders backupFolders; ///< of `installedBefore`
    std::vector<std::string> leftovers;
    std::optional<std::string> leftoverFolder;
};

enum class InstallOutcome {
    Done,
    NoModFolder, ///< the mod's folder cannot be listed
    NoBackup,    ///< `Backup` could not be made: nothing was installed
    UnsafeFile,  ///< a game file could be neither saved nor told from the mod's own: nothing was installed
};

struct InstallResult {
    InstallOutcome outcome = InstallOutcome::Done;
    std::string concerned; ///< the path behind an outcome other than Done
    std::error_code error; ///< and the reason

    std::size_t installed = 0;
    std::size_t saved = 0;
    std::vector<std::string> notSaved;  ///< game files left alone because they could not be saved
    std::vector<std::string> notCopied; ///< mod files that did not get into the game
};

InstallPlan PlanInstall(const FileSystem& files, const ModJob& job);

/// Copies the mod's files over the game, after every game file that they replace is safe in `Backup`.
/// `progress` hears of Saving and Copying.
InstallResult RunInstall(FileSystem& files, const InstallPlan& plan, const ProgressSink& progress);

} // namespace quillbay
