#pragma once

#include "platform/windows/Handle.h"

#include <string>
#include <system_error>
#include <windows.h>

/// What can be done to an open file, without looking for its path again; paths are long paths (WidePath.h).
namespace quillbay {

inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

inline bool HasAttribute(DWORD attributes, DWORD bit) {
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & bit);
}

/// An existing file or folder, or a link itself.
Handle OpenName(const std::wstring& longPath, DWORD access);

/// What a path leads to, for asking about it.
Handle OpenTarget(const std::wstring& longPath);

/// INVALID_FILE_ATTRIBUTES, and GetLastError, on failure.
DWORD AttributesOf(const Handle& file);

/// Only those that a program may set; needs FILE_WRITE_ATTRIBUTES.
std::error_code SetAttributesOf(const Handle& file, DWORD attributes);

/// Gives the file, opened with DELETE, the name `to`, which takes the place of another file with `replace`, a
/// link as a link. `file_exists` without it, and is_a_directory for a folder with it.
std::error_code RenameOpen(const Handle& file, const std::wstring& to, bool replace);

/// Gives the file a second name. As RenameOpen otherwise.
std::error_code LinkOpen(const Handle& file, const std::wstring& to, bool replace);

/// Everything written is on the disk. Some network drives and devices know no such request, and keep what
/// they get as safely as they can: there this is no error.
std::error_code FlushOpen(const Handle& file);

} // namespace quillbay
