#pragma once

#include "library/KnownFolders.h"
#include "platform/FileSystem.h"

#include <array>
#include <string>
#include <system_error>
#include <vector>

namespace quillbay {

/// Gives the path of known folders below one root and makes those that are missing, parents first. What a
/// listing has shown is not asked for again, and a folder that could not be made is not tried again.
class FolderMaker {
public:
    /// `root` exists; `existing` is its listing.
    FolderMaker(FileSystem& files, std::string root, const KnownFolders& existing);
    /// `root` exists and is empty.
    FolderMaker(FileSystem& files, std::string root);

    /// The folder at a GameFolders position (from 0), without a final separator.
    Result<std::string> Ensure(std::size_t position);

    /// The existing folder at or above a position, in which Ensure would make the first one.
    const std::string& Existing(std::size_t position) const;

    /// The folders that were made, parents first.
    const std::vector<std::string>& Made() const { return made_; }

private:
    FileSystem& files_;
    std::vector<std::string> made_;
    std::array<std::string, kGameFolderCount> paths_;
    std::array<std::error_code, kGameFolderCount> failed_;
};

/// Leaves of a listing what RemoveEmptyKnownFolders asks for: of the files in a folder only the first.
void ForgetFiles(KnownFolders& existing);

/// Removes the known folders that hold nothing, children first: those that the job made and those that were
/// empty before it. `existing` is the listing from before the job, `filled` tells the positions into which
/// the job put something.
void RemoveEmptyKnownFolders(FileSystem& files, const KnownFolders& existing, const FolderMaker& maker,
                             const std::array<bool, kGameFolderCount>& filled);

} // namespace quillbay
