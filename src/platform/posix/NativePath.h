#pragma once

#include "platform/Result.h"
#include "platform/posix/SystemError.h"

#include <optional>
#include <string>
#include <string_view>

/// From the program's paths to those of the system calls: separators, and look-ups that ignore letter case.
namespace quillbay {

/// `path` with `/` for every separator and without final ones; invalid_argument when it is empty or holds a
/// NUL.
Result<std::string> ToNativePath(std::string_view path);

/// The stored spelling of a path that does not exist as it is spelled: component by component the exact name
/// if there is one, else the first in the listing that differs in letter case only. None when there is
/// nothing of that name either, or when the spelling is the same (a link that leads nowhere).
std::optional<std::string> FindSpelling(const std::string& path);

/// The same for the folder of a new name, whose last component stays as it is; none when that folder exists
/// as it is spelled.
std::optional<std::string> FindParentSpelling(const std::string& path);

/// The native path of an existing entry in its stored spelling, in a form that no program takes for an
/// option.
Result<std::string> FindArgumentPath(std::string_view path);

/// The entry `name` beside `path`.
std::string Beside(std::string_view path, std::string_view name);

/// Runs `call(path)`, which returns -1 and sets errno on failure; once more with the stored spelling, which
/// is left in `path`, when there is no such entry.
template <typename Call>
std::error_code CallOnEntry(std::string& path, Call call) {
    if (call(path.c_str()) != -1) return {};
    if (errno != ENOENT) return LastError();
    auto found = FindSpelling(path);
    if (!found) return SystemError(ENOENT);
    path = std::move(*found);
    return call(path.c_str()) != -1 ? std::error_code{} : LastError();
}

/// The same for `call(from, to)`, where `to` is a new name.
template <typename Call>
std::error_code CallOnEntryAndNewName(std::string& from, std::string& to, Call call) {
    if (call(from.c_str(), to.c_str()) != -1) return {};
    if (errno != ENOENT) return LastError();
    auto foundParent = FindParentSpelling(to);
    if (foundParent) to = std::move(*foundParent);
    // FindSpelling gives nothing new where `from` was not what was missing.
    auto foundFrom = FindSpelling(from);
    if (foundFrom) from = std::move(*foundFrom);
    if (!foundParent && !foundFrom) return SystemError(ENOENT);
    return call(from.c_str(), to.c_str()) != -1 ? std::error_code{} : LastError();
}

} // namespace quillbay
