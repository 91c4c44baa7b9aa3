#pragma once

#include "library/KnownFolders.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillbay {

/// What describes a mod; it is never installed.
inline constexpr std::string_view kModInfoName = "ModInfo.txt";
/// In a mod's folder: files of the game that a command would have taken away for good, by date and time.
inline constexpr std::string_view kChangedName = "Changed";

/// A file of a mod that belongs into the game.
struct ModFile {
    std::size_t position; ///< in GameFolders, from 0
    FileInFolder file;
    // Where they were listed:
    bool isReadOnly;    ///< and no link
    std::uint64_t size; ///< bytes
    FileTime modified;
};

/// The plain files in the known folders of a mod, in list order, without those named exactly `ModInfo.txt`
/// and without what this program writes itself. Of two spellings of one file the last one listed counts. They
/// refer to `foldersInMod`.
std::vector<ModFile> CollectModFiles(const KnownFolders& foldersInMod);

/// Finds entries of listed known folders by name, letter case ignored: the exact spelling, else the first in
/// another one, in the folder that look-ups find. Keeps references into `folders`. It indexes one position at
/// a time, so callers go through their names position by position.
class EntryIndex {
public:
    explicit EntryIndex(const KnownFolders& folders) : folders_(folders) {}

    const DirEntry* Find(std::size_t position, std::string_view name);
    /// The path of an entry that Find gave for this position.
    std::string PathOf(std::size_t position, const DirEntry& entry) const;
    /// The same without making the path.
    FileInFolder FileOf(std::size_t position, const DirEntry& entry) const;

private:
    const KnownFolders& folders_;
    std::size_t indexed_ = kGameFolderCount; ///< the position that `names_` holds; at first none
    std::unordered_multimap<std::string, const DirEntry*> names_;
};

/// True for a file, or a link whatever it leads to short of a folder: what can be replaced and saved.
bool IsReplaceable(const DirEntry& entry);

/// True for the names that this program gives to what it writes beside the user's files; they are never
/// installed.
bool IsProgramsOwn(std::string_view name);

/// Adds the paths of the leftover files among listed entries.
void AddLeftovers(const KnownFolders& folders, std::vector<std::string>& leftovers);

} // namespace quillbay
