#pragma once

#include "platform/FileSystem.h"

#include <string>
#include <system_error>

namespace quillbay {

/// Gives files a second place: by a hard link, which copies no data and cannot run out of space, else by a
/// copy that is on the disk. Where a folder's files lie on another disk than the second place, links are
/// tried once.
class SecondPlace {
public:
    explicit SecondPlace(FileSystem& files) : files_(files) {}

    /// A link is given as a link. With `replace`, `to` may exist.
    [[nodiscard]] std::error_code Give(const std::string& from, const std::string& to, bool replace);

private:
    FileSystem& files_;
    std::string otherDisk_; ///< the folder whose files cannot be linked
};

} // namespace quillbay
