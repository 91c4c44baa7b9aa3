#include "library/FindEntry.h"

#include "platform/CaseFold.h"

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

} // namespace quillbay
