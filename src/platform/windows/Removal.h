#pragma once

#include "platform/windows/WinError.h"

#include <string>
#include <system_error>
#include <windows.h>

/// Removing names; paths are long paths (WidePath.h).
namespace quillbay {

/// How many names the file has; 0 when it cannot be asked.
unsigned CountLinks(const std::wstring& longPath);

/// Removes a file, or a link itself, a read-only one too. The attribute is never cleared on a file that has
/// other names: where the system cannot remove such a name as it is, that is permission_denied.
std::error_code RemoveFileName(const std::wstring& longPath);

/// Removes an empty folder, or a link to a folder.
std::error_code RemoveFolderName(const std::wstring& longPath);

/// Removes a folder with everything in it. Goes on after a failure and reports the first one;
/// what somebody else has removed meanwhile is none.
std::error_code RemoveFolderTree(const std::wstring& longFolder);

/// Runs `operation`, which returns an error code, on a path whose read-only attribute is cleared for it, and
/// puts the attribute back when it fails.
template <typename Operation>
std::error_code WithoutReadOnly(const std::wstring& longPath, Operation operation) {
    const DWORD attributes = GetFileAttributesW(longPath.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return LastError();
    const DWORD others = attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY);
    if (!SetFileAttributesW(longPath.c_str(), others ? others : FILE_ATTRIBUTE_NORMAL)) return LastError();
    const std::error_code error = operation();
    if (error) SetFileAttributesW(longPath.c_str(), attributes);
    return error;
}

} // namespace quillbay
