#pragma once

#include "library/InstalledMods.h"
#include "library/KnownFolders.h"
#include "library/ModFiles.h"
#include "library/ModRows.h"
#include "platform/FileSystem.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// What installing and uninstalling have in common: the order, the plan, what stops them, how they tell how
/// far they are.
namespace quillbay {

struct ModJob {
    std::string gameDirectory;
    std::string modLibrary; ///< the folder that holds all mods
    ModPath mod;

    /// `modLibrary` joined with the mod path; empty for no mod, so that nothing ever takes the whole
    /// library.
    std::string FolderInLibrary() const;
};

enum class GameDirectoryState {
    Usable,
    Missing,    ///< the marker, empty, or no existing folder
    InsideMods, ///< the game directory lies in `mods`, or is it
};

GameDirectoryState CheckGameDirectory(const FileSystem& files, std::string_view gameDirectory,
                                      std::string_view modLibrary);

/// The folder or file by which a mod leads into the game, or the game lies in the mod; empty when nothing
/// does. Real paths are compared: `game`, `library` and `modFolder` are such, `foldersInMod` is the mod's
/// listing. A library that lies in the game's folder, where the program is kept, is no part of the game.
std::string FindWayIntoGame(const FileSystem& files, const std::string& modFolder,
                            const KnownFolders& foldersInMod, const std::string& library,
                            const std::string& game);

/// True when `path` is `folder` or lies in it; both absolute and without links.
bool IsSameOrInside(std::string_view path, std::string_view folder);

/// Why a job is not begun, whatever the user has answered.
enum class Refusal {
    None,
    LeadsIntoGame, ///< the mod, a folder or a file of it leads into the game, or the reverse
    BackupIsLink,  ///< what would be saved there would lie somewhere else
};

/// What planning an installation and an uninstallation find out alike. Each folder is listed once; nothing is
/// changed. Paths are in stored spelling, so that none of them needs a look-up of its own.
struct JobPlan {
    // Its parts refer to each other: it can be moved, not copied.
    JobPlan() = default;
    JobPlan(JobPlan&&) = default;
    JobPlan& operator=(JobPlan&&) = default;

    ModJob job;            ///< with the real path of the game
    std::string modFolder; ///< the real path
    ReadFailure failure;   ///< set when something could not be read: then there is nothing to run
    Refusal refusal = Refusal::None;
    std::string refused; ///< the path behind a refusal

    KnownFolders foldersInMod; ///< without what they hold
    std::vector<ModFile> modFiles;
    std::optional<InstalledMod> installed; ///< this mod, when it has a `Backup`
    bool wasGivenUp = false;               ///< its `Backup` is only a leftover of its uninstallation
    std::vector<InstalledMod> otherMods;   ///< the other installed ones
    KnownFolders gameFolders;
    KnownFolders backupFolders;      ///< of `installed`
    std::string lastChanged;         ///< the latest folder of files that were kept; empty when there is none
    KnownFolders lastChangedFolders; ///< what it holds

    // What interrupted operations left behind, of whatever mod.
    std::vector<std::string> leftoverFiles;
    std::vector<std::string> leftoverFolders;

    /// The record of `installed`; null when there is none.
    const InstallRecord* Record() const {
        return installed && installed->record ? &*installed->record : nullptr;
    }
    /// True when the mod was installed into a game that lies somewhere else, or did then.
    bool IsOfAnotherGame() const { return Record() && Record()->game != job.gameDirectory; }
};

/// `detail` is that of the mod's own files.
void ReadJobPlan(const FileSystem& files, const ModJob& job, Detail detail, JobPlan& plan);

/// Removes what interrupted operations left behind.
void SweepLeftovers(FileSystem& files, const JobPlan& plan);

enum class JobPhase {
    Saving,         ///< install: game files go into `Backup`
    Copying,        ///< install: mod files go into the game
    Deleting,       ///< uninstall: mod files leave the game
    Restoring,      ///< uninstall: saved copies go back
    DeletingBackup, ///< uninstall: saved copies are removed
};

/// Called at least once for each file of a phase; must not run other work of the program.
using ProgressSink = std::function<void(JobPhase phase, std::size_t done, std::size_t total)>;

} // namespace quillbay
