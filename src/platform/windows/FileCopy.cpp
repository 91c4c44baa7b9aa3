#include "platform/windows/FileCopy.h"

#include "platform/CaseFold.h"
#include "platform/windows/FileTimes.h"
#include "platform/windows/FolderScan.h"
#include "platform/windows/LinkText.h"
#include "platform/windows/OpenFile.h"
#include "platform/windows/Removal.h"
#include "platform/windows/Security.h"
#include "platform/windows/WidePath.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WinError.h"

#include <algorithm>
#include <cstddef>
#include <utility>

// Each look-up of a path passes a virus scanner's filter, so the steps below ask nothing beforehand that the
// call which does the work reports anyway; what stood in the way is looked at when it has failed.
namespace quillbay {

namespace {

constexpr DWORD kReadOnly = FILE_ATTRIBUTE_READONLY;
constexpr DWORD kFinishing = DELETE | SYNCHRONIZE | FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES;

std::wstring Beside(const std::wstring& longPath, std::string_view name) {
    return InFolder(LongParent(longPath), WidenText(name));
}

std::error_code RemoveLeftover(const std::wstring& longPath) {
    const auto error = RemoveFileName(longPath);
    return error == std::errc::no_such_file_or_directory ? std::error_code{} : error;
}

/// A file under a temporary name beside the one that it is to have. Removed again unless it gets that.
class TempFile {
public:
    explicit TempFile(std::wstring destination) : destination_(std::move(destination)) {}
    TempFile(const TempFile&) = delete;
    ~TempFile() {
        file_ = Handle();
        if (made_) Ignore(RemoveLeftover(path_));
    }

    /// Makes the file by `create(path)`, which is `file_exists` when the name is taken: by a leftover, which
    /// is removed, or by one that somebody holds, which leaves the second name.
    template <typename Create>
    std::error_code Make(Create create) {
        const auto name = NarrowText(LongName(destination_));
        for (const auto taken : {kTempNew, kOtherTempNew})
            if (EqualFolded(name, taken)) return std::make_error_code(std::errc::invalid_argument);
        std::error_code error;
        for (const auto temp : {kTempNew, kOtherTempNew}) {
            path_ = Beside(destination_, temp);
            error = create(path_);
            if (error == std::errc::file_exists) {
                error = RemoveLeftover(path_);
                if (!error) error = create(path_);
            }
            if (!IsHeld(error)) break;
        }
        made_ = !error;
        return error;
    }

    /// Opens the file for the calls below.
    std::error_code Open(DWORD access) {
        file_ = OpenName(path_, access);
        return file_ ? std::error_code{} : LastError();
    }
    void Take(Handle file) { file_ = std::move(file); }
    const Handle& File() const { return file_; }
    const std::wstring& Path() const { return path_; }
    const std::wstring& Destination() const { return destination_; }

    /// Gives the open file its name.
    std::error_code MoveToDestination(bool replace) {
        const auto error = RenameOpen(file_, destination_, replace);
        if (!error) made_ = false;
        return error;
    }

private:
    /// Also a name that goes as soon as another program closes it, which is "access denied" until then.
    static bool IsHeld(const std::error_code& error) {
        return error == std::errc::file_exists || error == std::errc::device_or_resource_busy ||
               error == std::errc::permission_denied;
    }

    std::wstring destination_;
    std::wstring path_;
    Handle file_;
    bool made_ = false;
};

/// A folder, or a link to one, which the system copies neither.
std::error_code CopyFolderLink(const std::wstring& from, const std::wstring& copy, CopyOptions options,
                               std::error_code failure) {
    const auto entry = FindEntry(from);
    if (!entry) return entry.Error();
    if (!(entry->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) return failure;
    if (!options.keepLink || !IsLink(*entry)) return std::make_error_code(std::errc::is_a_directory);
    const auto text = ReadLinkText(from);
    if (!text) return text.Error();
    const DWORD flags = SYMBOLIC_LINK_FLAG_DIRECTORY | SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE;
    return CreateSymbolicLinkW(copy.c_str(), text->c_str(), flags) ? std::error_code{} : LastError();
}

std::error_code MakeCopy(const std::wstring& from, const std::wstring& copy, CopyOptions options) {
    const DWORD flags = COPY_FILE_FAIL_IF_EXISTS | (options.keepLink ? COPY_FILE_COPY_SYMLINK : 0);
    if (CopyFileExW(from.c_str(), copy.c_str(), nullptr, nullptr, nullptr, flags)) return {};
    const auto error = LastError();
    if (error == std::errc::file_exists || error == std::errc::no_such_file_or_directory) return error;
    return CopyFolderLink(from, copy, options, error);
}

std::error_code ClearReadOnly(const Handle& file) {
    const DWORD attributes = AttributesOf(file);
    if (attributes == INVALID_FILE_ATTRIBUTES) return LastError();
    return attributes & kReadOnly ? SetAttributesOf(file, attributes & ~kReadOnly) : std::error_code{};
}

/// Opens the copy, whose bytes are on the disk then if that is wanted. The system flushes only what it may
/// write, so a read-only copy gets its attribute back afterwards.
std::error_code Finish(TempFile& copy, CopyOptions options) {
    if (!options.flush) {
        if (const auto error = copy.Open(kFinishing)) return error;
        return options.makeWritable ? ClearReadOnly(copy.File()) : std::error_code{};
    }
    auto error = copy.Open(kFinishing | FILE_WRITE_DATA);
    DWORD protectedAs = 0;
    if (error == std::errc::permission_denied) {
        if ((error = copy.Open(kFinishing))) return error;
        protectedAs = AttributesOf(copy.File());
        if (protectedAs == INVALID_FILE_ATTRIBUTES) return LastError();
        if ((error = ClearReadOnly(copy.File()))) return error;
        error = copy.Open(kFinishing | FILE_WRITE_DATA);
    }
    if (error) return error;
    // A link has no bytes of its own.
    const bool isLink = HasAttribute(AttributesOf(copy.File()), FILE_ATTRIBUTE_REPARSE_POINT);
    if (!isLink && (error = FlushOpen(copy.File()))) return error;
    if (options.makeWritable) return ClearReadOnly(copy.File());
    return protectedAs & kReadOnly ? SetAttributesOf(copy.File(), protectedAs) : std::error_code{};
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

/// Makes and opens a file that nobody else can open before it is closed.
std::error_code MakeNew(TempFile& temp) {
    return temp.Make([&](const std::wstring& path) {
        temp.Take(Handle(CreateFileW(path.c_str(), GENERIC_WRITE | kFinishing, 0, nullptr, CREATE_NEW,
                                     FILE_ATTRIBUTE_NORMAL, nullptr)));
        return temp.File() ? std::error_code{} : LastError();
    });
}

/// Makes the new file as a copy of the one that it replaces, so that it has what else belongs to that:
/// attributes, further streams, rights and the time at which it was made.
std::error_code MakeSuccessor(TempFile& temp) {
    const std::wstring& old = temp.Destination();
    const auto error =
        temp.Make([&](const std::wstring& path) { return MakeCopy(old, path, {.makeWritable = true}); });
    if (error) return error;
    Ignore(CopyRights(old, temp.Path()));
    temp.Take(Handle(CreateFileW(temp.Path().c_str(), GENERIC_WRITE | kFinishing, 0, nullptr,
                                 TRUNCATE_EXISTING, 0, nullptr)));
    if (!temp.File()) return LastError();
    const Handle former = OpenName(old, FILE_READ_ATTRIBUTES);
    FILETIME made{};
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    if (former && GetFileTime(former.Get(), &made, nullptr, nullptr))
        SetFileTime(temp.File().Get(), &made, nullptr, &now);
    return {};
}

class WindowsFileWriter : public FileWriter {
public:
    WindowsFileWriter(const std::wstring& to, NewFile traits) : temp_(to), traits_(traits) {}

    std::error_code Start() { return MakeNew(temp_); }
    std::error_code Write(std::string_view bytes) override { return WriteTo(temp_.File(), bytes); }

    std::error_code Commit() override {
        const auto time = traits_.modified ? ToFileTime(*traits_.modified) : std::nullopt;
        if (time && !SetFileTime(temp_.File().Get(), nullptr, nullptr, &*time)) return LastError();
        const auto error = temp_.MoveToDestination(false);
        if (!error) temp_.Take(Handle());
        return error;
    }

private:
    TempFile temp_;
    NewFile traits_;
};

} // namespace

std::error_code CopyToName(const std::wstring& from, const std::wstring& to, CopyOptions options) {
    TempFile copy(to);
    auto error = copy.Make([&](const std::wstring& path) { return MakeCopy(from, path, options); });
    if (!error) error = Finish(copy, options);
    return error ? error : copy.MoveToDestination(options.replace);
}

std::error_code LinkToName(const std::wstring& from, const std::wstring& to, bool replace) {
    const Handle file = OpenName(from, FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES | SYNCHRONIZE);
    if (!file) return LastError();
    const DWORD attributes = AttributesOf(file);
    if (attributes == INVALID_FILE_ATTRIBUTES) return LastError();
    if (attributes & FILE_ATTRIBUTE_DIRECTORY) return std::make_error_code(std::errc::is_a_directory);
    if (attributes & kReadOnly) return std::make_error_code(std::errc::operation_not_permitted);
    return LinkOpen(file, to, replace);
}

std::error_code MoveOverName(const std::wstring& from, const std::wstring& to) {
    const Handle file = OpenName(from, DELETE | SYNCHRONIZE | FILE_READ_ATTRIBUTES);
    if (!file) return LastError();
    const DWORD attributes = AttributesOf(file);
    if (attributes == INVALID_FILE_ATTRIBUTES) return LastError();
    if (attributes & FILE_ATTRIBUTE_DIRECTORY) return std::make_error_code(std::errc::is_a_directory);
    if (const auto error = RenameOpen(file, to, true)) return error;
    // Wine does nothing between two names of one file, and reports success.
    FILE_STANDARD_INFO standard{};
    if (GetFileInformationByHandleEx(file.Get(), FileStandardInfo, &standard, sizeof standard) &&
        standard.NumberOfLinks > 1)
        return RemoveLeftover(from);
    return {};
}

std::error_code WriteWholeFile(const std::wstring& file, std::string_view bytes) {
    const DWORD attributes = GetFileAttributesW(file.c_str());
    if (HasAttribute(attributes, FILE_ATTRIBUTE_DIRECTORY))
        return std::make_error_code(std::errc::is_a_directory);
    if (HasAttribute(attributes, kReadOnly)) return std::make_error_code(std::errc::permission_denied);
    const bool isNew =
        attributes == INVALID_FILE_ATTRIBUTES || HasAttribute(attributes, FILE_ATTRIBUTE_REPARSE_POINT);
    TempFile temp(file);
    auto error = isNew ? MakeNew(temp) : MakeSuccessor(temp);
    if (!error) error = WriteTo(temp.File(), bytes);
    if (!error) error = FlushOpen(temp.File());
    return error ? error : temp.MoveToDestination(true);
}

Result<std::unique_ptr<FileWriter>> StartFile(const std::wstring& file, NewFile traits) {
    auto writer = std::make_unique<WindowsFileWriter>(file, traits);
    if (const auto error = writer->Start()) return error;
    return std::unique_ptr<FileWriter>(std::move(writer));
}

} // namespace quillbay
