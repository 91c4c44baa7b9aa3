#include "library/FolderMaker.h"

#include "platform/PathText.h"

namespace quillbay {

FolderMaker::FolderMaker(FileSystem& files, std::string root) : files_(files) {
    paths_[kKnownFolderCount] = std::move(root);
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

    const auto parent = Ensure(ParentOfKnownFolder(position));
    if (!parent) return failed_[position] = parent.Error();
    const auto made = Join(*parent, LastComponent(WithoutFinalSeparators(GameFolders[position])));
    if (const auto error = files_.MakeFolder(made)) return failed_[position] = error;
    made_.push_back(made);
    return path = made;
}

} // namespace quillbay
