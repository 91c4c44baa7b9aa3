#include "platform/archive/EntryPath.h"

#include "platform/windows/WideText.h"

#include <archive_entry.h>

namespace quillbay {

// Names are wide there, whatever the locale.
Utf8Names::Utf8Names() : before_(nullptr) {}
Utf8Names::~Utf8Names() = default;

std::optional<std::string> EntryPath(archive_entry* entry) {
    if (const wchar_t* path = archive_entry_pathname_w(entry)) return NarrowText(path);
    // What comes as UTF-8 cannot become wide by way of a locale without its letters.
    const char* path = archive_entry_pathname_utf8(entry);
    return path ? std::optional<std::string>(path) : std::nullopt;
}

} // namespace quillbay
