#include "platform/posix/FolderListing.h"

#include "platform/PathText.h"
#include "platform/posix/FolderReader.h"
#include "platform/posix/NativePath.h"

#include <fcntl.h>
#include <optional>
#include <sys/stat.h>

namespace quillbay {

namespace {

EntryKind KindOfMode(mode_t mode) {
    if (S_ISREG(mode)) return EntryKind::File;
    return S_ISDIR(mode) ? EntryKind::Folder : EntryKind::Other;
}

void Describe(DirEntry& entry, const struct stat& info) {
    entry.kind = KindOfMode(info.st_mode);
    entry.readOnly = (info.st_mode & S_IWUSR) == 0;
    entry.executable = (info.st_mode & S_IXUSR) != 0;
    entry.size = entry.kind == EntryKind::File ? static_cast<std::uint64_t>(info.st_size) : 0;
    entry.modified = FileTime(std::chrono::seconds(info.st_mtim.tv_sec));
}

/// Describes what a link leads to; one that leads nowhere is an Other with the times of the link itself.
std::error_code DescribeLink(DirEntry& entry, int folder, const char* path, struct stat& info) {
    entry.isLink = true;
    struct stat target {};
    if (::fstatat(folder, path, &target, 0) == 0) info = target;
    Describe(entry, info);
    return {};
}

/// Also of a folder of the same file system that is mounted there once more, which its device does not tell.
bool IsMountPoint(const std::string& folder) {
    struct statx info {};
    return ::statx(AT_FDCWD, folder.c_str(), AT_SYMLINK_NOFOLLOW, 0, &info) == 0 &&
           (info.stx_attributes & info.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0;
}

/// An entry of an open folder; none when it has vanished since it was read.
std::optional<DirEntry> MakeEntry(int folder, const dirent& read, Detail detail) {
    DirEntry entry;
    entry.name = read.d_name;
    entry.hidden = read.d_name[0] == '.';
    const bool kindKnown = read.d_type != DT_UNKNOWN && read.d_type != DT_LNK;
    if (detail == Detail::Names && kindKnown) {
        entry.kind = KindOfMode(static_cast<mode_t>(DTTOIF(read.d_type)));
        return entry;
    }
    struct stat info {};
    if (::fstatat(folder, read.d_name, &info, AT_SYMLINK_NOFOLLOW) != 0) return std::nullopt;
    if (S_ISLNK(info.st_mode)) {
        DescribeLink(entry, folder, read.d_name, info);
    } else {
        Describe(entry, info);
    }
    return entry;
}

} // namespace

Result<std::vector<DirEntry>> ListFolder(std::string folder, Detail detail) {
    UniqueFd opened;
    const auto error = CallOnEntry(folder, [&](const char* path) {
        opened = UniqueFd(::open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        return opened.Get();
    });
    if (error) return error;

    FolderReader reader(std::move(opened));
    std::vector<DirEntry> entries;
    while (const dirent* read = reader.Next()) {
        // Such a name could not be given back to this file system.
        if (std::string_view(read->d_name).find('\\') != std::string_view::npos) continue;
        if (auto entry = MakeEntry(reader.Fd(), *read, detail)) entries.push_back(std::move(*entry));
    }
    if (reader.Error()) return reader.Error();
    return entries;
}

Result<FileInfo> StatEntry(std::string path) {
    struct stat info {};
    const auto error = CallOnEntry(path, [&](const char* text) { return ::lstat(text, &info); });
    if (error) return error;
    FileInfo entry;
    entry.name = LastComponent(path);
    entry.hidden = entry.name.starts_with('.');
    if (S_ISLNK(info.st_mode)) {
        DescribeLink(entry, AT_FDCWD, path.c_str(), info);
    } else {
        Describe(entry, info);
        entry.isMount = entry.kind == EntryKind::Folder && IsMountPoint(path);
    }
    entry.links = static_cast<unsigned>(info.st_nlink);
    entry.changed = std::int64_t{info.st_ctim.tv_sec} * 1'000'000'000 + info.st_ctim.tv_nsec;
    entry.id = {info.st_dev, info.st_ino};
    return entry;
}

} // namespace quillbay
