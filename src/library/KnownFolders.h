#pragma once

#include "library/GameFolders.h"
#include "library/ReadFailure.h"
#include "platform/FileSystem.h"

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbay {

/// A folder found at one of the GameFolders positions: its path in stored spelling, without a final
/// separator, and what it holds.
struct ListedFolder {
    std::string path;
    std::vector<DirEntry> entries;
};

/// The known folders that exist below one root, each listed once. A position can hold several folders where
/// names may differ in letter case only: the one that look-ups find (the exact spelling, else the first
/// listed) comes first. Missing folders are found missing in their parent's listing and cost nothing; folders
/// that cannot be listed are left out, and noted in `failure` where one is given.
using KnownFolders = std::array<std::vector<ListedFolder>, kGameFolderCount>;

/// `afterEach(known, position)` (0 to 78) is called once per position, in list order with the root (78) last;
/// `known` is filled up to that position, and at the root's. It may be empty. An empty `root` has no folders.
KnownFolders ListKnownFolders(const FileSystem& files, std::string_view root, Detail detail,
                              const std::function<void(const KnownFolders&, std::size_t)>& afterEach = {},
                              ReadFailure* failure = nullptr);

/// The folders called `name` in any letter case that the parents' listings hold, listed: the exact spelling
/// first.
std::vector<ListedFolder> ListChildren(const FileSystem& files, const std::vector<ListedFolder>& parents,
                                       std::string_view name, Detail detail,
                                       ReadFailure* failure = nullptr);

/// Plain files among the entries of one folder, or in all folders of one position.
std::size_t CountPlainFiles(const std::vector<DirEntry>& entries);
std::size_t CountPlainFiles(const std::vector<ListedFolder>& folders);

/// Plain files in the known folders of `root`; `afterEach(position, totalSoFar)` may be empty.
std::size_t CountKnownFiles(const FileSystem& files, std::string_view root,
                            const std::function<void(std::size_t, std::size_t)>& afterEach = {});

/// Plain files (no folders, not hidden) in one folder; 0 when it does not exist.
std::size_t CountFilesInFolder(const FileSystem& files, std::string_view folder);

} // namespace quillbay
