#include "platform/archive/EntryPath.h"

#include "platform/windows/WideText.h"

#include <archive_entry.h>

namespace quillbay {

// On Windows the library keeps names in wide characters, whatever the locale is.
Utf8Names::Utf8Names() : before_(nullptr) {}
Utf8Names::~Utf8Names() = default;

std::optional<std::string> EntryPath(archive_entry* entry) {
    if (const wchar_t* path = archive_entry_pathname_w(entry)) return NarrowText(path);
    // The library makes wide text of UTF-8 by way of the locale, which may lack the letters.
    const char* path = archive_entry_pathname_utf8(entry);
    return path ? std::optional<std::string>(path) : std::nullopt;
}

} // namespace quillbay
