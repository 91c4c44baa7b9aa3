#include "modinfo/ModDetails.h"

#include "common/modMisc.h"
#include "library/FindEntry.h"
#include "library/InstalledMods.h"
#include "library/KnownFolders.h"
#include "library/ModFiles.h"
#include "platform/CaseFold.h"
#include "platform/PathText.h"

#include <algorithm>

namespace quillbay {

namespace {

constexpr std::string_view kBitmapName = "ModPic.bmp";
constexpr std::string_view kJpegName = "ModPic.jpg";
constexpr std::string_view kPicturePrefix = "ModPic.";
constexpr std::string_view kReadmePart = "readme";

bool IsPictureName(std::string_view name) { return StartsFolded(name, kPicturePrefix); }

void AddPictures(ModDetails& details, const std::string& folder, const std::vector<DirEntry>& plainFiles) {
    const auto isNamed = [](std::string_view name) {
        return [name](const DirEntry& entry) { return entry.name == name; };
    };
    const bool hasBitmap = std::any_of(plainFiles.begin(), plainFiles.end(), isNamed(kBitmapName));
    details.hasPicture = hasBitmap || std::any_of(plainFiles.begin(), plainFiles.end(), isNamed(kJpegName));
    if (hasBitmap) details.pictures.push_back(Join(folder, kBitmapName));
    const auto first = std::find_if(plainFiles.begin(), plainFiles.end(),
                                    [](const DirEntry& entry) { return IsPictureName(entry.name); });
    if (first != plainFiles.end() && first->name == kJpegName) {
        details.pictures.push_back(Join(folder, kJpegName));
    }
}

/// The bytes that this program keeps in the folder of a mod or an addon beside the saved copies.
std::uint64_t MeasureKept(const FileSystem& files, const std::string& folder,
                          const std::vector<DirEntry>& entries) {
    std::uint64_t kept = 0;
    for (const auto name : {kChangedName, kTempBackup})
        if (const auto* entry = FindEntry(entries, name, EntryKind::Folder); entry && !entry->isLink)
            kept += files.TreeSize(Join(folder, entry->name)).ValueOr(0);
    if (const auto* backup = FindBackup(entries); backup && !backup->isLink)
        if (const auto record = files.Stat(Join(Join(folder, backup->name), kRecordName)))
            kept += record->size;
    return kept;
}

/// The bytes of a mod and its addons, without what is kept there.
std::optional<std::uint64_t> MeasureMod(const FileSystem& files, const std::string& folder,
                                        const std::vector<DirEntry>& entries) {
    const auto whole = files.TreeSize(folder);
    if (!whole) return std::nullopt;
    std::uint64_t kept = MeasureKept(files, folder, entries);
    const auto* addons = FindEntry(entries, kAddonName, EntryKind::Folder);
    if (addons && !addons->isLink) {
        const auto addonFolder = Join(folder, addons->name);
        for (const auto& addon : files.List(addonFolder, Detail::Names).ValueOr({})) {
            if (addon.kind != EntryKind::Folder || addon.isLink) continue;
            const auto path = Join(addonFolder, addon.name);
            kept += MeasureKept(files, path, files.List(path, Detail::Names).ValueOr({}));
        }
    }
    return *whole - std::min(kept, *whole);
}

/// A file that is there but cannot be read counts as one without fields.
std::optional<ModInfoValues> ReadPresentModInfo(const FileSystem& files, const std::string& folder,
                                                const std::vector<DirEntry>& plainFiles) {
    const DirEntry* file = FindEntry(plainFiles, kModInfoName, EntryKind::File);
    if (!file) return std::nullopt;
    return ReadModInfo(files, Join(folder, file->name)).value_or(ModInfoValues{});
}

} // namespace

const DirEntry* FindReadme(const std::vector<DirEntry>& modFolderEntries) {
    const auto found = std::ranges::find_if(modFolderEntries, [](const DirEntry& entry) {
        return entry.IsPlainFile() && ContainsText(entry.name, kReadmePart);
    });
    return found == modFolderEntries.end() ? nullptr : &*found;
}

ModDetails ReadModDetails(const FileSystem& files, std::string_view modFolder) {
    ModDetails details;
    std::vector<DirEntry> plainFiles;
    std::size_t fileCount = 0;
    KnownFolders known = ListKnownFolders(files, modFolder, Detail::Names);
    for (const auto& folders : known)
        fileCount += CountPlainFiles(folders);

    if (auto& root = known[kKnownFolderCount]; !root.empty()) {
        details.fileCount = fileCount;
        details.size = MeasureMod(files, std::string(modFolder), root.front().entries);
        plainFiles = std::move(root.front().entries);
        std::erase_if(plainFiles, [](const DirEntry& entry) { return !entry.IsPlainFile(); });
    }
    details.hasReadme = FindReadme(plainFiles) != nullptr;
    AddPictures(details, std::string(modFolder), plainFiles);
    details.captions = MakeModInfoCaptions(ReadPresentModInfo(files, std::string(modFolder), plainFiles));
    return details;
}

} // namespace quillbay
