#include "platform/CaseFold.h"
#include "platform/DosPath.h"
#include "platform/PathText.h"
#include "platform/posix/FolderListing.h"
#include "platform/posix/NativePath.h"

#include <deque>

namespace quillbay {

/// Level by level, so that a game near the root is found before the depths are searched.
std::string FindFileInTree(std::string_view root, std::string_view fileName) {
    auto start = ToNativePath(root);
    if (!start) return {};
    std::deque<std::string> pending = {std::move(*start)};
    while (!pending.empty()) {
        const std::string folder = std::move(pending.front());
        pending.pop_front();
        const std::string prefix = folder == "/" ? folder : folder + '/';
        for (const auto& entry : ListFolder(folder, Detail::Names).ValueOr({})) {
            if (entry.kind == EntryKind::File && EqualFolded(entry.name, fileName)) {
                return prefix + entry.name;
            }
            if (entry.kind == EntryKind::Folder && !entry.isLink) pending.push_back(prefix + entry.name);
        }
    }
    return {};
}

} // namespace quillbay
