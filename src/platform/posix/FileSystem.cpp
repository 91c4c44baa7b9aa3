#include "platform/FileSystem.h"

#include "platform/CaseFold.h"
#include "platform/FingerprintsAhead.h"
#include "platform/RealPath.h"
#include "platform/WriteTrial.h"
#include "platform/posix/FileCopy.h"
#include "platform/posix/FolderListing.h"
#include "platform/posix/FolderTree.h"
#include "platform/posix/NativePath.h"
#include "platform/posix/NewFile.h"
#include "platform/posix/TempEntry.h"
#include "platform/posix/UniqueFd.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace quillbay {

namespace {

constexpr std::size_t kCompareBuffer = 128 * 1024;
constexpr std::size_t kFingerprintBuffer = 64 * 1024; ///< on the stack

std::error_code Failure(std::errc error) { return std::make_error_code(error); }

/// Opens a file (found in any spelling) for reading and describes it.
std::error_code OpenFile(std::string_view file, UniqueFd& opened, struct stat& info) {
    auto path = ToNativePath(file);
    if (!path) return path.Error();
    // Without O_NONBLOCK opening a pipe would wait for its writer.
    const auto error = CallOnEntry(*path, [&](const char* text) {
        opened = UniqueFd(::open(text, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
        return opened.Get();
    });
    if (error) return error;
    if (::fstat(opened.Get(), &info) != 0) return LastError();
    if (S_ISDIR(info.st_mode)) return Failure(std::errc::is_a_directory);
    return S_ISREG(info.st_mode) ? std::error_code{} : Failure(std::errc::operation_not_supported);
}

/// Up to `size` bytes from `offset`, fewer only at the end of the file.
Result<std::size_t> ReadFully(int fd, char* buffer, std::size_t size, off_t offset) {
    std::size_t done = 0;
    while (done < size) {
        const auto count = ::pread(fd, buffer + done, size - done, offset + static_cast<off_t>(done));
        if (count < 0) {
            if (errno == EINTR) continue;
            return LastError();
        }
        if (count == 0) break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

Result<Fingerprint> FingerprintOpen(int file, std::uint64_t size) {
    std::array<char, kFingerprintBuffer> buffer;
    const auto first = static_cast<std::size_t>(std::min<std::uint64_t>(size, buffer.size()));
    auto count = ReadFully(file, buffer.data(), first, 0);
    if (!count) return count.Error();
    if (size <= buffer.size()) return FingerprintOf({buffer.data(), *count});
    Fingerprinter fingerprinter;
    for (off_t offset = 0; *count > 0;) {
        fingerprinter.Add({buffer.data(), *count});
        offset += static_cast<off_t>(*count);
        count = ReadFully(file, buffer.data(), buffer.size(), offset);
        if (!count) return count.Error();
    }
    return fingerprinter.Finish();
}

Result<bool> CompareOpen(int file, int other, std::uint64_t size) {
    const auto chunk = static_cast<std::size_t>(std::min<std::uint64_t>(size, kCompareBuffer));
    const auto buffer = std::make_unique_for_overwrite<char[]>(2 * chunk);
    char* const otherBuffer = buffer.get() + chunk;
    for (std::uint64_t offset = 0; offset < size; offset += chunk) {
        const auto count = ReadFully(file, buffer.get(), chunk, static_cast<off_t>(offset));
        if (!count) return count.Error();
        const auto otherCount = ReadFully(other, otherBuffer, chunk, static_cast<off_t>(offset));
        if (!otherCount) return otherCount.Error();
        if (*count != *otherCount || std::memcmp(buffer.get(), otherBuffer, *count) != 0) return false;
    }
    return true;
}

std::error_code ChangeMode(std::string& path, mode_t clear, mode_t set) {
    struct stat info {};
    const auto error = CallOnEntry(path, [&](const char* text) { return ::stat(text, &info); });
    if (error) return error;
    const mode_t mode = (info.st_mode & 07777U & ~clear) | set;
    return ::chmod(path.c_str(), mode) == 0 ? std::error_code{} : LastError();
}

/// Whether two names stand for one entry, so that a rename between them only changes its spelling.
bool IsSameEntry(const std::string& from, const std::string& to) {
    if (from == to) return true;
    struct stat info {};
    struct stat other {};
    if (::lstat(from.c_str(), &info) != 0 || ::lstat(to.c_str(), &other) != 0) return false;
    if (info.st_dev != other.st_dev || info.st_ino != other.st_ino || !EqualFolded(from, to)) return false;
    return S_ISDIR(info.st_mode) || info.st_nlink == 1;
}

/// linkat that says what a file system without hard links means, or without further ones for this file.
int MakeLink(const char* from, const char* to) {
    const int result = ::linkat(AT_FDCWD, from, AT_FDCWD, to, 0);
    if (result != 0 && (errno == EPERM || errno == EMLINK)) errno = EOPNOTSUPP;
    return result;
}

std::error_code LinkEntry(std::string from, std::string to, bool replace) {
    if (!replace) return CallOnEntryAndNewName(from, to, MakeLink);
    const auto replaceBy = [&to](const std::string& source) {
        TempEntry temp(to);
        const auto error = temp.Make([&](const char* path) { return MakeLink(source.c_str(), path); });
        // The file was written before it gets this second name, so that a rename over another one has nothing
        // to wait for.
        return error ? error : temp.RenameOverDestination();
    };
    const auto error = replaceBy(from);
    if (error != std::errc::no_such_file_or_directory) return error;
    const auto found = FindSpelling(from);
    return found ? replaceBy(*found) : error;
}

class DiskFileSystem : public FileSystem {
public:
    Result<std::vector<DirEntry>> List(std::string_view folder, Detail detail) const override {
        auto path = ToNativePath(folder);
        if (!path) return path.Error();
        return ListFolder(std::move(*path), detail);
    }

    Result<FileInfo> Stat(std::string_view entry) const override {
        auto path = ToNativePath(entry);
        if (!path) return path.Error();
        return StatEntry(std::move(*path));
    }

    Result<std::string> Read(std::string_view file, std::uint64_t offset,
                             std::size_t maxBytes) const override {
        UniqueFd opened;
        struct stat info {};
        if (const auto error = OpenFile(file, opened, info)) return error;
        const auto size = static_cast<std::uint64_t>(info.st_size);
        if (offset >= size || maxBytes == 0) return std::string();
        std::string bytes(static_cast<std::size_t>(std::min<std::uint64_t>(maxBytes, size - offset)), '\0');
        const auto count = ReadFully(opened.Get(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (!count) return count.Error();
        bytes.resize(*count);
        return bytes;
    }

    Result<std::string> ReadLink(std::string_view link) const override {
        auto path = ToNativePath(link);
        if (!path) return path.Error();
        std::array<char, PATH_MAX> text{};
        ssize_t length = 0;
        const auto error = CallOnEntry(*path, [&](const char* name) {
            length = ::readlink(name, text.data(), text.size());
            return length < 0 ? -1 : 0;
        });
        if (error) return error;
        return std::string(text.data(), static_cast<std::size_t>(length));
    }

    Result<bool> SameContents(std::string_view file, std::string_view other) const override {
        UniqueFd opened;
        UniqueFd otherOpened;
        struct stat info {};
        struct stat otherInfo {};
        if (const auto error = OpenFile(file, opened, info)) return error;
        if (const auto error = OpenFile(other, otherOpened, otherInfo)) return error;
        if (info.st_size != otherInfo.st_size) return false;
        if (info.st_dev == otherInfo.st_dev && info.st_ino == otherInfo.st_ino) return true;
        return CompareOpen(opened.Get(), otherOpened.Get(), static_cast<std::uint64_t>(info.st_size));
    }

    std::unique_ptr<FingerprintReader> FingerprintFiles(FilesByIndex files) const override {
        return std::make_unique<FingerprintsAhead>(*this, std::move(files));
    }

    Result<Fingerprint> FingerprintFile(std::string_view file) const override {
        UniqueFd opened;
        struct stat info {};
        if (const auto error = OpenFile(file, opened, info)) return error;
        return FingerprintOpen(opened.Get(), static_cast<std::uint64_t>(info.st_size));
    }

    Result<std::uint64_t> TreeSize(std::string_view folder) const override {
        auto path = ToNativePath(folder);
        if (!path) return path.Error();
        auto size = FolderTreeSize(*path);
        if (size || size.Error() != std::errc::no_such_file_or_directory) return size;
        const auto found = FindSpelling(*path);
        return found ? FolderTreeSize(*found) : size;
    }

    Result<std::string> RealPath(std::string_view entry) const override { return FindRealPath(entry); }

    Result<DiskSpace> SpaceAt(std::string_view folder) const override {
        auto path = ToNativePath(folder);
        if (!path) return path.Error();
        struct statvfs disk {};
        const auto error = CallOnEntry(*path, [&](const char* text) { return ::statvfs(text, &disk); });
        if (error) return error;
        return DiskSpace{disk.f_bavail * disk.f_frsize, disk.f_blocks * disk.f_frsize};
    }

    std::error_code MakeFolder(std::string_view folder) override {
        auto path = ToNativePath(folder);
        if (!path) return path.Error();
        struct stat info {};
        const auto found = CallOnEntry(*path, [&](const char* text) { return ::stat(text, &info); });
        if (!found) return S_ISDIR(info.st_mode) ? std::error_code{} : Failure(std::errc::file_exists);
        if (found != std::errc::no_such_file_or_directory) return found;
        if (::mkdir(path->c_str(), 0777) == 0) return {};
        if (errno == ENOENT) {
            const auto parentFound = FindParentSpelling(*path);
            if (!parentFound) return Failure(std::errc::no_such_file_or_directory);
            if (::mkdir(parentFound->c_str(), 0777) == 0) return {};
        }
        return LastError();
    }

    std::error_code RemoveEmptyFolder(std::string_view folder) override {
        auto path = ToNativePath(folder);
        if (!path) return path.Error();
        const auto error = CallOnEntry(*path, ::rmdir);
        return error == std::errc::file_exists ? Failure(std::errc::directory_not_empty) : error;
    }

    std::error_code RemoveFile(std::string_view file) override {
        auto path = ToNativePath(file);
        if (!path) return path.Error();
        return CallOnEntry(*path, ::unlink);
    }

    std::error_code RemoveTree(std::string_view folder) override {
        auto path = ToNativePath(folder);
        if (!path) return path.Error();
        struct stat info {};
        const auto error = CallOnEntry(*path, [&](const char* text) { return ::lstat(text, &info); });
        return error ? error : RemoveFolderTree(*path);
    }

    std::error_code Copy(std::string_view from, std::string_view to, CopyOptions options) override {
        auto source = ToNativePath(from);
        auto destination = ToNativePath(to);
        if (!source) return source.Error();
        if (!destination) return destination.Error();
        return CopyEntry(std::move(*source), std::move(*destination), options);
    }

    std::error_code HardLink(std::string_view from, std::string_view to, bool replace) override {
        auto source = ToNativePath(from);
        auto name = ToNativePath(to);
        if (!source) return source.Error();
        if (!name) return name.Error();
        return LinkEntry(std::move(*source), std::move(*name), replace);
    }

    std::error_code Rename(std::string_view from, std::string_view to) override {
        auto source = ToNativePath(from);
        auto name = ToNativePath(to);
        if (!source) return source.Error();
        if (!name) return name.Error();
        const auto error = CallOnEntryAndNewName(*source, *name, RenameWithoutReplacing);
        if (error != std::errc::file_exists || !IsSameEntry(*source, *name)) return error;
        return ::rename(source->c_str(), name->c_str()) == 0 ? std::error_code{} : LastError();
    }

    std::error_code RenameOver(std::string_view from, std::string_view to) override {
        auto source = ToNativePath(from);
        auto name = ToNativePath(to);
        if (!source) return source.Error();
        if (!name) return name.Error();
        return CallOnEntryAndNewName(*source, *name, RenameFileOver);
    }

    std::error_code WriteFile(std::string_view file, std::string_view bytes) override {
        auto path = ToNativePath(file);
        if (!path) return path.Error();
        struct stat old {};
        const auto found = CallOnEntry(*path, [&](const char* text) { return ::lstat(text, &old); });
        if (found && found != std::errc::no_such_file_or_directory) return found;
        if (!found && S_ISDIR(old.st_mode)) return Failure(std::errc::is_a_directory);

        UniqueFd written;
        TempEntry temp(std::move(*path));
        const auto makeError = temp.Make([&](const char* text) {
            written = UniqueFd(::open(text, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
            return written.Get();
        });
        if (makeError) return makeError;
        if (const auto error = WriteAll(written.Get(), bytes.data(), bytes.size())) return error;
        if (!found && S_ISREG(old.st_mode) && ::fchmod(written.Get(), ModeFor(written.Get(), old)) != 0) {
            return LastError();
        }
        if (const auto error = FlushOpen(written.Get())) return error;
        if (::close(written.Release()) != 0) return LastError();
        return temp.RenameOverDestination();
    }

    Result<std::unique_ptr<FileWriter>> MakeFile(std::string_view file, NewFile traits) override {
        auto path = ToNativePath(file);
        if (!path) return path.Error();
        return StartFile(std::move(*path), traits);
    }

    std::error_code TryToWrite(std::string_view folder) override { return TryToWriteInto(folder); }

    std::error_code SetReadOnly(std::string_view file, bool readOnly) override {
        auto path = ToNativePath(file);
        if (!path) return path.Error();
        return readOnly ? ChangeMode(*path, 0222, 0) : ChangeMode(*path, 0, S_IWUSR);
    }

    std::error_code SetModified(std::string_view entry, FileTime time) override {
        auto path = ToNativePath(entry);
        if (!path) return path.Error();
        const timespec modified{static_cast<time_t>(time.time_since_epoch().count()), 0};
        struct stat info {};
        const auto error = CallOnEntry(*path, [&](const char* text) {
            // Some file systems in user space take a time that is left out for both.
            if (::stat(text, &info) != 0) return -1;
            const std::array<timespec, 2> times = {info.st_atim, modified};
            return ::utimensat(AT_FDCWD, text, times.data(), 0);
        });
        if (error) return error;
        if (::stat(path->c_str(), &info) != 0) return LastError();
        const FileTime held{std::chrono::seconds(info.st_mtim.tv_sec)};
        return IsHeldTime(time, held) ? std::error_code{} : Failure(std::errc::operation_not_supported);
    }
};

} // namespace

Result<std::string> FindRealPath(std::string_view entry) {
    auto path = ToNativePath(entry);
    if (!path) return path.Error();
    std::unique_ptr<char, decltype(&std::free)> real(nullptr, &std::free);
    const auto error = CallOnEntry(*path, [&](const char* text) {
        real.reset(::realpath(text, nullptr));
        return real ? 0 : -1;
    });
    if (error) return error;
    std::string found = real.get();
    // A name that holds a backslash would read as two names.
    if (found.find('\\') != std::string::npos) return std::errc::operation_not_supported;
    return found;
}

std::unique_ptr<FileSystem> MakePlainFileSystem() { return std::make_unique<DiskFileSystem>(); }

} // namespace quillbay
