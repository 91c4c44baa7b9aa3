#include "library/ModRows.h"

#include "library/FindEntry.h"
#include "library/InstalledMods.h"
#include "platform/CaseFold.h"
#include "platform/PathText.h"

#include <algorithm>
#include <utility>

namespace quillbay {

namespace {

/// The path of a mod row; empty for a text that stands for no mod.
ModPath PathOfModRow(std::string_view row) {
    return row == kNoModsRow ? ModPath{} : ModPath{std::string(row)};
}

ModPath PathOfAddonRow(const ModPath& mod, std::string_view row) {
    const std::string_view addon = DisplayName(row);
    // With an empty name the path would be that of the folder of all addons.
    if (mod.Empty() || addon.empty()) return {};
    return {Join(Join(mod.text, kAddonName), addon)};
}

std::vector<std::string> FolderNames(const std::vector<DirEntry>& entries) {
    std::vector<std::string> names;
    for (const DirEntry& entry : entries) {
        if (entry.kind == EntryKind::Folder && !entry.name.starts_with(kLeftoverPrefix))
            names.push_back(entry.name);
    }
    return names;
}

/// What a mod's folder holds; nothing when it cannot be listed.
std::vector<DirEntry> ListMod(const FileSystem& files, const std::string& modFolder) {
    return files.List(modFolder, Detail::Names).ValueOr({});
}

/// The rows of a mod's addons, the last one listed first.
void AddAddonRows(const FileSystem& files, const ModPath& mod, const std::string& modFolder,
                  const std::vector<DirEntry>& modEntries, std::vector<ModRow>& rows) {
    const DirEntry* addonFolder = FindEntry(modEntries, kAddonName, EntryKind::Folder);
    if (!addonFolder) return;
    const std::string folder = Join(modFolder, addonFolder->name);
    const auto addons = FolderNames(ListMod(files, folder));
    for (auto addon = addons.rbegin(); addon != addons.rend(); ++addon) {
        std::string text = std::string(kAddonIndent) + *addon;
        ModPath path = PathOfAddonRow(mod, text);
        const bool isInstalled = !path.Empty() && FindBackup(ListMod(files, Join(folder, *addon)));
        rows.push_back({std::move(text), std::move(path), isInstalled});
    }
}

std::vector<std::string> ModNames(const FileSystem& files, std::string_view modLibrary, ModOrder order) {
    const auto entries = files.List(modLibrary, Detail::Names);
    if (!entries) return {};
    std::vector<std::string> mods = FolderNames(*entries);
    if (order == ModOrder::ByName) std::sort(mods.begin(), mods.end(), LessFolded);
    return mods;
}

} // namespace

bool IsAddonRow(std::string_view row) { return row.starts_with(kAddonIndent); }

std::string_view DisplayName(std::string_view row) {
    return IsAddonRow(row) ? row.substr(kAddonIndent.size()) : row;
}

std::vector<ModRow> ScanModLibrary(const FileSystem& files, std::string_view modLibrary, ModOrder order) {
    std::vector<ModRow> rows;
    ModPath mod;
    for (std::string& name : ModNames(files, modLibrary, order)) {
        // The row of a mod whose name begins with four blanks reads as an addon of the mod above. Its own
        // addons would read so as well, and are not listed.
        if (IsAddonRow(name)) {
            ModPath path = PathOfAddonRow(mod, name);
            rows.push_back({std::move(name), std::move(path)});
            continue;
        }
        const std::string folder = Join(modLibrary, name);
        const auto entries = ListMod(files, folder);
        mod = PathOfModRow(name);
        rows.push_back({std::move(name), mod, !mod.Empty() && FindBackup(entries)});
        AddAddonRows(files, mod, folder, entries, rows);
    }
    return rows;
}

bool PrepareLibraryFolder(FileSystem& files, std::string_view programDirectory) {
    const std::string folder = LibraryFolder(programDirectory);
    const auto found = files.Stat(folder);
    if (!found) {
        return found.Error() == std::errc::no_such_file_or_directory && !files.MakeFolder(folder);
    }
    if (found->kind == EntryKind::Folder && found->name != kModsName) {
        // A refused renaming leaves the folder usable under its old name.
        Ignore(files.Rename(Join(programDirectory, found->name), folder));
    }
    return false;
}

bool ModExists(const FileSystem& files, std::string_view modLibrary, const ModPath& mod) {
    const auto isSpelled = [&](std::string_view path) {
        return IsFolderSpelled(files, Join(modLibrary, path));
    };
    const std::string_view top = std::string_view(mod.text).substr(0, mod.text.find('\\'));
    return !mod.Empty() && isSpelled(top) && (top == mod.text || isSpelled(mod.text));
}

std::string LibraryFolder(std::string_view programDirectory) { return Join(programDirectory, kModsName); }

} // namespace quillbay
