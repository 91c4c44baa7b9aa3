#pragma once

#include "library/ModRows.h"

#include <cstddef>
#include <functional>
#include <string>

/// What installing and uninstalling have in common.
namespace quillbay {

struct ModJob {
    std::string gameDirectory;
    std::string modsFolder;
    ModPath mod;

    /// `modsFolder` joined with the mod path; empty for no mod, so that nothing ever takes the whole library.
    std::string ModFolder() const;
};

enum class GameDirectoryState {
    Usable,
    Missing,    ///< the marker, empty, or no existing folder
    InsideMods, ///< the game directory lies in `mods`, or is it
};

GameDirectoryState CheckGameDirectory(const FileSystem& files, std::string_view gameDirectory,
                                      std::string_view modsFolder);

enum class JobPhase {
    Saving,         ///< install: game files go into `Backup`
    Copying,        ///< install: mod files go into the game
    Deleting,       ///< uninstall: mod files leave the game
    Restoring,      ///< uninstall: saved copies go back
    DeletingBackup, ///< uninstall: saved copies are removed
};

/// Called before the first and after each file of a phase; must not run other work of the program.
using ProgressSink = std::function<void(JobPhase phase, std::size_t done, std::size_t total)>;

} // namespace quillbay
