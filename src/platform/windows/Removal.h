#pragma once

#include <string>
#include <system_error>

/// Removing names; paths are long paths (WidePath.h).
namespace quillbay {

/// Removes a file, or a link itself, a read-only one too. The attribute is never cleared on a file that has
/// other names: where the system cannot remove such a name as it is, that is permission_denied.
std::error_code RemoveFileName(const std::wstring& longPath);

/// Removes an empty folder, or a link to a folder.
std::error_code RemoveFolderName(const std::wstring& longPath);

/// Removes a folder with everything in it. Goes on after a failure and reports the first one;
/// what somebody else has removed meanwhile is none.
std::error_code RemoveFolderTree(const std::wstring& longFolder);

} // namespace quillbay
