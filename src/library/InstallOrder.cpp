#include "library/InstallOrder.h"

#include "common/PathText.h"
#include "library/InstalledMods.h"
#include "platform/CaseFold.h"

#include <algorithm>
#include <charconv>

namespace quillbay {

namespace {

/// FAT keeps times to two seconds, so that a step of two is the smallest that survives everywhere.
constexpr std::chrono::seconds kTimeStep{2};

std::optional<FileTime> ReadMarker(const FileSystem& files, const std::string& folder) {
    const auto text = files.Read(Join(folder, kTimeMarker), 0, 32);
    if (!text) return std::nullopt;
    std::int64_t seconds = 0;
    const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), seconds);
    if (error != std::errc{} || end != text->data() + text->size()) return std::nullopt;
    return FileTime{std::chrono::seconds{seconds}};
}

bool IsAddonFolder(const DirEntry& entry) {
    return entry.kind == EntryKind::Folder && EqualFolded(entry.name, "Addon");
}

class Walk {
public:
    Walk(const FileSystem& files, std::vector<InstalledMod>& found) : files_(files), found_(found) {}

    void Visit(ModPath path, std::string folder, bool withAddons) {
        const auto entries = files_.List(folder, Detail::Names);
        if (!entries) return;
        const auto addons = withAddons ? std::ranges::find_if(*entries, IsAddonFolder) : entries->end();
        if (addons != entries->end()) VisitAddons(path, Join(folder, addons->name));
        const auto backup = FindBackup(*entries);
        if (!backup) return;

        InstalledMod mod{std::move(path), std::move(folder), {}, {}};
        mod.backup = Join(mod.folder, *backup);
        mod.hasMarker = std::ranges::find(*entries, kTimeMarker, &DirEntry::name) != entries->end();
        const auto noted = mod.hasMarker ? ReadMarker(files_, mod.folder) : std::nullopt;
        if (noted) {
            mod.installed = *noted;
        } else if (const auto info = files_.Stat(mod.backup)) {
            mod.installed = info->modified;
        }
        found_.push_back(std::move(mod));
    }

private:
    void VisitAddons(const ModPath& mod, const std::string& addonFolder) {
        const auto entries = files_.List(addonFolder, Detail::Names);
        if (!entries) return;
        for (const auto& entry : *entries)
            if (entry.kind == EntryKind::Folder)
                Visit({mod.text + "\\Addon\\" + entry.name}, Join(addonFolder, entry.name), false);
    }

    const FileSystem& files_;
    std::vector<InstalledMod>& found_;
};

} // namespace

std::vector<InstalledMod> ListInstalledMods(const FileSystem& files, std::string_view modsFolder) {
    std::vector<InstalledMod> found;
    const auto entries = files.List(modsFolder, Detail::Names);
    if (!entries) return found;
    Walk walk(files, found);
    for (const auto& entry : *entries)
        if (entry.kind == EntryKind::Folder) walk.Visit({entry.name}, Join(modsFolder, entry.name), true);
    return found;
}

std::error_code HoldBackupTime(FileSystem& files, const InstalledMod& mod) {
    return files.WriteFile(Join(mod.folder, kTimeMarker),
                           std::to_string(mod.installed.time_since_epoch().count()));
}

void RestoreBackupTime(FileSystem& files, const InstalledMod& mod) {
    if (files.SetModified(mod.backup, mod.installed)) return;
    Ignore(files.RemoveFile(Join(mod.folder, kTimeMarker)));
}

void RestoreBackupTimes(FileSystem& files, const std::vector<InstalledMod>& mods) {
    for (const auto& mod : mods)
        if (mod.hasMarker) RestoreBackupTime(files, mod);
}

FileTime NextInstallTime(const std::vector<InstalledMod>& mods) {
    auto time = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    for (const auto& mod : mods)
        time = std::max(time, mod.installed + kTimeStep);
    return time;
}

} // namespace quillbay
