#pragma once

#include "library/ModRows.h"
#include "platform/FileSystem.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Which mods are installed, and in which order they were. The modification time of a `Backup` folder is the
/// time of the mod's first installation; whoever changes something directly in a `Backup` keeps that time.
namespace quillbay {

/// In a mod's folder: what is going to be its `Backup`, or was.
inline constexpr std::string_view kTempBackup = "~quillbay.bak";
/// In a mod's folder while something in its `Backup` changes: a file holding the time (seconds since 1970,
/// decimal) that the `Backup` gets back.
inline constexpr std::string_view kTimeMarker = "~quillbay.time";

struct InstalledMod {
    ModPath path;
    std::string folder; ///< path of the mod's folder
    std::string backup; ///< path of its `Backup`, as spelled on disk
    FileTime installed; ///< time of the first installation
    bool hasMarker = false;
};

/// Every mod and addon with a `Backup` folder. Each folder is listed once; what cannot be listed is left out.
std::vector<InstalledMod> ListInstalledMods(const FileSystem& files, std::string_view modsFolder);

/// Writes down the time of `mod`'s `Backup` before something in it changes. On failure nothing may change.
[[nodiscard]] std::error_code HoldBackupTime(FileSystem& files, const InstalledMod& mod);
/// Gives the `Backup` its time back; when that fails the note of the time stays, and counts.
void RestoreBackupTime(FileSystem& files, const InstalledMod& mod);

/// Finishes what an interrupted operation left undone: restores the time of every mod that has a marker.
void RestoreBackupTimes(FileSystem& files, const std::vector<InstalledMod>& mods);

/// A time for a new `Backup`: now, but later than that of every installed mod by more than any file system
/// rounds to.
FileTime NextInstallTime(const std::vector<InstalledMod>& mods);

} // namespace quillbay
