#include "library/InstalledMods.h"

#include "library/FindEntry.h"
#include "platform/PathText.h"

namespace quillbay {

std::optional<std::string> FindBackup(const std::vector<DirEntry>& modFolderEntries) {
    const DirEntry* backup = FindEntry(modFolderEntries, kBackupName, EntryKind::Folder);
    if (!backup) return std::nullopt;
    return backup->name;
}

bool IsInstalled(const FileSystem& files, std::string_view modFolder) {
    if (modFolder.empty()) return false;
    const auto found = files.Stat(Join(modFolder, kBackupName));
    if (!found || found->kind == EntryKind::Folder) return static_cast<bool>(found);
    // A file `Backup` may hide a folder `backup`.
    const auto entries = files.List(modFolder, Detail::Names);
    return entries && FindBackup(*entries);
}

bool HasExactBackup(const FileSystem& files, std::string_view modFolder) {
    return !modFolder.empty() && IsFolderSpelled(files, Join(modFolder, kBackupName));
}

std::vector<ModRow> FilterInstalled(const FileSystem& files, std::string_view modsFolder,
                                    const std::vector<ModRow>& rows) {
    std::vector<ModRow> installed;
    for (const ModRow& row : rows) {
        if (!row.path.Empty() && HasExactBackup(files, Join(modsFolder, row.path.text))) {
            installed.push_back(row);
        }
    }
    return installed;
}

} // namespace quillbay
