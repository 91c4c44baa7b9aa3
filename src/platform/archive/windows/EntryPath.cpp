#include "platform/archive/EntryPath.h"

#include "platform/windows/WideText.h"

#include <archive_entry.h>

namespace quillbay {

// Names are wide there, whatever the locale.
Utf8Names::Utf8Names() : before_(nullptr) {}
Utf8Names::~Utf8Names() = default;

std::optional<std::string> EntryPath(archive_entry* entry) {
    const wchar_t* path = archive_entry_pathname_w(entry);
    return path ? std::optional(NarrowText(path)) : std::nullopt;
}

} // namespace quillbay
