#include "library/OwnTree.h"

#include "platform/CaseFold.h"
#include "platform/PathText.h"

#include <algorithm>

namespace quillbay {

Result<std::vector<DirEntry>> OwnTree::List(std::string_view folder, Detail detail) const {
    auto entries = Base().List(folder, detail);
    if (!entries) return entries;
    std::erase_if(*entries, [&](const DirEntry& entry) {
        if (entry.kind != EntryKind::Folder) return false;
        std::string path = Join(folder, entry.name);
        if (!LeadsOut(path, entry)) return false;
        hidden_.push_back(std::move(path));
        return true;
    });
    return entries;
}

std::error_code OwnTree::MakeFolder(std::string_view folder) {
    const bool isHidden =
        std::ranges::any_of(hidden_, [folder](const std::string& path) { return EqualFolded(path, folder); });
    return isHidden ? std::make_error_code(std::errc::cross_device_link) : Base().MakeFolder(folder);
}

bool OwnTree::LeadsOut(const std::string& path, const DirEntry& entry) const {
    if (entry.isLink) return true;
    const auto info = Base().Stat(path);
    return info && info->isMount;
}

} // namespace quillbay
