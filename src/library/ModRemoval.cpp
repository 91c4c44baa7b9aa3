#include "library/ModRemoval.h"

#include "library/InstalledMods.h"
#include "library/KnownFolders.h"
#include "library/ModJob.h"
#include "library/OwnTree.h"
#include "platform/PathText.h"

namespace quillbay {

namespace {

bool IsLinkItself(const FileSystem& files, std::string_view folder) {
    const auto found = files.Stat(folder);
    return found && found->isLink;
}

void RemoveKnownFiles(FileSystem& files, const std::string& modFolder, const RemovalProgress& progress) {
    KnownFolders known = ListKnownFolders(OwnTree(files), modFolder, Detail::Names);
    known[kKnownFolderCount].clear(); // the mod's own folder has no known files
    std::size_t total = 0;
    for (const auto& atPosition : known)
        total += CountPlainFiles(atPosition);
    std::size_t done = 0;
    for (const auto& atPosition : known) {
        for (const ListedFolder& folder : atPosition) {
            for (const DirEntry& entry : folder.entries) {
                if (!entry.IsPlainFile()) continue;
                // What stays here meets the removal of the tree.
                Ignore(files.RemoveFile(Join(folder.path, entry.name)));
                progress(++done, total);
            }
        }
    }
}

} // namespace

RemovalState CheckRemoval(const FileSystem& files, std::string_view gameDirectory,
                          std::string_view modsFolder, const std::vector<ModRow>& rows, const ModPath& mod) {
    const std::string modFolder = Join(modsFolder, mod.text);
    if (IsLinkItself(files, modFolder)) return RemovalState::Free;
    if (CheckGameDirectory(files, gameDirectory, modFolder) == GameDirectoryState::InsideMods)
        return RemovalState::HoldsGame;
    const std::string inside = mod.text + '\\';
    for (const ModRow& row : rows) {
        if (row.path != mod && !row.path.text.starts_with(inside)) continue;
        const std::string folder = Join(modsFolder, row.path.text);
        if (IsInstalled(files, folder) && !IsLinkItself(files, folder)) return RemovalState::LosesBackup;
    }
    return RemovalState::Free;
}

std::error_code RemoveModFolder(FileSystem& files, const std::string& modFolder,
                                const RemovalProgress& progress) {
    const auto found = files.Stat(modFolder);
    if (found && found->isLink) return files.RemoveFile(modFolder);
    if (found && found->isMount) return std::make_error_code(std::errc::cross_device_link);
    RemoveKnownFiles(files, modFolder, progress);
    return files.RemoveTree(modFolder);
}

} // namespace quillbay
