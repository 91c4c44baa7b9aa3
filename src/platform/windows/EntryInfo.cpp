#include "platform/windows/EntryInfo.h"

#include "platform/windows/FileTimes.h"
#include "platform/windows/FinalPath.h"
#include "platform/windows/FolderScan.h"
#include "platform/windows/OpenFile.h"
#include "platform/windows/WidePath.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WinError.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <optional>
#include <utility>

namespace quillbay {

namespace {

EntryKind KindOf(DWORD attributes) {
    if (attributes & FILE_ATTRIBUTE_DEVICE) return EntryKind::Other;
    return IsFolderAttribute(attributes) ? EntryKind::Folder : EntryKind::File;
}

void SetContents(DirEntry& entry, DWORD attributes, std::uint64_t size, const FILETIME& modified) {
    entry.kind = KindOf(attributes);
    entry.readOnly = (attributes & FILE_ATTRIBUTE_READONLY) && !IsFolderAttribute(attributes);
    entry.size = entry.kind == EntryKind::File ? size : 0;
    entry.modified = FromFileTime(modified);
}

/// Nanoseconds since 1970; 0 where the file system does not keep the time.
std::int64_t ToChangeTime(const FILE_BASIC_INFO& basic) {
    const auto ticks = basic.ChangeTime.QuadPart - kSecondsFrom1601To1970 * kTicksPerSecond;
    return std::max<std::int64_t>(ticks, 0) * (1'000'000'000 / kTicksPerSecond);
}

std::int64_t ChangeTimeOf(const Handle& file) {
    FILE_BASIC_INFO basic{};
    const bool known = GetFileInformationByHandleEx(file.Get(), FileBasicInfo, &basic, sizeof basic);
    return known ? ToChangeTime(basic) : 0;
}

/// What is no link, without name and id. GetFileInformationByHandle is not asked: it needs the number of the
/// volume, too, for which Wine asks another process.
std::optional<FileInfo> ContentsOf(const Handle& file) {
    FILE_BASIC_INFO basic{};
    FILE_STANDARD_INFO standard{};
    if (!file || !GetFileInformationByHandleEx(file.Get(), FileBasicInfo, &basic, sizeof basic) ||
        (basic.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) ||
        !GetFileInformationByHandleEx(file.Get(), FileStandardInfo, &standard, sizeof standard))
        return std::nullopt;
    const LARGE_INTEGER written = basic.LastWriteTime;
    FileInfo info;
    info.hidden = basic.FileAttributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    SetContents(info, basic.FileAttributes, static_cast<std::uint64_t>(standard.EndOfFile.QuadPart),
                {written.LowPart, static_cast<DWORD>(written.HighPart)});
    info.changed = ToChangeTime(basic);
    if (info.kind != EntryKind::Folder) info.links = standard.NumberOfLinks;
    return info;
}

/// By one look-up: what is no link, in its stored spelling. Nothing for anything else, and for what the
/// system tells only where it is listed.
std::optional<FileInfo> InfoOf(const Handle& file) {
    auto info = ContentsOf(file);
    if (!info) return std::nullopt;
    const auto stored = StoredPathOf(file);
    if (stored.empty()) return std::nullopt;
    info->name = NarrowText(LongName(stored));
    info->id = IdOf(file);
    return info;
}

/// From the folder that lists the entry, where its handle does not tell; `failure` is why there is no handle.
Result<FileInfo> ListedInfo(const std::wstring& path, const Handle& itself, std::error_code failure) {
    const auto found = FindEntry(path);
    if (!found) return found.Error();
    FileInfo info;
    FillEntry(info, *found, path);
    const Handle target = info.isLink ? OpenTarget(path) : Handle();
    if (const Handle& meant = info.isLink ? target : itself) {
        info.changed = ChangeTimeOf(meant);
        info.id = IdOf(meant);
    }
    if (IsFolder(*found)) return info;
    BY_HANDLE_FILE_INFORMATION now{};
    if (failure) return failure;
    if (!GetFileInformationByHandle(itself.Get(), &now)) return LastError();
    info.links = now.nNumberOfLinks;
    // A folder holds size and time as they were when the file was last opened by this name.
    if (!info.isLink)
        SetContents(info, now.dwFileAttributes, Wide(now.nFileSizeHigh, now.nFileSizeLow),
                    now.ftLastWriteTime);
    return info;
}

Result<FileInfo> StatBy(std::optional<FileInfo> (*tell)(const Handle&), const std::wstring& path) {
    const Handle itself = OpenName(path, FILE_READ_ATTRIBUTES);
    const auto failure = itself ? std::error_code() : LastError();
    if (failure == std::errc::no_such_file_or_directory) return failure;
    if (auto info = tell(itself)) return *std::move(info);
    return ListedInfo(path, itself, failure);
}

} // namespace

Result<BY_HANDLE_FILE_INFORMATION> ReadInformation(const std::wstring& path) {
    BY_HANDLE_FILE_INFORMATION information{};
    const Handle file = OpenTarget(path);
    if (!file || !GetFileInformationByHandle(file.Get(), &information)) return LastError();
    return information;
}

void FillEntry(DirEntry& entry, const WIN32_FIND_DATAW& found, const std::wstring& path) {
    entry.name = NarrowText(found.cFileName);
    entry.hidden = found.dwFileAttributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    entry.isLink = IsLink(found);
    if (!entry.isLink) {
        SetContents(entry, found.dwFileAttributes, Wide(found.nFileSizeHigh, found.nFileSizeLow),
                    found.ftLastWriteTime);
    } else if (const auto target = ReadInformation(path)) {
        SetContents(entry, target->dwFileAttributes, Wide(target->nFileSizeHigh, target->nFileSizeLow),
                    target->ftLastWriteTime);
    }
}

FileId IdOf(const Handle& file) {
    FILE_ID_INFO info{};
    if (GetFileInformationByHandleEx(file.Get(), FileIdInfo, &info, sizeof info)) {
        std::array<std::uint64_t, 2> halves{};
        static_assert(sizeof halves == sizeof info.FileId);
        std::memcpy(halves.data(), &info.FileId, sizeof halves);
        // The second half is zero but on ReFS, where it is the number of a folder and the first a small one.
        return {info.VolumeSerialNumber, halves[0] ^ std::rotl(halves[1], 32)};
    }
    BY_HANDLE_FILE_INFORMATION old{};
    if (!GetFileInformationByHandle(file.Get(), &old)) return {};
    return {old.dwVolumeSerialNumber, Wide(old.nFileIndexHigh, old.nFileIndexLow)};
}

Result<FileInfo> StatEntry(const std::wstring& path) { return StatBy(InfoOf, path); }

Result<FileInfo> StatEntryContents(const std::wstring& path) { return StatBy(ContentsOf, path); }

} // namespace quillbay
