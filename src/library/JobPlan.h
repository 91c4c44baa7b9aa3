#pragma once

#include "library/InstallOrder.h"
#include "library/KnownFolders.h"
#include "library/ModFiles.h"
#include "library/ModJob.h"
#include "library/ReadFailure.h"
#include "platform/FileSystem.h"

#include <optional>
#include <string>
#include <vector>

namespace quillbay {

/// What planning an installation and an uninstallation find out alike. Each folder is listed once; nothing is
/// changed. Paths are in stored spelling, so that none of them needs a look-up of its own.
struct JobPlan {
    ModJob job;
    std::string modFolder;
    ReadFailure failure; ///< set when something could not be read: then there is nothing to run

    std::vector<ModFile> modFiles;
    std::optional<InstalledMod> installed; ///< this mod, when it has a `Backup`
    std::vector<InstalledMod> otherMods;   ///< the other installed ones
    KnownFolders gameFolders;
    KnownFolders backupFolders; ///< of `installed`

    // What interrupted operations left behind, of whatever mod.
    std::vector<std::string> leftoverFiles;
    std::vector<std::string> leftoverFolders;
};

/// `detail` is that of the mod's own files.
void ReadJobPlan(const FileSystem& files, const ModJob& job, Detail detail, JobPlan& plan);

/// Finishes and removes what interrupted operations left behind.
void SweepLeftovers(FileSystem& files, const JobPlan& plan);

} // namespace quillbay
