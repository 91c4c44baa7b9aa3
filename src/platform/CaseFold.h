#pragma once

#include <string>
#include <string_view>

namespace quillbay {

/// The form in which two names are compared when letter case is ignored: each letter in upper case, one
/// character for one, by Unicode's simple mapping (as NTFS does; a letter beyond ASCII never becomes an ASCII
/// one). Bytes that are not UTF-8 stay as they are.
std::string FoldCase(std::string_view name);

/// FoldCase(a) == FoldCase(b), without making the two strings where both are ASCII.
bool EqualFolded(std::string_view a, std::string_view b);

/// True when `text` begins with `start`, letter case ignored.
inline bool StartsFolded(std::string_view text, std::string_view start) {
    return EqualFolded(text.substr(0, start.size()), start);
}

/// True when `text` ends in `ending`, letter case ignored.
inline bool EndsFolded(std::string_view text, std::string_view ending) {
    return text.size() >= ending.size() && EqualFolded(text.substr(text.size() - ending.size()), ending);
}

/// The order of lists: by folded form, then by code point.
bool LessFolded(std::string_view a, std::string_view b);

} // namespace quillbay
