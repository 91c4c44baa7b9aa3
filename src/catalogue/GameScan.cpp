#include "catalogue/GameScan.h"

#include "library/GameFolders.h"

#include <utility>

namespace quillbay {

namespace {

std::string RelativePath(std::uint8_t folderCode, const DirEntry& file) {
    return std::string(GameFolders[folderCode - 1U]) + file.name;
}

} // namespace

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
    if (!walk_) walk_.emplace(files_, gameDirectory_, DetailFor(FolderCodeAt(kKnownFolderCount)));

    const std::uint8_t folderCode = FolderCodeAt(position_);
    ForEachGameFile(walk_->List(position_, DetailFor(folderCode)), [&](const DirEntry& file) {
        if (secondPass_)
            FindModified(folderCode, file);
        else
            FindNew(folderCode, file);
        ++processed_;
    });
    ++position_;
    return true;
}

Detail GameScan::DetailFor(std::uint8_t folderCode) const {
    return secondPass_ && catalogue_.HasRecords(folderCode) ? Detail::Full : Detail::Names;
}

void GameScan::FindNew(std::uint8_t folderCode, const DirEntry& file) {
    const std::string name = FoldFileName(file.name);
    if (catalogue_.CheckIfFileExists(name, folderCode, GetLengthBucket(name))) return;
    found_.newFiles.push_back(RelativePath(folderCode, file));
}

void GameScan::FindModified(std::uint8_t folderCode, const DirEntry& file) {
    if (catalogue_.Compare(file, folderCode) == FileChange::Modified)
        found_.modifiedFiles.push_back(RelativePath(folderCode, file));
}

} // namespace quillbay
