#pragma once

#include "library/GameFolders.h"
#include "platform/FileSystem.h"

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace quillbay {

/// The first thing that could not be read while a job was planned. What is missing is no failure; what is
/// there and cannot be read is never guessed at, and nothing is changed then.
struct ReadFailure {
    std::string path;
    std::error_code error;

    explicit operator bool() const { return bool(error); }

    void Note(std::string_view failedPath, std::error_code failure) {
        if (error || !failure || failure == std::errc::no_such_file_or_directory) return;
        path = failedPath;
        error = failure;
    }
};

/// A file with which a job went on without it, and the reason.
struct FailedFile {
    std::string path;
    std::error_code error;
};

/// A folder found at one of the GameFolders positions: its path in stored spelling, without a final
/// separator, and what it holds.
struct ListedFolder {
    std::string path;
    std::vector<DirEntry> entries;
    bool isLink = false; ///< a link leads to it
};

/// A file in a listed folder, whose path is made when it is asked for: the paths of all files of a job would
/// take more memory than all else that is known of them. The listing, in which `folder` lies, must stay.
struct FileInFolder {
    const std::string* folder = nullptr; ///< null for no file
    std::string name;

    explicit operator bool() const { return folder; }
    std::string Path() const; ///< empty for no file
};

/// The known folders that exist below one root, each listed once. A position can hold several folders where
/// names may differ in letter case only: the one that look-ups find (the exact spelling, else the first
/// listed) comes first. Missing folders are found missing in their parent's listing and cost nothing; folders
/// that cannot be listed are left out, and noted in `failure` where one is given.
using KnownFolders = std::array<std::vector<ListedFolder>, kGameFolderCount>;

/// An empty `root` has no folders.
KnownFolders ListKnownFolders(const FileSystem& files, std::string_view root, Detail detail,
                              ReadFailure* failure = nullptr);

/// The folders called `name` in any letter case that the parents' listings hold, listed: the exact spelling
/// first.
std::vector<ListedFolder> ListChildren(const FileSystem& files, const std::vector<ListedFolder>& parents,
                                       std::string_view name, Detail detail, ReadFailure* failure = nullptr);

/// The paths of the known folders by position, as in KnownFolders.
using KnownFolderPaths = std::array<std::vector<std::string>, kKnownFolderCount>;

/// Where the known folders are that exist below `root`. Only those that can hold other known folders are
/// listed, once each.
KnownFolderPaths FindKnownFolders(const FileSystem& files, std::string_view root);

/// The position of the known folder that holds this one; the root's (78) for a top-level folder.
std::size_t ParentOfKnownFolder(std::size_t position);

/// Lists the known folders of a root one at a time, as ListKnownFolders does, for callers that do something
/// else in between.
class KnownFolderWalk {
public:
    /// Lists the root. `files` and `failure`, which may be null, must outlive the walk.
    KnownFolderWalk(const FileSystem& files, std::string_view root, Detail rootDetail,
                    ReadFailure* failure = nullptr);

    /// The folders of the position; positions must come in order, 0 to 78 (the root, listed already).
    const std::vector<ListedFolder>& List(std::size_t position, Detail detail);
    const KnownFolders& Known() const { return known_; }
    KnownFolders TakeKnown() { return std::move(known_); }

private:
    const FileSystem& files_;
    ReadFailure* failure_;
    KnownFolders known_;
};

/// Plain files (no folders, not hidden) among the entries of one folder, or in all folders of one position:
/// CountFilesInFolder of what has been listed already.
std::size_t CountPlainFiles(const std::vector<DirEntry>& entries);
std::size_t CountPlainFiles(const std::vector<ListedFolder>& folders);

/// Calls `use(entry)` for the plain files of one position that look-ups find, in listing order.
template <typename Use>
void ForEachGameFile(const std::vector<ListedFolder>& folders, Use use) {
    if (folders.empty()) return;
    for (const DirEntry& entry : folders.front().entries)
        if (entry.IsPlainFile()) use(entry);
}

/// Plain files in the known folders of `root`. `goOn(position, totalSoFar)` is asked after each and ends the
/// count with false; it may be empty.
std::size_t CountKnownFiles(const FileSystem& files, std::string_view root,
                            const std::function<bool(std::size_t, std::size_t)>& goOn = {});

} // namespace quillbay
