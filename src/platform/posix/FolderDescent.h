#pragma once

#include "platform/posix/UniqueFd.h"

#include <deque>
#include <string>
#include <sys/types.h>
#include <system_error>

namespace quillbay {

/// A way down a folder tree by descriptors instead of paths: it follows no link, does not leave the tree when
/// somebody moves things meanwhile, and needs a fixed number of descriptors however deep the tree is.
class FolderDescent {
public:
    /// Starts at a folder; not_a_directory for anything else, a link to a folder included. With `forRemoval`
    /// no mount is entered, this first folder included (cross_device_link), and permissions of folders that
    /// stand in the way are widened where that is allowed.
    std::error_code Start(const std::string& root, bool forRemoval);
    /// Goes into a folder of the current one. On failure the current one stays.
    std::error_code Enter(const std::string& name);
    /// Goes back. After a failure (the folder was moved elsewhere) the descent is over.
    std::error_code Leave();

    /// The current folder.
    int Fd() const { return levels_.back().fd.Get(); }
    /// A second descriptor of the current folder, for a FolderReader.
    UniqueFd Duplicate() const;

private:
    struct Level {
        UniqueFd fd; ///< none while the level is far above the current one
        dev_t device = 0;
        ino_t inode = 0;
    };

    std::error_code EnterFrom(int folder, const std::string& name);

    std::deque<Level> levels_;
    bool forRemoval_ = false;
};

} // namespace quillbay
