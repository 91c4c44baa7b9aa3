#pragma once

#include "library/ModRows.h"
#include "platform/FileSystem.h"

#include <cstddef>
#include <functional>
#include <string>
#include <system_error>
#include <vector>

/// Deleting a mod from the disk.
namespace quillbay {

enum class RemovalState {
    Free,
    LosesBackup, ///< it or one of its addons is installed: saved files of the game go with it
    HoldsGame,   ///< the game directory lies in its folder
};

/// What the user must know before the mod is removed. `rows` is the whole list; the mod is on it.
RemovalState CheckRemoval(const FileSystem& files, std::string_view gameDirectory,
                          std::string_view modsFolder, const std::vector<ModRow>& rows, const ModPath& mod);

/// Called after each file.
using RemovalProgress = std::function<void(std::size_t done, std::size_t total)>;

/// Deletes the folder of a mod: first, one by one, the files in its known folders, then all the rest.
/// Read-only files go too; links, junctions and mounts are never followed out of it, and a folder that is a
/// link itself goes without what it leads to. What cannot be deleted stays; the first reason is returned.
std::error_code RemoveModFolder(FileSystem& files, const std::string& modFolder,
                                const RemovalProgress& progress);

} // namespace quillbay
