#include "library/FolderMaker.h"

#include "library/ModFiles.h"
#include "platform/PathText.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

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

const std::string& FolderMaker::Existing(std::size_t position) const {
    while (paths_[position].empty())
        position = ParentOfKnownFolder(position);
    return paths_[position];
}

void ForgetFiles(KnownFolders& existing) {
    for (auto& atPosition : existing) {
        for (auto& folder : atPosition) {
            bool isFirst = true;
            std::erase_if(folder.entries, [&isFirst](const DirEntry& entry) {
                const bool isFile = entry.kind != EntryKind::Folder && !IsProgramsOwn(entry.name);
                return isFile && !std::exchange(isFirst, false);
            });
            folder.entries.shrink_to_fit();
        }
    }
}

void RemoveEmptyKnownFolders(FileSystem& files, const KnownFolders& existing, const FolderMaker& maker,
                             const std::array<bool, kGameFolderCount>& filled) {
    const auto& made = maker.Made();
    for (auto folder = made.rbegin(); folder != made.rend(); ++folder)
        Ignore(files.RemoveEmptyFolder(*folder));
    std::unordered_set<std::string> removed;
    for (std::size_t i = kKnownFolderCount; i-- > 0;) {
        for (const auto& folder : existing[i]) {
            const bool isEmpty =
                !filled[i] && std::ranges::all_of(folder.entries, [&](const DirEntry& entry) {
                    return IsProgramsOwn(entry.name) || removed.contains(Join(folder.path, entry.name));
                });
            if (isEmpty && !files.RemoveEmptyFolder(folder.path)) removed.insert(folder.path);
        }
    }
}

} // namespace quillbay
