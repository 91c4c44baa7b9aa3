#pragma once

#include "library/InstallRecord.h"
#include "library/KnownFolders.h"
#include "library/ModRows.h"
#include "platform/FileSystem.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Which mods are installed, and in which order they were.
namespace quillbay {

inline constexpr std::string_view kBackupName = "Backup";
/// In a mod's folder: what is going to be its `Backup`, or was.
inline constexpr std::string_view kTempBackup = "~quillbay.bak";

/// The `Backup` folder among the entries of a mod folder: the exact spelling, else the first in another
/// letter case; null when there is no such folder. A file of that name is no backup.
const DirEntry* FindBackup(const std::vector<DirEntry>& modFolderEntries);

/// True when the mod's folder holds a `Backup` folder in any letter case.
bool IsInstalled(const FileSystem& files, std::string_view modFolder);

/// True when the mod's folder holds a folder named exactly `Backup`.
bool HasExactBackup(const FileSystem& files, std::string_view modFolder);

/// The rows of the installed-mods window, in the order of `rows`; empty when nothing is installed.
std::vector<ModRow> FilterInstalled(const FileSystem& files, std::string_view modLibrary,
                                    const std::vector<ModRow>& rows);

struct InstalledMod {
    ModPath path;
    std::string folder; ///< path of the mod's folder
    std::string backup; ///< path of its `Backup`, as spelled on disk
    bool backupIsLink = false;
    /// Greater than that of every mod that was installed before: the record's number. Without a record the
    /// time of `Backup`, in seconds since 1970, with which numbers can be compared.
    std::int64_t order = 0;
    std::optional<InstallRecord> record;

    /// How the user knows it.
    std::string_view Name() const;
};

/// A mod whose folder has been listed already.
struct ListedMod {
    ModPath path;
    const std::vector<DirEntry>& entries;
};

struct InstalledMods {
    std::vector<InstalledMod> mods; ///< every mod and addon with a `Backup` folder
    /// What interrupted operations left: folders named kTempBackup, and `Backup` folders that were given up.
    std::vector<std::string> leftovers;
};

/// Looks through the library and reads the records. Each folder is listed once, that of `listed` not again;
/// what cannot be read is left out and noted in `failure`.
InstalledMods ListInstalledMods(const FileSystem& files, std::string_view modLibrary, const ListedMod& listed,
                                ReadFailure& failure);

/// The installed mods that a list has rows for, the one installed last first. When something cannot be read
/// the order is not known.
std::vector<InstalledMod> ListNewestFirst(const FileSystem& files, std::string_view modLibrary,
                                          ReadFailure& failure);

/// The number of an installation that is made now: at least the seconds since 1970, so that it can be
/// compared with the times of backups that have no record.
std::int64_t NextInstallNumber(const std::vector<InstalledMod>& installed);

} // namespace quillbay
