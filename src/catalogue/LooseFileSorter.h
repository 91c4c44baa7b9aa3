#pragma once

#include "catalogue/LooseFileTypes.h"
#include "library/KnownFolders.h"
#include "platform/FileSystem.h"

#include <array>
#include <bitset>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Sorts the files that lie loose in a mod's base folder into its folders.
namespace quillbay {

/// A file of a type, and whether the user wants it moved.
struct TypedFile {
    std::size_t number; ///< in LooseFiles::names
    bool flagged = true;
};

struct LooseFiles {
    std::string folder;             ///< the mod's base folder; empty: no mod
    std::vector<std::string> names; ///< its plain files, in listing order
    /// By position in LooseFileTypes; types that are not offered have none.
    std::array<std::vector<TypedFile>, kLooseFileTypeCount> byType;
};

/// Lists the base folder and reads each of its ODF files once. A folder that cannot be listed has no files.
LooseFiles ListLooseFiles(const FileSystem& files, std::string_view folder);

/// By position in LooseFileTypes.
using TypeChecks = std::bitset<kLooseFileTypeCount>;

struct LooseMove {
    std::string name;     ///< in the base folder
    std::size_t position; ///< of the destination in GameFolders
};

struct SortPlan {
    KnownFolders folders; ///< of the mod, the base folder last
    std::vector<LooseMove> moves;
    std::vector<std::string> untyped;       ///< files of the base folder that fit no type that is offered
    std::vector<std::string> notListed;     ///< chosen files of a base folder that cannot be listed
    std::vector<std::string> leftoverFiles; ///< of interrupted operations
    std::string wayIntoGame; ///< by which the mod leads into the game: then there is nothing to run
};

/// What would be moved: every file that is flagged in a checked type and still there, into the folder of the
/// first such type. Pictures come before the ODF files that they are told by. `gameDirectory` need not exist.
/// ModInfo.txt, which belongs into the base folder, does not count as a file without a type.
SortPlan PlanSorting(const FileSystem& files, const LooseFiles& loose, const TypeChecks& checks,
                     std::string_view gameDirectory);

struct SortResult {
    std::size_t moved = 0;
    std::vector<std::string> notMoved; ///< names; these files are in the base folder as they were
    std::string leadsBack;             ///< a destination that is the base folder itself, by a link or a mount
};

/// Moves the files, replacing files of the same name in any letter case, and removes empty known folders.
/// When a move fails, both the loose file and the one it should have replaced are where they were. Neither
/// a folder nor a file that was moved in the same run is replaced, no file is by a link to it, and nothing
/// goes into a folder that leads back to the base folder.
SortResult RunSorting(FileSystem& files, const SortPlan& plan);

} // namespace quillbay
