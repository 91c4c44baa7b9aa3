#include "platform/FileSystem.h"

#include "platform/CaseFold.h"
#include "platform/FingerprintsAhead.h"
#include "platform/PathText.h"
#include "platform/RealPath.h"
#include "platform/WriteTrial.h"
#include "platform/windows/EntryInfo.h"
#include "platform/windows/FileCopy.h"
#include "platform/windows/FileTimes.h"
#include "platform/windows/FinalPath.h"
#include "platform/windows/FolderScan.h"
#include "platform/windows/LinkText.h"
#include "platform/windows/OpenFile.h"
#include "platform/windows/Removal.h"
#include "platform/windows/WidePath.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WinError.h"

#include <algorithm>

namespace quillbay {

namespace {

constexpr std::size_t kBlock = 1u << 18; ///< bytes that are read at once

Result<Handle> OpenForReading(const std::wstring& path) {
    Handle file(CreateFileW(path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                            FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (file) return file;
    const auto error = LastError();
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && IsFolderAttribute(attributes))
        return std::errc::is_a_directory;
    return error;
}

Result<std::uint64_t> SizeOf(const Handle& file) {
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file.Get(), &size)) return LastError();
    return static_cast<std::uint64_t>(size.QuadPart);
}

/// Fills `bytes` from `offset` on; shortens it at the end of the file.
std::error_code ReadAt(const Handle& file, std::uint64_t offset, std::string& bytes) {
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const std::uint64_t at = offset + filled;
        OVERLAPPED where{};
        where.Offset = static_cast<DWORD>(at);
        where.OffsetHigh = static_cast<DWORD>(at >> 32);
        const auto wanted = static_cast<DWORD>(std::min<std::size_t>(bytes.size() - filled, 1u << 24));
        DWORD got = 0;
        if (!ReadFile(file.Get(), bytes.data() + filled, wanted, &got, &where) &&
            GetLastError() != ERROR_HANDLE_EOF)
            return LastError();
        if (got == 0) break;
        filled += got;
    }
    bytes.resize(filled);
    return {};
}

std::error_code MoveName(const std::wstring& from, const std::wstring& to) {
    return MoveFileExW(from.c_str(), to.c_str(), 0) ? std::error_code{} : LastError();
}

/// After a rename that changed letter case alone: some file systems report success and keep the old spelling.
std::error_code CorrectSpelling(const std::wstring& path) {
    const auto stored = FindEntry(path);
    if (!stored) return stored.Error();
    if (LongName(path) == stored->cFileName) return {};
    const std::wstring between = InFolder(LongParent(path), WidenText(kTempNew));
    if (const auto error = MoveName(path, between)) return error;
    const auto error = MoveName(between, path);
    if (error) Ignore(MoveName(between, InFolder(LongParent(path), stored->cFileName)));
    return error;
}

class WindowsFileSystem : public FileSystem {
public:
    Result<std::vector<DirEntry>> List(std::string_view folder, Detail) const override {
        const auto path = LongPath(folder);
        if (!path) return path.Error();
        const auto found = ScanFolder(*path);
        if (!found) return found.Error();
        std::vector<DirEntry> entries(found->size());
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const WIN32_FIND_DATAW& entry = (*found)[i];
            FillEntry(entries[i], entry, IsLink(entry) ? InFolder(*path, entry.cFileName) : std::wstring());
        }
        return entries;
    }

    Result<FileInfo> Stat(std::string_view file) const override {
        const auto path = LongPath(file);
        return path ? StatEntry(*path) : path.Error();
    }

    Result<FileInfo> StatContents(std::string_view file) const override {
        const auto path = LongPath(file);
        return path ? StatEntryContents(*path) : path.Error();
    }

    Result<std::string> Read(std::string_view file, std::uint64_t offset,
                             std::size_t maxBytes) const override {
        const auto path = LongPath(file);
        if (!path) return path.Error();
        const auto handle = OpenForReading(*path);
        if (!handle) return handle.Error();
        const auto size = SizeOf(*handle);
        if (!size) return size.Error();
        if (offset >= *size) return std::string();
        std::string bytes(static_cast<std::size_t>(std::min<std::uint64_t>(maxBytes, *size - offset)), '\0');
        if (const auto error = ReadAt(*handle, offset, bytes)) return error;
        return bytes;
    }

    Result<std::string> ReadLink(std::string_view link) const override {
        const auto path = LongPath(link);
        if (!path) return path.Error();
        const auto text = ReadLinkText(*path);
        if (!text) return text.Error();
        return NarrowText(*text);
    }

    std::unique_ptr<FingerprintReader> FingerprintFiles(FilesByIndex files) const override {
        return std::make_unique<FingerprintsAhead>(*this, std::move(files));
    }

    Result<Fingerprint> FingerprintFile(std::string_view file) const override {
        const auto path = LongPath(file);
        if (!path) return path.Error();
        const auto handle = OpenForReading(*path);
        if (!handle) return handle.Error();
        const auto size = SizeOf(*handle);
        if (!size) return size.Error();
        Fingerprinter fingerprinter;
        std::string bytes;
        for (std::uint64_t offset = 0; offset < *size; offset += bytes.size()) {
            bytes.resize(static_cast<std::size_t>(std::min<std::uint64_t>(*size - offset, kBlock)));
            if (const auto error = ReadAt(*handle, offset, bytes)) return error;
            if (bytes.empty()) break;
            fingerprinter.Add(bytes);
        }
        return fingerprinter.Finish();
    }

    Result<bool> SameContents(std::string_view file, std::string_view other) const override {
        const auto pathA = LongPath(file);
        if (!pathA) return pathA.Error();
        const auto pathB = LongPath(other);
        if (!pathB) return pathB.Error();
        const auto a = OpenForReading(*pathA);
        if (!a) return a.Error();
        const auto b = OpenForReading(*pathB);
        if (!b) return b.Error();
        const FileId id = IdOf(*a);
        if (id && id == IdOf(*b)) return true;
        const auto sizeA = SizeOf(*a);
        if (!sizeA) return sizeA.Error();
        const auto sizeB = SizeOf(*b);
        if (!sizeB) return sizeB.Error();
        if (*sizeA != *sizeB) return false;

        const auto block = static_cast<std::size_t>(std::min<std::uint64_t>(*sizeA, kBlock));
        std::string bytesA;
        std::string bytesB;
        for (std::uint64_t offset = 0;; offset += block) {
            bytesA.resize(block);
            bytesB.resize(block);
            if (const auto error = ReadAt(*a, offset, bytesA)) return error;
            if (const auto error = ReadAt(*b, offset, bytesB)) return error;
            if (bytesA != bytesB) return false;
            if (bytesA.size() < block || block == 0) return true;
        }
    }

    Result<std::uint64_t> TreeSize(std::string_view folder) const override {
        const auto path = LongPath(folder);
        if (!path) return path.Error();
        std::uint64_t size = 0;
        std::vector<std::wstring> pending{*path};
        while (!pending.empty()) {
            const std::wstring current = std::move(pending.back());
            pending.pop_back();
            const auto entries = ScanFolder(current);
            // A folder below may go while it is counted.
            if (current != *path && entries.Error() == std::errc::no_such_file_or_directory) continue;
            if (!entries) return entries.Error();
            for (const WIN32_FIND_DATAW& entry : *entries) {
                if (IsFolder(entry)) {
                    pending.push_back(InFolder(current, entry.cFileName));
                } else if (!IsLink(entry)) {
                    size += Wide(entry.nFileSizeHigh, entry.nFileSizeLow);
                }
            }
        }
        return size;
    }

    Result<std::string> RealPath(std::string_view entry) const override { return FindRealPath(entry); }

    Result<DiskSpace> SpaceAt(std::string_view folder) const override {
        const auto path = LongPath(folder);
        if (!path) return path.Error();
        ULARGE_INTEGER free{};
        ULARGE_INTEGER total{};
        if (!GetDiskFreeSpaceExW(path->c_str(), &free, &total, nullptr)) return LastError();
        return DiskSpace{free.QuadPart, total.QuadPart};
    }

    std::error_code TryToWrite(std::string_view folder) override { return TryToWriteInto(folder); }

    std::error_code MakeFolder(std::string_view folder) override {
        const auto path = LongPath(folder);
        if (!path) return path.Error();
        if (CreateDirectoryW(path->c_str(), nullptr)) return {};
        const auto error = LastError();
        // A root is denied, not reported as existing.
        const auto existing = ReadInformation(*path);
        return existing && IsFolderAttribute(existing->dwFileAttributes) ? std::error_code{} : error;
    }

    std::error_code RemoveEmptyFolder(std::string_view folder) override {
        return WithFolder(folder, RemoveFolderName);
    }

    std::error_code RemoveFile(std::string_view file) override {
        const auto path = LongPath(file);
        if (!path) return path.Error();
        const auto error = RemoveFileName(*path);
        if (!error) return {};
        const auto entry = FindEntry(*path);
        if (!entry || !IsFolderAttribute(entry->dwFileAttributes)) return error;
        return IsLink(*entry) ? RemoveFolderName(*path) : std::make_error_code(std::errc::is_a_directory);
    }

    std::error_code RemoveTree(std::string_view folder) override {
        // Nobody means to empty a drive, or the folder above.
        const auto name = LastComponent(WithoutFinalSeparators(folder));
        const auto path = LongPath(folder);
        if (!path) return path.Error();
        if (LongName(*path).empty() || name == "." || name == "..")
            return std::make_error_code(std::errc::invalid_argument);
        return WithFolder(folder, RemoveFolderTree);
    }

    std::error_code Copy(std::string_view from, std::string_view to, CopyOptions options) override {
        return WithTwo(from, to, [&](const auto& a, const auto& b) { return CopyToName(a, b, options); });
    }

    std::error_code HardLink(std::string_view from, std::string_view to, bool replace) override {
        return WithTwo(from, to, [&](const auto& a, const auto& b) { return LinkToName(a, b, replace); });
    }

    std::error_code Rename(std::string_view from, std::string_view to) override {
        return WithTwo(from, to, [](const auto& a, const auto& b) {
            const auto error = MoveName(a, b);
            if (error || a == b || !EqualFolded(NarrowText(a), NarrowText(b))) return error;
            return CorrectSpelling(b);
        });
    }

    std::error_code RenameOver(std::string_view from, std::string_view to) override {
        return WithTwo(from, to, MoveOverName);
    }

    std::error_code WriteFile(std::string_view file, std::string_view bytes) override {
        const auto path = LongPath(file);
        if (!path) return path.Error();
        const auto existing = FindEntry(*path);
        return WriteWholeFile(existing ? InFolder(LongParent(*path), existing->cFileName) : *path, bytes);
    }

    Result<std::unique_ptr<FileWriter>> MakeFile(std::string_view file, NewFile traits) override {
        const auto path = LongPath(file);
        if (!path) return path.Error();
        return StartFile(*path, traits);
    }

    std::error_code SetReadOnly(std::string_view file, bool readOnly) override {
        const auto path = LongPath(file);
        if (!path) return path.Error();
        const Handle handle = OpenName(*path, FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES);
        const DWORD now = handle ? AttributesOf(handle) : INVALID_FILE_ATTRIBUTES;
        if (now == INVALID_FILE_ATTRIBUTES) return LastError();
        constexpr DWORD kReadOnly = FILE_ATTRIBUTE_READONLY;
        const DWORD wanted = readOnly ? now | kReadOnly : now & ~kReadOnly;
        return wanted == now ? std::error_code{} : SetAttributesOf(handle, wanted);
    }

    std::error_code SetModified(std::string_view entry, FileTime time) override {
        const auto path = LongPath(entry);
        if (!path) return path.Error();
        const auto wanted = ToFileTime(time);
        if (!wanted) return std::make_error_code(std::errc::invalid_argument);
        const Handle handle(CreateFileW(path->c_str(), FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES,
                                        kShareAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                                        nullptr));
        FILETIME held{};
        if (!handle || !SetFileTime(handle.Get(), nullptr, nullptr, &*wanted) ||
            !GetFileTime(handle.Get(), nullptr, nullptr, &held))
            return LastError();
        return IsHeldTime(time, FromFileTime(held))
                   ? std::error_code{}
                   : std::make_error_code(std::errc::operation_not_supported);
    }

private:
    /// Runs `operation` on a folder that is no link.
    template <typename Operation>
    static std::error_code WithFolder(std::string_view folder, Operation operation) {
        const auto path = LongPath(folder);
        if (!path) return path.Error();
        const auto entry = FindEntry(*path);
        if (!entry) return entry.Error();
        if (!IsFolder(*entry)) return std::make_error_code(std::errc::not_a_directory);
        return operation(*path);
    }

    template <typename Operation>
    static std::error_code WithTwo(std::string_view from, std::string_view to, Operation operation) {
        const auto source = LongPath(from);
        if (!source) return source.Error();
        const auto target = LongPath(to);
        if (!target) return target.Error();
        return operation(*source, *target);
    }
};

} // namespace

Result<std::string> FindRealPath(std::string_view entry) {
    const auto path = LongPath(entry);
    if (!path) return path.Error();
    const auto real = FindFinalPath(*path);
    if (!real) return real.Error();
    return NarrowText(WithoutLongPrefix(*real));
}

std::unique_ptr<FileSystem> MakePlainFileSystem() { return std::make_unique<WindowsFileSystem>(); }

} // namespace quillbay
