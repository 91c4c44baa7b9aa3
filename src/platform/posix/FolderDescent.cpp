#include "platform/posix/FolderDescent.h"

#include "platform/posix/SystemError.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace quillbay {

namespace {

constexpr std::size_t kHeldDescriptors = 32;
constexpr int kOpenFolder = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

int Describe(const UniqueFd& folder, struct statx& info) {
    return ::statx(folder.Get(), "", AT_EMPTY_PATH, STATX_INO, &info);
}

/// Whether something is mounted there. The device alone would miss a folder of the same file system that is
/// mounted once more.
bool IsMountRoot(const struct statx& info) {
    return (info.stx_attributes & info.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0;
}

/// Gives the owner every right to a folder that could not be opened, unless it is mounted there, and opens
/// it.
UniqueFd OpenWidened(int folder, const std::string& name) {
    const UniqueFd handle(::openat(folder, name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct statx info {};
    if (!handle || Describe(handle, info) != 0) return {};
    if (IsMountRoot(info)) {
        errno = EXDEV;
        return {};
    }
    // fchmod refuses such a handle; its name in /proc leads to the folder itself, never through a link.
    const std::string self = "/proc/self/fd/" + std::to_string(handle.Get());
    if (::chmod(self.c_str(), S_IRWXU) != 0) {
        errno = EACCES;
        return {};
    }
    return UniqueFd(::openat(folder, name.c_str(), kOpenFolder));
}

} // namespace

std::error_code FolderDescent::Start(const std::string& root, bool forRemoval) {
    levels_.clear();
    forRemoval_ = forRemoval;
    return EnterFrom(AT_FDCWD, root);
}

std::error_code FolderDescent::Enter(const std::string& name) { return EnterFrom(Fd(), name); }

std::error_code FolderDescent::EnterFrom(int folder, const std::string& name) {
    UniqueFd fd(::openat(folder, name.c_str(), kOpenFolder));
    if (!fd && errno == EACCES && forRemoval_) fd = OpenWidened(folder, name);
    if (!fd) return errno == ELOOP ? SystemError(ENOTDIR) : LastError();

    struct statx info {};
    if (Describe(fd, info) != 0) return LastError();
    const auto device = makedev(info.stx_dev_major, info.stx_dev_minor);
    const bool isElsewhere = !levels_.empty() && device != levels_.front().device;
    if (forRemoval_ && (isElsewhere || IsMountRoot(info))) return SystemError(EXDEV);
    levels_.push_back({std::move(fd), device, info.stx_ino});
    if (levels_.size() > kHeldDescriptors) levels_[levels_.size() - 1 - kHeldDescriptors].fd.Reset();
    return {};
}

std::error_code FolderDescent::Leave() {
    Level& parent = levels_[levels_.size() - 2];
    if (!parent.fd) {
        UniqueFd fd(::openat(Fd(), "..", kOpenFolder));
        struct stat info {};
        if (!fd || ::fstat(fd.Get(), &info) != 0) return LastError();
        if (info.st_dev != parent.device || info.st_ino != parent.inode) return SystemError(ENOENT);
        parent.fd = std::move(fd);
    }
    levels_.pop_back();
    return {};
}

UniqueFd FolderDescent::Duplicate() const { return UniqueFd(::fcntl(Fd(), F_DUPFD_CLOEXEC, 0)); }

} // namespace quillbay
