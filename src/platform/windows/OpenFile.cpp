#include "platform/windows/OpenFile.h"

#include "platform/Result.h"
#include "platform/windows/WinError.h"

#include <cstddef>
#include <cstring>
#include <new>
#include <string_view>
#include <vector>
#include <winternl.h>

namespace quillbay {

namespace {

/// FILE_RENAME_INFORMATION and FILE_LINK_INFORMATION, which are the same. The old calls read one byte of the
/// flags, and kReplace is their "true".
struct NewName {
    ULONG flags;
    HANDLE root;
    ULONG nameBytes;
    WCHAR name[1];
};

constexpr ULONG kReplace = 0x1, kPosixSemantics = 0x2, kIgnoreReadOnly = 0x40;

// The new forms are not declared in every set of headers: Windows 10 1809 and later, on NTFS.
struct Calls {
    int plain;
    int extended;
};
constexpr Calls kRename{10, 65}, kLink{11, 72};

std::error_code GiveName(const Handle& file, const std::wstring& to, int call, ULONG flags) {
    // The native system spells the prefix of a long path "\??\".
    std::wstring native = to;
    native[1] = L'?';
    const std::size_t nameBytes = native.size() * sizeof(wchar_t);
    std::vector<std::byte> buffer(sizeof(NewName) + nameBytes);
    auto* how = new (buffer.data()) NewName{flags, nullptr, static_cast<ULONG>(nameBytes), {}};
    std::memcpy(how->name, native.data(), nameBytes);
    IO_STATUS_BLOCK status{};
    const NTSTATUS result = NtSetInformationFile(file.Get(), &status, how,
                                                 static_cast<ULONG>(offsetof(NewName, name) + nameBytes),
                                                 static_cast<FILE_INFORMATION_CLASS>(call));
    return NT_SUCCESS(result) ? std::error_code{} : StatusError(result);
}

/// "Access is denied" is also said of a file that another program has open.
std::error_code WhyDenied(const std::wstring& to, std::error_code denied) {
    const Handle asked = OpenName(to, DELETE);
    const auto error = asked ? denied : LastError();
    return error == std::errc::device_or_resource_busy ? error : denied;
}

/// How many names the file has; 0 when it cannot be asked.
DWORD CountLinks(const std::wstring& longPath) {
    const Handle file = OpenName(longPath, FILE_READ_ATTRIBUTES);
    BY_HANDLE_FILE_INFORMATION information{};
    if (!file || !GetFileInformationByHandle(file.Get(), &information)) return 0;
    return information.nNumberOfLinks;
}

/// Clears the attribute of `to`, which must not be open meanwhile, and puts it back when that did not help.
std::error_code GiveNameOfReadOnly(const Handle& file, const std::wstring& to, Calls calls) {
    DWORD attributes = 0;
    if (const Handle target = OpenName(to, FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES)) {
        attributes = AttributesOf(target);
        if (attributes == INVALID_FILE_ATTRIBUTES) return LastError();
        const auto error = SetAttributesOf(target, attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
        if (error) return error;
    } else {
        return LastError();
    }
    const auto error = GiveName(file, to, calls.plain, kReplace);
    if (error) {
        if (const Handle target = OpenName(to, FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES))
            Ignore(SetAttributesOf(target, attributes));
    }
    return error;
}

/// The plain call comes first, which every file system knows. It refuses a read-only file, whose attribute
/// the extended one does not look at, and one that is open, which the extended one replaces where the other
/// program allows it.
std::error_code GiveNameOf(const Handle& file, const std::wstring& to, bool replace, Calls calls) {
    const auto error = GiveName(file, to, calls.plain, replace ? kReplace : 0);
    if (!replace || error != std::errc::permission_denied) return error;
    const DWORD target = GetFileAttributesW(to.c_str());
    if (HasAttribute(target, FILE_ATTRIBUTE_DIRECTORY))
        return std::make_error_code(std::errc::is_a_directory);
    if (!GiveName(file, to, calls.extended, kReplace | kPosixSemantics | kIgnoreReadOnly)) return {};
    // The attribute is the file's: with a second name it would be gone there too, so it stays.
    if (HasAttribute(target, FILE_ATTRIBUTE_READONLY) && CountLinks(to) == 1)
        return GiveNameOfReadOnly(file, to, calls);
    return WhyDenied(to, error);
}

} // namespace

Handle OpenName(const std::wstring& longPath, DWORD access) {
    return Handle(CreateFileW(longPath.c_str(), access, kShareAll, nullptr, OPEN_EXISTING,
                              FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

Handle OpenTarget(const std::wstring& longPath) {
    return Handle(CreateFileW(longPath.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                              FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

DWORD AttributesOf(const Handle& file) {
    FILE_BASIC_INFO basic{};
    const bool known = GetFileInformationByHandleEx(file.Get(), FileBasicInfo, &basic, sizeof basic);
    return known ? basic.FileAttributes : INVALID_FILE_ATTRIBUTES;
}

std::error_code SetAttributesOf(const Handle& file, DWORD attributes) {
    // Without the last two, which say whether the cloud may take the file off this device, that would change.
    constexpr DWORD kPinned = 0x80000, kUnpinned = 0x100000;
    constexpr DWORD kSettable = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                                FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_TEMPORARY | FILE_ATTRIBUTE_OFFLINE |
                                FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | kPinned | kUnpinned;
    FILE_BASIC_INFO basic{}; // a time of 0 stays as it is
    basic.FileAttributes = attributes & kSettable;
    if (basic.FileAttributes == 0) basic.FileAttributes = FILE_ATTRIBUTE_NORMAL;
    return SetFileInformationByHandle(file.Get(), FileBasicInfo, &basic, sizeof basic) ? std::error_code{}
                                                                                       : LastError();
}

std::error_code RenameOpen(const Handle& file, const std::wstring& to, bool replace) {
    return GiveNameOf(file, to, replace, kRename);
}

std::error_code LinkOpen(const Handle& file, const std::wstring& to, bool replace) {
    return GiveNameOf(file, to, replace, kLink);
}

std::error_code FlushOpen(const Handle& file) {
    if (FlushFileBuffers(file.Get())) return {};
    const auto error = LastError();
    const bool isUnknown =
        error == std::errc::operation_not_supported || error == std::errc::invalid_argument;
    return isUnknown ? std::error_code{} : error;
}

} // namespace quillbay
