#pragma once

#include "platform/Result.h"

#include <string>
#include <string_view>
#include <vector>

/// DOS paths (`C:\Games`) and the file system's own. On Windows they are the same; on POSIX the
/// `dosdevices` of a Wine prefix connect them.
namespace quillbay {

/// A DOS path as a path of this system, by the drives of the Wine prefix in `$WINEPREFIX`, else `~/.wine`.
/// A final separator is kept. A text that is no DOS path, or names a drive that the prefix does not have,
/// comes back unchanged.
std::string NativePath(std::string_view dosPath);

/// The folder in a form that an 8-bit batch file can hold: on Windows its 8.3 path (the long path where the
/// volume has no 8.3 names), on POSIX its DOS path in the Wine prefix `prefix`, or where that is empty in the
/// one that holds it (on no other drive of that prefix: its `Z:` form, when the prefix has that drive). An
/// error when there is none.
Result<std::string> ShortPath(std::string_view folder, std::string_view prefix = {});

/// Where to search for the game, one after the other: on Windows the drive of `programDirectory` (`C:`). On
/// POSIX the `drive_c` of every Wine prefix where Registry looks, in its order, then the drive of the prefix
/// that holds `programDirectory` (unless that drive is `/`: the prefix's `drive_c`); each existing folder
/// once.
std::vector<std::string> SearchRoots(std::string_view programDirectory);

/// The drive root that a user would call his own: on Windows that of `programDirectory` (its first three
/// characters), on POSIX `C:\`.
std::string DriveRootText(std::string_view programDirectory);

/// Where a user begins to look for the game by hand: on Windows the root of that drive or share, on POSIX the
/// home folder.
std::string FirstFolder(std::string_view programDirectory);

/// Searches the tree below `root` for a file of that name in any letter case and returns the full path of
/// the first hit, or an empty string. Links to folders are not followed.
std::string FindFileInTree(std::string_view root, std::string_view fileName);

} // namespace quillbay
