#include "library/ModHousekeeping.h"

#include "library/FileNames.h"
#include "library/FolderMaker.h"
#include "library/InstalledMods.h"
#include "library/KnownFolders.h"
#include "library/ModJob.h"
#include "library/OwnTree.h"
#include "platform/PathText.h"

#include <optional>
#include <utility>

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
                // A file that stays is tried again with the whole tree, which reports it.
                Ignore(files.RemoveFile(Join(folder.path, entry.name)));
                progress(++done, total);
            }
        }
    }
}

bool IsMount(const FileSystem& files, std::string_view folder) {
    const auto found = files.Stat(folder);
    return found && found->isMount;
}

/// The first mount in what is left of a tree.
std::optional<std::string> FindMount(const FileSystem& files, const std::string& root) {
    std::vector<std::string> pending{root};
    while (!pending.empty()) {
        const std::string folder = std::move(pending.back());
        pending.pop_back();
        for (const DirEntry& entry : files.List(folder, Detail::Names).ValueOr({})) {
            if (entry.kind != EntryKind::Folder || entry.isLink) continue;
            std::string path = Join(folder, entry.name);
            if (IsMount(files, path)) return path;
            pending.push_back(std::move(path));
        }
    }
    return std::nullopt;
}

} // namespace

NewFolderOutcome CheckModName(const FileSystem& files, std::string_view modLibrary, std::string_view name) {
    const NameFault fault = FindNameFault(name);
    if (fault == NameFault::Character) return NewFolderOutcome::InvalidCharacter;
    // The list could not show these names as mods.
    if (fault == NameFault::Changed || IsAddonRow(name) || name == kNoModsRow ||
        name.starts_with(kLeftoverPrefix))
        return NewFolderOutcome::InvalidName;
    if (fault == NameFault::TooLong) return NewFolderOutcome::Failed;
    const auto found = files.Stat(Join(modLibrary, name));
    if (found) return NewFolderOutcome::Exists;
    // A look-up that failed does not say that the name is free: it may be there in another letter case.
    const bool isMissing = found.Error() == std::errc::no_such_file_or_directory;
    return isMissing ? NewFolderOutcome::Made : NewFolderOutcome::Failed;
}

NewFolderOutcome MakeModFolder(FileSystem& files, std::string_view modLibrary, std::string_view name) {
    const auto outcome = CheckModName(files, modLibrary, name);
    if (outcome != NewFolderOutcome::Made) return outcome;
    return files.MakeFolder(Join(modLibrary, name)) ? NewFolderOutcome::Failed : NewFolderOutcome::Made;
}

SubfolderResult MakeSubfolders(FileSystem& files, const std::string& modFolder) {
    OwnTree own(files);
    FolderMaker maker(own, modFolder, ListKnownFolders(own, modFolder, Detail::Names));
    SubfolderResult result;
    for (std::size_t position = 0; position < kKnownFolderCount; ++position) {
        const auto made = maker.Ensure(position);
        if (made || result.error || made.Error() == std::errc::cross_device_link) continue;
        result.failed = Join(modFolder, GameFolders[position]);
        result.error = made.Error();
    }
    result.made = maker.Made().size();
    return result;
}

std::size_t RemoveSubfolders(FileSystem& files, const std::string& modFolder) {
    const KnownFolders known = ListKnownFolders(OwnTree(files), modFolder, Detail::Names);
    std::size_t removed = 0;
    for (std::size_t position = kKnownFolderCount; position-- > 0;)
        for (const ListedFolder& folder : known[position])
            if (!files.RemoveEmptyFolder(folder.path)) ++removed;
    return removed;
}

RemovalState CheckRemoval(const FileSystem& files, std::string_view gameDirectory,
                          std::string_view modLibrary, const std::vector<ModRow>& rows, const ModPath& mod) {
    const std::string modFolder = Join(modLibrary, mod.text);
    if (IsLinkItself(files, modFolder)) return RemovalState::Free;
    if (CheckGameDirectory(files, gameDirectory, modFolder) == GameDirectoryState::InsideMods)
        return RemovalState::HoldsGame;
    const std::string inside = mod.text + '\\';
    for (const ModRow& row : rows) {
        if (row.path != mod && !row.path.text.starts_with(inside)) continue;
        const std::string folder = Join(modLibrary, row.path.text);
        if (IsInstalled(files, folder) && !IsLinkItself(files, folder)) return RemovalState::LosesBackup;
    }
    return RemovalState::Free;
}

RemovalResult RemoveModFolder(FileSystem& files, const std::string& modFolder,
                              const RemovalProgress& progress) {
    if (IsLinkItself(files, modFolder)) return {files.RemoveFile(modFolder), modFolder};
    if (IsMount(files, modFolder))
        return {std::make_error_code(std::errc::cross_device_link), modFolder, true};
    RemoveKnownFiles(files, modFolder, progress);
    RemovalResult result{files.RemoveTree(modFolder), modFolder};
    if (!result.error) return result;
    if (auto mount = FindMount(files, modFolder)) {
        result.stays = std::move(*mount);
        result.isMount = true;
    }
    return result;
}

} // namespace quillbay
