#include "library/FindEntry.h"

#include "platform/CaseFold.h"
#include "platform/PathText.h"

namespace quillbay {

const DirEntry* FindEntry(const std::vector<DirEntry>& entries, std::string_view name, EntryKind kind) {
    const DirEntry* found = nullptr;
    for (const DirEntry& entry : entries) {
        if (entry.kind != kind) continue;
        if (entry.name == name) return &entry;
        if (!found && EqualFolded(entry.name, name)) found = &entry;
    }
    return found;
}

bool IsFolderSpelled(const FileSystem& files, std::string_view path) {
    const std::string_view name = LastComponent(path);
    if (name == "." || name == "..") return false;
    const auto found = files.Stat(path);
    return found && found->kind == EntryKind::Folder && found->name == name;
}

} // namespace quillbay
