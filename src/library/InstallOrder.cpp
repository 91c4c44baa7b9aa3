#include "library/InstallOrder.h"

#include "library/FindEntry.h"
#include "library/InstalledMods.h"
#include "platform/PathText.h"

#include <algorithm>
#include <charconv>

namespace quillbay {

namespace {

/// FAT keeps times to two seconds, so that a step of two is the smallest that survives everywhere.
constexpr std::chrono::seconds kTimeStep{2};

std::optional<FileTime> ReadMarker(const FileSystem& files, const std::string& folder, ReadFailure& failure) {
    const auto marker = Join(folder, kTimeMarker);
    const auto text = files.Read(marker, 0, 32);
    if (!text) {
        failure.Note(marker, text.Error());
        return std::nullopt;
    }
    std::int64_t seconds = 0;
    const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), seconds);
    if (error != std::errc{} || end != text->data() + text->size()) return std::nullopt;
    return FileTime{std::chrono::seconds{seconds}};
}

class Walk {
public:
    Walk(const FileSystem& files, const ListedMod& listed, InstalledMods& found, ReadFailure& failure)
        : files_(files), listed_(listed), found_(found), failure_(failure) {}

    std::vector<DirEntry> List(std::string_view folder) {
        auto entries = files_.List(folder, Detail::Names);
        failure_.Note(folder, entries.Error());
        return std::move(entries).ValueOr({});
    }

    void Visit(ModPath path, std::string folder, bool withAddons) {
        const auto entries = path == listed_.path ? listed_.entries : List(folder);
        const auto addons = withAddons ? FindEntry(entries, "Addon", EntryKind::Folder) : nullptr;
        if (addons) VisitAddons(path, Join(folder, addons->name));
        if (FindEntry(entries, kTempBackup, EntryKind::Folder))
            found_.tempBackups.push_back(Join(folder, kTempBackup));
        const auto backup = FindBackup(entries);
        if (!backup) return;

        InstalledMod mod{std::move(path), std::move(folder), {}, {}};
        mod.backup = Join(mod.folder, *backup);
        mod.hasMarker = std::ranges::find(entries, kTimeMarker, &DirEntry::name) != entries.end();
        const auto noted = mod.hasMarker ? ReadMarker(files_, mod.folder, failure_) : std::nullopt;
        if (noted) {
            mod.installed = *noted;
        } else if (const auto info = files_.Stat(mod.backup)) {
            mod.installed = info->modified;
        } else {
            failure_.Note(mod.backup, info.Error());
        }
        found_.mods.push_back(std::move(mod));
    }

private:
    void VisitAddons(const ModPath& mod, const std::string& addonFolder) {
        for (const auto& entry : List(addonFolder))
            if (entry.kind == EntryKind::Folder)
                Visit({mod.text + "\\Addon\\" + entry.name}, Join(addonFolder, entry.name), false);
    }

    const FileSystem& files_;
    const ListedMod& listed_;
    InstalledMods& found_;
    ReadFailure& failure_;
};

} // namespace

InstalledMods ListInstalledMods(const FileSystem& files, std::string_view modsFolder, const ListedMod& listed,
                                ReadFailure& failure) {
    InstalledMods found;
    Walk walk(files, listed, found, failure);
    for (const auto& entry : walk.List(modsFolder))
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
