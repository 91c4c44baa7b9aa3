#include "library/OwnTree.h"

#include "platform/PathText.h"

namespace quillbay {

Result<std::vector<DirEntry>> OwnTree::List(std::string_view folder, Detail detail) const {
    auto entries = Base().List(folder, detail);
    if (!entries) return entries;
    std::erase_if(*entries, [&](const DirEntry& entry) {
        if (entry.kind != EntryKind::Folder) return false;
        if (entry.isLink) return true;
        const auto info = Base().Stat(Join(folder, entry.name));
        return info && info->isMount;
    });
    return entries;
}

std::error_code OwnTree::MakeFolder(std::string_view folder) {
    const auto there = Base().Stat(folder);
    const bool leadsOut = there && there->kind == EntryKind::Folder && (there->isLink || there->isMount);
    return leadsOut ? std::make_error_code(std::errc::cross_device_link) : Base().MakeFolder(folder);
}

} // namespace quillbay
