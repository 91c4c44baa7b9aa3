#pragma once

#include <optional>
#include <string>

struct archive_entry;

namespace quillbay {

/// While it lives, the unpacking library gives names as UTF-8 to this thread. By itself it gives them in the
/// character set of the locale, and none at all for what that cannot express.
class Utf8Names {
public:
    Utf8Names();
    Utf8Names(const Utf8Names&) = delete;
    Utf8Names& operator=(const Utf8Names&) = delete;
    ~Utf8Names();

private:
    void* before_;
};

/// The name as the library has it, nothing when it has none. Utf8Names must live.
std::optional<std::string> EntryPath(archive_entry* entry);

} // namespace quillbay
