#include "platform/windows/FileCopy.h"

#include "platform/CaseFold.h"
#include "platform/windows/FileTimes.h"
#include "platform/windows/FolderScan.h"
#include "platform/windows/Handle.h"
#include "platform/windows/LinkText.h"
#include "platform/windows/Removal.h"
#include "platform/windows/WidePath.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WinError.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>
#include <utility>
#include <vector>

namespace quillbay {

namespace {

constexpr DWORD kReadOnly = FILE_ATTRIBUTE_READONLY;

std::wstring Beside(const std::wstring& longPath, std::string_view name) {
    return InFolder(LongParent(longPath), WidenText(name));
}

bool Has(DWORD attributes, DWORD bit) { return attributes != INVALID_FILE_ATTRIBUTES && (attributes & bit); }

std::error_code RemoveLeftover(const std::wstring& longPath) {
    const auto error = RemoveFileName(longPath);
    return error == std::errc::no_such_file_or_directory ? std::error_code{} : error;
}

std::error_code MoveName(const std::wstring& from, const std::wstring& to, DWORD flags = 0) {
    return MoveFileExW(from.c_str(), to.c_str(), flags) ? std::error_code{} : LastError();
}

std::error_code Flush(const std::wstring& longPath) {
    const Handle file(
        CreateFileW(longPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    return file && FlushFileBuffers(file.Get()) ? std::error_code{} : LastError();
}

/// The system flushes only what it may write, so a read-only copy gets its attribute back afterwards.
std::error_code Finish(const std::wstring& copy, CopyOptions options) {
    const DWORD attributes = GetFileAttributesW(copy.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return LastError();
    const bool protectedCopy = Has(attributes, kReadOnly) && (options.flush || options.makeWritable);
    if (protectedCopy) {
        const DWORD others = attributes & ~kReadOnly;
        if (!SetFileAttributesW(copy.c_str(), others ? others : FILE_ATTRIBUTE_NORMAL)) return LastError();
    }
    if (options.flush) {
        if (const auto error = Flush(copy)) return error;
    }
    if (protectedCopy && !options.makeWritable && !SetFileAttributesW(copy.c_str(), attributes))
        return LastError();
    return {};
}

std::error_code CopyLink(const std::wstring& from, const WIN32_FIND_DATAW& entry, const std::wstring& copy) {
    if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) {
        const DWORD flags = COPY_FILE_FAIL_IF_EXISTS | COPY_FILE_COPY_SYMLINK;
        if (!CopyFileExW(from.c_str(), copy.c_str(), nullptr, nullptr, nullptr, flags)) return LastError();
        return {};
    }
    const auto text = ReadLinkText(from);
    if (!text) return text.Error();
    const DWORD flags = SYMBOLIC_LINK_FLAG_DIRECTORY | SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE;
    return CreateSymbolicLinkW(copy.c_str(), text->c_str(), flags) ? std::error_code{} : LastError();
}

std::error_code MakeCopy(const std::wstring& from, const WIN32_FIND_DATAW& entry, const std::wstring& copy,
                         CopyOptions options) {
    if (options.keepLink && IsLink(entry)) return CopyLink(from, entry, copy);
    if (!CopyFileExW(from.c_str(), copy.c_str(), nullptr, nullptr, nullptr, COPY_FILE_FAIL_IF_EXISTS))
        return LastError();
    return Finish(copy, options);
}

/// FileRenameInfoEx, which not every set of headers declares.
constexpr auto kRenameEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);

/// Windows 10 1809 and later, on NTFS: the attribute of what stood there, which its other names share, is not
/// looked at.
bool ReplaceIgnoringReadOnly(const std::wstring& made, const std::wstring& to) {
    constexpr DWORD kReplace = 0x1, kPosixSemantics = 0x2, kIgnoreReadOnly = 0x40; // FILE_RENAME_FLAG_...
    const Handle file(CreateFileW(made.c_str(), DELETE | SYNCHRONIZE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    if (!file) return false;
    const std::size_t nameBytes = to.size() * sizeof(wchar_t);
    std::vector<std::byte> buffer(sizeof(FILE_RENAME_INFO) + nameBytes);
    auto* how = new (buffer.data()) FILE_RENAME_INFO{};
    how->Flags = kReplace | kPosixSemantics | kIgnoreReadOnly;
    how->FileNameLength = static_cast<DWORD>(nameBytes);
    std::memcpy(buffer.data() + offsetof(FILE_RENAME_INFO, FileName), to.data(), nameBytes);
    return SetFileInformationByHandle(file.Get(), kRenameEx, how, static_cast<DWORD>(buffer.size()));
}

/// Gives the finished file its name. What stood there is replaced as it is, a link as a link.
std::error_code PutInPlace(const std::wstring& made, const std::wstring& to, bool replace) {
    if (!replace) return MoveName(made, to);
    if (Has(GetFileAttributesW(to.c_str()), kReadOnly)) {
        if (ReplaceIgnoringReadOnly(made, to)) return {};
        // The attribute is the file's: with a second name it would be gone there too, so it stays.
        if (CountLinks(to) == 1) {
            return WithoutReadOnly(
                to, [&] { return MoveFileExW(made.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING); });
        }
    }
    return MoveName(made, to, MOVEFILE_REPLACE_EXISTING);
}

/// Whether `to` may be given to another file at all.
std::error_code CheckTarget(const std::wstring& to, bool replace) {
    if (EqualFolded(NarrowText(LongName(to)), kTempNew))
        return std::make_error_code(std::errc::invalid_argument);
    const DWORD target = GetFileAttributesW(to.c_str());
    if (target == INVALID_FILE_ATTRIBUTES) return {};
    if (!replace) return std::make_error_code(std::errc::file_exists);
    if (Has(target, FILE_ATTRIBUTE_DIRECTORY)) return std::make_error_code(std::errc::is_a_directory);
    return {};
}

std::error_code WriteTo(const Handle& file, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto part = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1u << 24));
        DWORD written = 0;
        if (!::WriteFile(file.Get(), bytes.data(), part, &written, nullptr)) return LastError();
        bytes.remove_prefix(written);
    }
    return {};
}

std::error_code WriteNewFile(const std::wstring& longPath, DWORD attributes, std::string_view bytes) {
    const Handle file(
        CreateFileW(longPath.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, attributes, nullptr));
    if (!file) return LastError();
    if (const auto error = WriteTo(file, bytes)) return error;
    return FlushFileBuffers(file.Get()) ? std::error_code{} : LastError();
}

class WindowsFileWriter : public FileWriter {
public:
    WindowsFileWriter(std::wstring made, std::wstring to, NewFile traits, Handle file)
        : made_(std::move(made)), to_(std::move(to)), traits_(traits), file_(std::move(file)) {}
    ~WindowsFileWriter() override {
        file_ = Handle();
        if (!made_.empty()) Ignore(RemoveLeftover(made_));
    }

    std::error_code Write(std::string_view bytes) override { return WriteTo(file_, bytes); }

    std::error_code Commit() override {
        const auto time = traits_.modified ? ToFileTime(*traits_.modified) : std::nullopt;
        if (time && !SetFileTime(file_.Get(), nullptr, nullptr, &*time)) return LastError();
        file_ = Handle();
        const auto error = PutInPlace(made_, to_, false);
        if (!error) made_.clear();
        return error;
    }

private:
    std::wstring made_; ///< empty when it has its name
    std::wstring to_;
    NewFile traits_;
    Handle file_;
};

} // namespace

std::error_code CopyToName(const std::wstring& from, const std::wstring& to, CopyOptions options) {
    const auto source = FindEntry(from);
    if (!source) return source.Error();
    const bool asLink = options.keepLink && IsLink(*source);
    if (!asLink && (source->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
        return std::make_error_code(std::errc::is_a_directory);
    if (const auto error = CheckTarget(to, options.replace)) return error;

    const std::wstring made = Beside(to, kTempNew);
    if (const auto error = RemoveLeftover(made)) return error;
    auto error = MakeCopy(from, *source, made, options);
    if (!error) error = PutInPlace(made, to, options.replace);
    if (error) Ignore(RemoveLeftover(made));
    return error;
}

std::error_code LinkToName(const std::wstring& from, const std::wstring& to, bool replace) {
    const DWORD source = GetFileAttributesW(from.c_str());
    if (source == INVALID_FILE_ATTRIBUTES) return LastError();
    if (Has(source, FILE_ATTRIBUTE_DIRECTORY)) return std::make_error_code(std::errc::is_a_directory);
    if (const auto error = CheckTarget(to, replace)) return error;
    if (Has(source, kReadOnly)) return std::make_error_code(std::errc::operation_not_supported);
    if (!replace) return CreateHardLinkW(to.c_str(), from.c_str(), nullptr) ? std::error_code{} : LastError();

    const std::wstring made = Beside(to, kTempNew);
    if (const auto error = RemoveLeftover(made)) return error;
    if (!CreateHardLinkW(made.c_str(), from.c_str(), nullptr)) return LastError();
    const auto error = PutInPlace(made, to, true);
    // Moving one name of a file over another one may leave both.
    Ignore(RemoveLeftover(made));
    return error;
}

std::error_code WriteWholeFile(const std::wstring& file, std::string_view bytes) {
    DWORD attributes = GetFileAttributesW(file.c_str());
    if (const auto error = CheckTarget(file, true)) return error;
    if (Has(attributes, kReadOnly)) return std::make_error_code(std::errc::permission_denied);
    if (attributes == INVALID_FILE_ATTRIBUTES || Has(attributes, FILE_ATTRIBUTE_REPARSE_POINT))
        attributes = FILE_ATTRIBUTE_NORMAL;

    const std::wstring made = Beside(file, kTempNew);
    if (const auto error = RemoveLeftover(made)) return error;
    auto error = WriteNewFile(made, attributes, bytes);
    if (!error) error = PutInPlace(made, file, true);
    if (error) Ignore(RemoveLeftover(made));
    return error;
}

Result<std::unique_ptr<FileWriter>> StartFile(const std::wstring& file, NewFile traits) {
    if (const auto error = CheckTarget(file, false)) return error;
    std::wstring made = Beside(file, kTempNew);
    if (const auto error = RemoveLeftover(made)) return error;
    Handle opened(
        CreateFileW(made.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!opened) return LastError();
    return std::unique_ptr<FileWriter>(
        std::make_unique<WindowsFileWriter>(std::move(made), file, traits, std::move(opened)));
}

} // namespace quillbay
