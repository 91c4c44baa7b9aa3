#include "library/EmptyFolders.h"

#include "library/ModFiles.h"
#include "platform/PathText.h"

#include <algorithm>
#include <string>
#include <unordered_set>

namespace quillbay {

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
                    return IsLeftover(entry.name) || removed.contains(Join(folder.path, entry.name));
                });
            if (isEmpty && !files.RemoveEmptyFolder(folder.path)) removed.insert(folder.path);
        }
    }
}

} // namespace quillbay
