#pragma once

#include "platform/Result.h"

#include <string>
#include <vector>
#include <windows.h>

/// Folders as the system reports them; paths are long paths (WidePath.h).
namespace quillbay {

/// A symbolic link, junction or mount point. Other reparse points (files kept in a cloud, deduplicated ones)
/// are what they look like.
bool IsLink(const WIN32_FIND_DATAW& entry);

/// A folder, and not a link to one.
bool IsFolder(const WIN32_FIND_DATAW& entry);

/// The entry of a path itself (links are not followed). A root has an empty name.
Result<WIN32_FIND_DATAW> FindEntry(const std::wstring& longPath);

/// All entries of a folder, without `.` and `..`, in the order of the file system.
Result<std::vector<WIN32_FIND_DATAW>> ScanFolder(const std::wstring& longFolder);

} // namespace quillbay
