#pragma once

#include "library/ModInstaller.h"
#include "library/ModUninstaller.h"
#include "platform/FileSystem.h"

#include <cstddef>
#include <map>
#include <string>

/// What a job would meet, by sizes and times alone: no file is read. For questions and tool tips.
namespace quillbay {

struct InstallPreview {
    std::size_t files = 0;                       ///< that would be copied
    std::size_t replaced = 0;                    ///< of the game's own
    std::map<std::string, std::size_t> ofOthers; ///< files of other mods that would be replaced, by mod
    std::size_t there = 0;                       ///< that the game has already
    std::string otherGame;                       ///< into which the mod was installed before; empty: this one
};

InstallPreview Preview(const FileSystem& files, const InstallPlan& plan);

/// How the files of an installed mod stand.
struct InstalledState {
    std::size_t files = 0;      ///< that were installed and not given back
    std::size_t inPlace = 0;    ///< as they were installed
    std::size_t changed = 0;    ///< by somebody else, where the mod replaced a file: would be kept
    std::size_t changedNew = 0; ///< the same where the mod added the file: would stay
    std::size_t missing = 0;
    std::map<std::string, std::size_t> byOthers; ///< replaced, by the mod that did it
    std::string otherGame;                       ///< as above

    bool IsAsInstalled() const { return inPlace == files && otherGame.empty(); }
};

/// Nothing (no files) for a mod without a record.
InstalledState LookAtInstalled(const FileSystem& files, const UninstallPlan& plan);

} // namespace quillbay
