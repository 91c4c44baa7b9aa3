#pragma once

#include "platform/Result.h"

#include <string>
#include <string_view>

/// Paths as the system calls take them.
namespace quillbay {

/// The absolute path in the form `\\?\C:\...` or `\\?\UNC\server\share\...`, which the system takes as it is:
/// more than 260 characters, final dots and blanks, and names like `con` are possible. `/`, doubled
/// separators, `.` and `..` are resolved as text; `C:` is the root folder of that drive.
/// invalid_argument for an empty text or one with a NUL; no_such_file_or_directory for one that names nothing
/// but would mislead the system: with a colon beyond the drive's (a stream inside a file) or a wildcard.
Result<std::wstring> LongPath(std::string_view path);

/// The path without the `\\?\` in front.
std::wstring WithoutLongPrefix(std::wstring_view longPath);

/// `longFolder` and a name in it.
std::wstring InFolder(std::wstring_view longFolder, std::wstring_view name);

/// The folder of a long path, and the name in it; a root has itself and no name.
std::wstring_view LongParent(std::wstring_view longPath);
std::wstring_view LongName(std::wstring_view longPath);

} // namespace quillbay
