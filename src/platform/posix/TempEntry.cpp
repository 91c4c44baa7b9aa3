#include "platform/posix/TempEntry.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay {

namespace {

/// Whether a failed renameat2 means that the kernel or the file system does not know the flag.
bool FlagUnsupported(int error) { return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP; }

int Exchange(const std::string& path, const std::string& other) {
    return ::renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE);
}

std::error_code RenameNew(const std::string& temp, const std::string& to) {
    return RenameWithoutReplacing(temp.c_str(), to.c_str()) == 0 ? std::error_code{} : LastError();
}

} // namespace

int RenameWithoutReplacing(const char* from, const char* to) {
    if (::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0) return 0;
    if (!FlagUnsupported(errno)) return -1;
    struct stat info {};
    if (::lstat(to, &info) == 0) {
        errno = EEXIST;
        return -1;
    }
    return errno == ENOENT ? ::rename(from, to) : -1;
}

int RenameFileOver(const char* from, const char* to) {
    struct stat info {};
    if (::lstat(from, &info) != 0) return -1;
    if (S_ISDIR(info.st_mode)) {
        errno = EISDIR;
        return -1;
    }
    if (::rename(from, to) != 0) return -1;
    // Between two names of one file a rename does nothing, by POSIX, and reports success.
    if (info.st_nlink > 1) ::unlink(from);
    return 0;
}

std::error_code MoveIntoPlace(const std::string& temp, const std::string& to, bool replace) {
    if (!replace) return RenameNew(temp, to);
    // A plain rename over a file makes ext4 write the new one to the disk at once, which slows down an
    // installation by three; exchanging the two names and removing the old file does not.
    if (Exchange(temp, to) != 0) {
        if (errno == ENOENT) return RenameNew(temp, to);
        return FlagUnsupported(errno) ? RenameOver(temp, to) : LastError();
    }
    if (::unlink(temp.c_str()) == 0) return {};
    // A folder, as a rule: nobody who means to replace a file has asked for that before.
    const auto error = LastError();
    Exchange(temp, to);
    return error;
}

std::error_code RenameOver(const std::string& temp, const std::string& to) {
    return RenameFileOver(temp.c_str(), to.c_str()) == 0 ? std::error_code{} : LastError();
}

std::error_code RemoveLeftover(const std::string& path) {
    if (::unlink(path.c_str()) == 0 || errno == ENOENT) return {};
    if (errno == EISDIR && ::rmdir(path.c_str()) == 0) return {};
    return LastError();
}

} // namespace quillbay
