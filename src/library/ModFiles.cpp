#include "library/ModFiles.h"

#include "library/InstalledMods.h"
#include "platform/CaseFold.h"
#include "platform/PathText.h"

namespace quillbay {

namespace {

/// In a mod's folder, from versions before there were records.
constexpr std::string_view kTimeMarker = "~quillbay.time";

bool IsLeftoverFile(const DirEntry& entry) {
    return entry.kind != EntryKind::Folder &&
           (IsTempName(entry.name) || entry.name == kTempBackup || entry.name == kTimeMarker);
}

} // namespace

std::vector<ModFile> CollectModFiles(const KnownFolders& foldersInMod) {
    std::size_t most = 0;
    for (const auto& sameName : foldersInMod)
        for (const auto& folder : sameName)
            most += folder.entries.size();
    std::vector<ModFile> found;
    found.reserve(most);
    for (std::size_t position = 0; position < kGameFolderCount; ++position) {
        std::unordered_map<std::string, std::size_t> byName;
        for (const auto& folder : foldersInMod[position]) {
            for (const auto& entry : folder.entries) {
                if (!entry.IsPlainFile() || entry.name == kModInfoName || IsProgramsOwn(entry.name)) continue;
                ModFile file{position,
                             {&folder.path, entry.name},
                             entry.readOnly && !entry.isLink,
                             entry.size,
                             entry.modified};
                const auto [at, isNew] = byName.try_emplace(FoldCase(entry.name), found.size());
                if (isNew)
                    found.push_back(std::move(file));
                else
                    found[at->second] = std::move(file);
            }
        }
    }
    return found;
}

const DirEntry* EntryIndex::Find(std::size_t position, std::string_view name) {
    if (folders_[position].empty()) return nullptr;
    const auto& entries = folders_[position].front().entries;
    if (indexed_ != position) {
        indexed_ = position;
        names_.clear();
        names_.reserve(entries.size());
        for (const auto& entry : entries)
            names_.emplace(FoldCase(entry.name), &entry);
    }
    const DirEntry* found = nullptr;
    const auto [first, last] = names_.equal_range(FoldCase(name));
    for (auto spelling = first; spelling != last; ++spelling) {
        const DirEntry* entry = spelling->second;
        if (entry->name == name) return entry;
        // Entries lie in listing order in their folder, in no order in the map.
        if (!found || entry < found) found = entry;
    }
    return found;
}

std::string EntryIndex::PathOf(std::size_t position, const DirEntry& entry) const {
    return FileOf(position, entry).Path();
}

FileInFolder EntryIndex::FileOf(std::size_t position, const DirEntry& entry) const {
    return {&folders_[position].front().path, entry.name};
}

bool IsReplaceable(const DirEntry& entry) {
    return entry.kind == EntryKind::File || (entry.isLink && entry.kind != EntryKind::Folder);
}

bool IsProgramsOwn(std::string_view name) {
    return IsTempName(name) || name == kTempBackup || name == kRecordName || name == kTimeMarker;
}

void AddLeftovers(const KnownFolders& folders, std::vector<std::string>& leftovers) {
    for (const auto& atPosition : folders)
        for (const auto& folder : atPosition)
            for (const auto& entry : folder.entries)
                if (IsLeftoverFile(entry)) leftovers.push_back(Join(folder.path, entry.name));
}

} // namespace quillbay
