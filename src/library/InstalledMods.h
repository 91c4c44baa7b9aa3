#pragma once

#include "library/ModRows.h"
#include "platform/FileSystem.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbay {

inline constexpr std::string_view kBackupName = "Backup";

/// The stored name of the `Backup` folder among the entries of a mod folder: the exact spelling, else the
/// first in another letter case; none when there is no such folder. A file of that name is no backup.
std::optional<std::string> FindBackup(const std::vector<DirEntry>& modFolderEntries);

/// True when the mod's folder holds a `Backup` folder in any letter case.
bool IsInstalled(const FileSystem& files, std::string_view modFolder);

/// True when the mod's folder holds a folder named exactly `Backup`.
bool HasExactBackup(const FileSystem& files, std::string_view modFolder);

/// The rows of the installed-mods window, in the order of `rows`; empty when nothing is installed.
std::vector<ModRow> FilterInstalled(const FileSystem& files, std::string_view modsFolder,
                                    const std::vector<ModRow>& rows);

} // namespace quillbay
