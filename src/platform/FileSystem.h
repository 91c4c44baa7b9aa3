#pragma once

#include "platform/Fingerprint.h"
#include "platform/Result.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace quillbay {

using FileTime = std::chrono::sys_seconds;

enum class EntryKind {
    File,
    Folder,
    Other, ///< a device, a socket, or a link that leads nowhere
};

/// One name in a folder.
struct DirEntry {
    std::string name;                  ///< as it is stored
    EntryKind kind = EntryKind::Other; ///< of what a link leads to, when `isLink`
    bool isLink = false;               ///< a symbolic link (Windows: a reparse point)
    bool hidden = false;               ///< Windows: hidden or system attribute; POSIX: a leading dot
    // The rest only where it was asked for.
    bool readOnly = false;
    bool executable = false; ///< its owner may run it; never on Windows
    std::uint64_t size = 0;  ///< bytes; of what a link leads to
    FileTime modified{};     ///< of what a link leads to

    /// What a listing of "plain files" shows: no folder, not hidden.
    bool IsPlainFile() const { return kind == EntryKind::File && !hidden; }
};

/// Equal for two names of one file or folder. All zero where the system does not tell, which proves nothing.
struct FileId {
    std::uint64_t volume = 0;
    std::uint64_t file = 0;

    bool operator==(const FileId&) const = default;
    explicit operator bool() const { return volume != 0 || file != 0; }
};

struct FileInfo : DirEntry {
    unsigned links = 1;   ///< how many names (hard links) the file has
    bool isMount = false; ///< a folder where something is mounted (Windows: such a folder is a link)
    /// When bytes or attributes last changed, which nobody can set (POSIX: ctime; NTFS: ChangeTime), of what
    /// a link leads to: nanoseconds since 1970; 0 where the system does not tell.
    std::int64_t changed = 0;
    FileId id; ///< of what a link leads to
};

enum class Detail {
    Names, ///< name, kind, isLink, hidden
    Full,  ///< every member (one more system call an entry on POSIX)
};

struct CopyOptions {
    bool replace = false;      ///< an existing destination is replaced; otherwise it is `file_exists`
    bool keepLink = false;     ///< a link is copied as a link, not as what it leads to
    bool flush = false;        ///< the copy is on the disk, not only in the cache, before it has its name
    bool makeWritable = false; ///< the copy is not read-only, even if the source is
};

/// What a file is made with.
struct NewFile {
    std::optional<FileTime> modified; ///< without: now
    bool executable = false;          ///< whoever may read it may run it; means nothing on Windows
};

/// A file in the making. Without Commit nothing of it is left.
class FileWriter {
public:
    virtual ~FileWriter() = default;
    /// Appends; after a failure the file can only be given up.
    [[nodiscard]] virtual std::error_code Write(std::string_view bytes) = 0;
    /// Gives the file its name, as the last call. The bytes are whole after an end of the program, not after
    /// a power cut.
    [[nodiscard]] virtual std::error_code Commit() = 0;
};

/// Files that are told one at a time, since their paths together are large: `path(index)` may be called on
/// any thread, and as long as what was made of them is there.
struct FilesByIndex {
    std::size_t count = 0;
    std::function<std::string(std::size_t index)> path;
};

/// The fingerprints of files that were named together.
class FingerprintReader {
public:
    virtual ~FingerprintReader() = default;
    /// Of the file of that index; of one thread at a time, as soon as it has been read.
    [[nodiscard]] virtual Result<Fingerprint> Take(std::size_t index) = 0;
};

/// Bytes of a disk.
struct DiskSpace {
    std::uint64_t free = 0; ///< that this user may use
    std::uint64_t total = 0;
};

/// The only road to user data.
///
/// Paths are UTF-8 with `\` or `/` between components. Letter case is ignored in look-ups, as Windows does:
/// on POSIX a component that does not exist as spelled is looked for in its folder (an exact hit costs no
/// listing, a miss costs one). Names that are not UTF-8 (POSIX) or not UTF-16 (Windows) come and go as they
/// are. A POSIX name that holds a backslash cannot be named this way and is left out of listings.
///
/// The last component of a *new* name (`to` of Copy, HardLink, Rename, RenameOver; that of MakeFile) is used
/// exactly as given: the caller has listed that folder. MakeFolder and WriteFile do look for another spelling
/// first.
///
/// Errors are those of std::errc where one fits: no_such_file_or_directory, file_exists, not_a_directory,
/// is_a_directory, directory_not_empty, permission_denied, device_or_resource_busy (open in another program),
/// no_space_on_device, cross_device_link, operation_not_supported, io_error. A failed operation changes
/// nothing, unless its text says otherwise. Of RemoveTree a part may be done.
///
/// The temporary name of the operations themselves is `kTempNew`, in the folder of the destination. After a
/// crash it may be left over; the next operation that needs the name removes it, or takes `kOtherTempNew`
/// where it cannot be removed.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    /// The entries of a folder in the order of the file system, without `.` and `..`.
    [[nodiscard]] virtual Result<std::vector<DirEntry>> List(std::string_view folder,
                                                             Detail detail) const = 0;
    /// One entry; a link is reported as a link, sizes and times are those of what it leads to. A final
    /// separator is passed over.
    [[nodiscard]] virtual Result<FileInfo> Stat(std::string_view path) const = 0;
    /// The same for who needs neither `name` nor `id`, which may be missing: on Windows they cost several
    /// times what all the rest does.
    [[nodiscard]] virtual Result<FileInfo> StatContents(std::string_view path) const { return Stat(path); }
    /// At most `maxBytes` bytes from `offset`; fewer (or none) only at the end of the file.
    [[nodiscard]] virtual Result<std::string> Read(std::string_view file, std::uint64_t offset,
                                                   std::size_t maxBytes) const = 0;
    /// The text of a symbolic link, as it is stored; `invalid_argument` for anything else.
    [[nodiscard]] virtual Result<std::string> ReadLink(std::string_view path) const = 0;
    /// True when both files hold the same bytes. Links are followed.
    [[nodiscard]] virtual Result<bool> SameContents(std::string_view file, std::string_view other) const = 0;
    /// Of all the file's bytes. Links are followed.
    [[nodiscard]] virtual Result<Fingerprint> FingerprintFile(std::string_view file) const = 0;
    /// Those of many files, which may be read ahead while other operations go on. The file system must
    /// outlive what is returned.
    [[nodiscard]] virtual std::unique_ptr<FingerprintReader> FingerprintFiles(FilesByIndex files) const = 0;
    /// The bytes of all files below a folder, which may itself be a link; links in it count nothing and are
    /// not followed.
    [[nodiscard]] virtual Result<std::uint64_t> TreeSize(std::string_view folder) const = 0;
    /// The path without links and in its stored spelling; equal for two names of one folder.
    [[nodiscard]] virtual Result<std::string> RealPath(std::string_view path) const = 0;
    /// Of the disk that a folder lies on.
    [[nodiscard]] virtual Result<DiskSpace> SpaceAt(std::string_view folder) const = 0;

    /// Whether this user may make files in an existing folder: permission_denied or read_only_file_system
    /// when not. Nothing of the trial is left, even if the program ends in it.
    [[nodiscard]] virtual std::error_code TryToWrite(std::string_view folder) = 0;
    /// Makes one folder; its parent must exist. A folder that exists already is no error.
    [[nodiscard]] virtual std::error_code MakeFolder(std::string_view folder) = 0;
    /// Removes a folder when it is empty; `directory_not_empty` otherwise. A link to a folder stays.
    [[nodiscard]] virtual std::error_code RemoveEmptyFolder(std::string_view folder) = 0;
    /// Removes a file (a read-only one too) or a link itself, never a folder.
    [[nodiscard]] virtual std::error_code RemoveFile(std::string_view file) = 0;
    /// Removes a folder with everything in it, read-only files included; never follows a link, junction or
    /// mount out of it. Goes on after a failure and reports the first one. A folder where something is
    /// mounted stays as it is, and so do the folders above it: cross_device_link.
    [[nodiscard]] virtual std::error_code RemoveTree(std::string_view folder) = 0;
    /// Copies a file with its modification time, permissions and attributes. The bytes go to `kTempNew`
    /// beside `to`, which is then renamed, so that no half-written file ever has the name `to`; with
    /// `replace` the name leads to the old file or to the new one at every moment. A file copied onto itself
    /// with `replace` becomes a file of its own, which ends a hard link.
    [[nodiscard]] virtual std::error_code Copy(std::string_view from, std::string_view to,
                                               CopyOptions options) = 0;
    /// A second name `to` for the file `from` (a link gets a second name itself). With `replace` it takes the
    /// place of an existing file, `file_exists` otherwise. cross_device_link or operation_not_supported where
    /// there are no hard links; operation_not_permitted for a read-only file on Windows, where the two names
    /// would share the attribute that protects them.
    [[nodiscard]] virtual std::error_code HardLink(std::string_view from, std::string_view to,
                                                   bool replace) = 0;
    /// Renames a file or folder inside its volume; `file_exists` when `to` is another existing entry. A
    /// change of letter case alone is possible.
    [[nodiscard]] virtual std::error_code Rename(std::string_view from, std::string_view to) = 0;
    /// Gives the file `from`, or a link itself, the name of another file, in one step and inside the volume:
    /// that one is gone then. is_a_directory when either is a folder. When both are names of one file, `from`
    /// alone is gone.
    [[nodiscard]] virtual std::error_code RenameOver(std::string_view from, std::string_view to) = 0;
    /// Replaces the whole file, or makes it: temporary name, flush, rename. On failure the old one stays.
    [[nodiscard]] virtual std::error_code WriteFile(std::string_view file, std::string_view bytes) = 0;
    /// Begins a new file, which grows under `kTempNew` beside its name. Where the name is taken already, this
    /// or Commit is `file_exists`.
    [[nodiscard]] virtual Result<std::unique_ptr<FileWriter>> MakeFile(std::string_view file,
                                                                       NewFile traits) = 0;
    [[nodiscard]] virtual std::error_code SetReadOnly(std::string_view file, bool readOnly) = 0;
    /// Sets the modification time of a file or folder and reads it back: operation_not_supported where the
    /// file system reports success but keeps another one.
    [[nodiscard]] virtual std::error_code SetModified(std::string_view path, FileTime time) = 0;
};

/// Whether a file system that keeps times to two seconds, as FAT does, would keep `wanted` as `held`.
constexpr bool IsHeldTime(FileTime wanted, FileTime held) {
    return std::chrono::abs(wanted - held) < std::chrono::seconds(2);
}

/// What an interrupted operation leaves behind has this name; it is nobody's data.
inline constexpr std::string_view kTempNew = "~quillbay.new";
/// The same where another program holds what has the first name.
inline constexpr std::string_view kOtherTempNew = "~quillbay.nw2";

constexpr bool IsTempName(std::string_view name) { return name == kTempNew || name == kOtherTempNew; }

/// Waits for a time, on whatever thread needs the file; without one the thread sleeps.
using Pause = std::function<void(std::chrono::milliseconds)>;

/// The file system of this computer. An operation on what another program holds waits for about a second.
std::unique_ptr<FileSystem> MakeFileSystem(Pause pause = {});

/// The same without waiting: what the other one is made of.
std::unique_ptr<FileSystem> MakePlainFileSystem();

} // namespace quillbay
