#include "platform/archive/EntryPath.h"

#include <archive_entry.h>
#include <clocale>
#include <locale.h>

namespace quillbay {

namespace {

/// Null where the system has no such locale; names are then converted by that of the process.
locale_t Utf8Locale() {
    static const locale_t locale = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t{});
    return locale;
}

} // namespace

Utf8Names::Utf8Names() : before_(Utf8Locale() ? ::uselocale(Utf8Locale()) : nullptr) {}

Utf8Names::~Utf8Names() {
    if (before_) ::uselocale(static_cast<locale_t>(before_));
}

std::optional<std::string> EntryPath(archive_entry* entry) {
    const char* path = archive_entry_pathname(entry);
    return path ? std::optional<std::string>(path) : std::nullopt;
}

} // namespace quillbay
