#include "catalogue/GameScan.h"

#include "library/GameFolders.h"

#include <utility>

namespace quillbay {

GameTotals CountGame(const FileSystem& files, std::string_view gameDirectory) {
    GameTotals totals;
    for (const auto& folders : ListKnownFolders(files, gameDirectory, Detail::Full)) {
        ForEachGameFile(folders, [&](const DirEntry& file) {
            ++totals.files;
            totals.bytes += file.size;
        });
    }
    return totals;
}

GameScan::GameScan(const FileSystem& files, std::string gameDirectory, FileCatalogue catalogue,
                   FoundFiles& found)
    : files_(files), gameDirectory_(std::move(gameDirectory)), catalogue_(std::move(catalogue)),
      found_(found) {}

bool GameScan::Step() {
    if (position_ == kGameFolderCount) {
        if (secondPass_) return false;
        secondPass_ = true;
        position_ = 0;
        walk_.reset();
    }
    if (!walk_) walk_.emplace(files_, gameDirectory_, DetailFor(kKnownFolderCount));
    ForEachGameFile(walk_->List(position_, DetailFor(position_)), [&](const DirEntry& file) {
        const bool isFound = secondPass_ ? catalogue_.Compare(position_, file) == FileChange::Modified
                                         : !catalogue_.Find(position_, file.name);
        if (isFound)
            (secondPass_ ? found_.modifiedFiles : found_.newFiles)
                .push_back(std::string(GameFolders[position_]) + file.name);
        ++processed_;
    });
    ++position_;
    return true;
}

Detail GameScan::DetailFor(std::size_t position) const {
    return secondPass_ && catalogue_.HasRecords(position) ? Detail::Full : Detail::Names;
}

} // namespace quillbay
