#pragma once

#include "library/ModRows.h"
#include "platform/FileSystem.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

/// Making a mod's folder and the folders inside it, and removing them.
namespace quillbay {

enum class NewFolderOutcome {
    Made,
    Exists,           ///< something of that name, in any letter case, is in `mods`
    InvalidName,      ///< Windows or the list could not keep the name apart from another one
    InvalidCharacter, ///< one that Windows allows in no name, a separator among them
    Failed,           ///< the folder could not be made
};

/// What MakeModFolder would answer; Made when nothing but the disk can prevent it.
NewFolderOutcome CheckModName(const FileSystem& files, std::string_view modLibrary, std::string_view name);

/// Makes an empty mod folder. The names that Windows refuses or changes are refused on every system, so that
/// a library can move from one to the other; nothing is made then.
NewFolderOutcome MakeModFolder(FileSystem& files, std::string_view modLibrary, std::string_view name);

struct SubfolderResult {
    std::size_t made = 0;
    std::string failed; ///< the first folder that could not be made
    std::error_code error;
};

/// Makes the game's known folders, for an author to drop files into, where the mod does not have them in any
/// letter case; goes on after a failure. What is linked or mounted into the mod is left as it is, here and
/// below.
SubfolderResult MakeSubfolders(FileSystem& files, const std::string& modFolder);

/// Removes the known folders that are empty, children first, and returns how many. What cannot be removed
/// stays.
std::size_t RemoveSubfolders(FileSystem& files, const std::string& modFolder);

enum class RemovalState {
    Free,
    LosesBackup, ///< it or one of its addons is installed: saved files of the game go with it
    HoldsGame,   ///< the game directory lies in its folder
};

/// What the user must know before the mod is removed. `rows` is the whole list; the mod is on it.
RemovalState CheckRemoval(const FileSystem& files, std::string_view gameDirectory,
                          std::string_view modLibrary, const std::vector<ModRow>& rows, const ModPath& mod);

struct RemovalResult {
    std::error_code error; ///< the first reason why something stays; none when all is gone
    std::string stays;    ///< when something stays: the folder where something is mounted, else the mod's own
    bool isMount = false; ///< `stays` is such a folder, whose contents were not touched
};

/// Called after each file.
using RemovalProgress = std::function<void(std::size_t done, std::size_t total)>;

/// Deletes the folder of a mod: first, one by one, the files in its known folders, then all the rest.
/// Read-only files go too; links, junctions and mounts are never followed out of it, and a folder that is a
/// link itself goes without what it leads to. What cannot be deleted stays; nothing is done to a folder that
/// is a mount itself.
RemovalResult RemoveModFolder(FileSystem& files, const std::string& modFolder,
                              const RemovalProgress& progress);

} // namespace quillbay
