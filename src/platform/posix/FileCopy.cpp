#include "platform/posix/FileCopy.h"

#include "platform/posix/NativePath.h"
#include "platform/posix/TempEntry.h"
#include "platform/posix/UniqueFd.h"

#include <algorithm>
#include <array>
#include <climits>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay {

namespace {

constexpr std::size_t kCopyBuffer = 256 * 1024;
constexpr std::uint64_t kMostAtOnce = 1U << 30;

/// Errors after which the bytes can still be copied through a buffer (EPERM: a sandbox that forbids the
/// call).
bool KernelCannotCopy(int error) {
    return error == EXDEV || error == EINVAL || error == ENOSYS || error == EOPNOTSUPP || error == EPERM;
}

/// Some network mounts and file systems in user space know no such request.
bool KernelCannotFlush(int error) { return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP; }

/// Both, since some file systems in user space take one that is left out for both.
std::array<timespec, 2> TimesOf(const struct stat& info) { return {info.st_atim, info.st_mtim}; }

/// The permissions of a copy. Only one that stands for the file itself keeps the bits that lend rights.
mode_t ModeOfCopy(int copy, const struct stat& info, const CopyOptions& options) {
    const mode_t mode = options.keepLink ? ModeFor(copy, info) : info.st_mode & 0777U;
    return options.makeWritable ? mode | mode_t{S_IWUSR} : mode;
}

std::error_code CopyLink(std::string& from, std::string to, const CopyOptions& options) {
    struct stat info {};
    if (::lstat(from.c_str(), &info) != 0) return LastError();
    std::array<char, PATH_MAX + 1> text{};
    const auto length = ::readlink(from.c_str(), text.data(), text.size() - 1);
    if (length < 0) return LastError();

    TempEntry temp(std::move(to));
    if (const auto error = temp.Make([&](const char* path) { return ::symlink(text.data(), path); })) {
        return error;
    }
    const auto times = TimesOf(info);
    if (::utimensat(AT_FDCWD, temp.Path().c_str(), times.data(), AT_SYMLINK_NOFOLLOW) != 0)
        return LastError();
    return temp.MoveToDestination(options.replace);
}

} // namespace

std::error_code CopyEntry(std::string from, std::string to, const CopyOptions& options) {
    // Without O_NONBLOCK opening a pipe would wait for its writer.
    const int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | (options.keepLink ? O_NOFOLLOW : 0);
    UniqueFd source;
    const auto openError = CallOnEntry(from, [&](const char* path) {
        source = UniqueFd(::open(path, flags));
        return source.Get();
    });
    if (openError && options.keepLink && openError == std::errc::too_many_symbolic_link_levels) {
        return CopyLink(from, std::move(to), options);
    }
    if (openError) return openError;
    struct stat info {};
    if (::fstat(source.Get(), &info) != 0) return LastError();
    if (S_ISDIR(info.st_mode)) return std::make_error_code(std::errc::is_a_directory);
    if (!S_ISREG(info.st_mode)) return std::make_error_code(std::errc::operation_not_supported);

    UniqueFd copy;
    TempEntry temp(std::move(to));
    const auto makeError = temp.Make([&](const char* path) {
        copy = UniqueFd(::open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
        return copy.Get();
    });
    if (makeError) return makeError;
    if (const auto error = CopyBytes(source.Get(), copy.Get(), static_cast<std::uint64_t>(info.st_size))) {
        return error;
    }
    const auto times = TimesOf(info);
    if (::fchmod(copy.Get(), ModeOfCopy(copy.Get(), info, options)) != 0) return LastError();
    if (::futimens(copy.Get(), times.data()) != 0) return LastError();
    if (options.flush) {
        if (const auto error = FlushOpen(copy.Get())) return error;
    }
    if (::close(copy.Release()) != 0) return LastError();
    return temp.MoveToDestination(options.replace);
}

std::error_code FlushOpen(int file) {
    if (::fsync(file) == 0 || KernelCannotFlush(errno)) return {};
    return LastError();
}

mode_t ModeFor(int made, const struct stat& old) {
    const mode_t mode = old.st_mode & 0777U;
    const mode_t lent = old.st_mode & (S_ISUID | S_ISGID);
    struct stat info {};
    if (lent == 0 || ::fstat(made, &info) != 0) return mode;
    const mode_t users = info.st_uid == old.st_uid ? lent & S_ISUID : 0;
    const mode_t groups = info.st_gid == old.st_gid ? lent & S_ISGID : 0;
    return mode | users | groups;
}

std::error_code CopyBytes(int from, int to, std::uint64_t size) {
    std::uint64_t copied = 0;
    while (copied < size) {
        const auto part = static_cast<std::size_t>(std::min(size - copied, kMostAtOnce));
        const auto count = ::copy_file_range(from, nullptr, to, nullptr, part, 0);
        if (count == 0 || (count < 0 && KernelCannotCopy(errno))) break;
        if (count > 0) {
            copied += static_cast<std::uint64_t>(count);
        } else if (errno != EINTR) {
            return LastError();
        }
    }
    if (size != 0 && copied == size) return {};
    return CopyByReading(from, to);
}

std::error_code CopyByReading(int from, int to) {
    const auto buffer = std::make_unique_for_overwrite<char[]>(kCopyBuffer);
    while (true) {
        const auto count = ::read(from, buffer.get(), kCopyBuffer);
        if (count == 0) return {};
        if (count < 0) {
            if (errno == EINTR) continue;
            return LastError();
        }
        if (const auto error = WriteAll(to, buffer.get(), static_cast<std::size_t>(count))) return error;
    }
}

std::error_code WriteAll(int fd, const char* bytes, std::size_t size) {
    while (size > 0) {
        const auto count = ::write(fd, bytes, size);
        if (count < 0) {
            if (errno == EINTR) continue;
            return LastError();
        }
        bytes += count;
        size -= static_cast<std::size_t>(count);
    }
    return {};
}

} // namespace quillbay
