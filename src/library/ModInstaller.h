#pragma once

#include "library/JobPlan.h"
#include "platform/FileSystem.h"

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

/// What an installation would do.
struct InstallPlan : JobPlan {
    std::vector<InstallItem> items;
};

enum class InstallOutcome {
    Done,
    Unreadable, ///< a folder that has to be known cannot be read: nothing was done
    NoBackup,   ///< `Backup` could not be made: nothing was installed
    UnsafeFile, ///< a game file could be neither saved nor told from the mod's own: nothing was installed
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
