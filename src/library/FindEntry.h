#pragma once

#include "platform/FileSystem.h"

#include <string_view>
#include <vector>

namespace quillbay {

/// The entry of that kind and name among the entries of one folder, as a look-up would find it: the exact
/// spelling, else the first in another letter case; null when there is none. A link counts as the kind of
/// what it leads to.
const DirEntry* FindEntry(const std::vector<DirEntry>& entries, std::string_view name, EntryKind kind);

/// True when `path` is a folder and its last component has exactly the stored spelling; `.` and `..` are no
/// names.
bool IsFolderSpelled(const FileSystem& files, std::string_view path);

} // namespace quillbay
