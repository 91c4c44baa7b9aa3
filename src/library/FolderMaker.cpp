#include "library/FolderMaker.h"

#include "common/PathText.h"

#include <algorithm>

namespace quillbay {

namespace {

constexpr std::size_t kRoot = kGameFolderCount - 1;

std::size_t ParentPosition(std::string_view folder) {
    const auto parent = folder.substr(0, folder.find_last_of('\\', folder.size() - 2) + 1);
    return static_cast<std::size_t>(std::ranges::find(GameFolders, parent) - GameFolders.begin());
}

} // namespace

FolderMaker::FolderMaker(FileSystem& files, std::string root) : files_(files) {
    paths_[kRoot] = std::move(root);
}

FolderMaker::FolderMaker(FileSystem& files, std::string root, const KnownFolders& existing)
    : FolderMaker(files, std::move(root)) {
    for (std::size_t i = 0; i < kKnownFolderCount; ++i)
        if (!existing[i].empty()) paths_[i] = existing[i].front().path;
}

Result<std::string> FolderMaker::Ensure(std::size_t position) {
    auto& path = paths_[position];
    if (!path.empty()) return path;
    if (failed_[position]) return failed_[position];

    const auto folder = GameFolders[position];
    const auto parent = Ensure(ParentPosition(folder));
    if (!parent) return failed_[position] = parent.Error();
    const auto made = Join(*parent, LastComponent(folder.substr(0, folder.size() - 1)));
    if (const auto error = files_.MakeFolder(made)) return failed_[position] = error;
    made_.push_back(made);
    return path = made;
}

} // namespace quillbay
