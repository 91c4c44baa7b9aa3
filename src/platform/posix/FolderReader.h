#pragma once

#include "platform/posix/SystemError.h"
#include "platform/posix/UniqueFd.h"

#include <dirent.h>
#include <memory>
#include <string_view>

namespace quillbay {

/// Reads the names of an open folder, `.` and `..` left out.
class FolderReader {
public:
    /// Takes over a descriptor opened for reading; nothing is read when it is none or no folder.
    explicit FolderReader(UniqueFd folder) {
        if (!folder) {
            error_ = LastError();
            return;
        }
        folder_.reset(::fdopendir(folder.Get()));
        if (folder_) {
            folder.Release();
        } else {
            error_ = LastError();
        }
    }

    /// The next entry, valid until the next call; null at the end or after an error.
    const dirent* Next() {
        if (error_) return nullptr;
        errno = 0;
        while (const dirent* entry = ::readdir(folder_.get())) {
            const std::string_view name = entry->d_name;
            if (name != "." && name != "..") return entry;
        }
        if (errno != 0) error_ = LastError();
        return nullptr;
    }

    /// Why there is no next entry; none at the end.
    std::error_code Error() const { return error_; }
    int Fd() const { return ::dirfd(folder_.get()); }

private:
    struct Close {
        void operator()(DIR* folder) const { ::closedir(folder); }
    };
    std::unique_ptr<DIR, Close> folder_;
    std::error_code error_;
};

} // namespace quillbay
