#pragma once

#include "catalogue/FileCatalogue.h"
#include "library/KnownFolders.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbay {

struct GameTotals {
    std::size_t files = 0; ///< plain files in the known folders
    std::uint64_t bytes = 0;
};

GameTotals CountGame(const FileSystem& files, std::string_view gameDirectory);

/// What a scan has found, each file as an entry of GameFolders and its name, in the order of the scan.
struct FoundFiles {
    std::vector<std::string> newFiles;      ///< not in the catalogue
    std::vector<std::string> modifiedFiles; ///< recorded with another size or time
};

/// Compares the game directory with the catalogue, folder by folder, so that its caller can show how far it
/// is, and stop, in between. The first pass finds the new files, the second one the modified ones; each lists
/// a folder once. Folders that are missing or cannot be listed hold no files.
class GameScan {
public:
    /// Adds to `found`, which must outlive the scan, as must `files`.
    GameScan(const FileSystem& files, std::string gameDirectory, FileCatalogue catalogue, FoundFiles& found);

    /// Handles the next folder. False when there was none left.
    bool Step();
    /// A folder of the second pass has been handled.
    bool InSecondPass() const { return secondPass_; }
    /// Files handled in both passes.
    std::size_t Processed() const { return processed_; }

private:
    /// Sizes and times only where something is compared with them.
    Detail DetailFor(std::size_t position) const;

    const FileSystem& files_;
    const std::string gameDirectory_;
    const FileCatalogue catalogue_;
    std::optional<KnownFolderWalk> walk_; ///< of the running pass
    bool secondPass_ = false;
    std::size_t position_ = 0; ///< in GameFolders, of the next folder
    std::size_t processed_ = 0;
    FoundFiles& found_;
};

} // namespace quillbay
