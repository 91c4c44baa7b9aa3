#include "platform/windows/WinError.h"

#include "platform/PassingError.h"
#include "platform/windows/WideText.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <windows.h>
#include <winternl.h>

namespace quillbay {

namespace {

struct Row {
    DWORD code;
    std::errc meaning;
};

// Not in every set of headers.
constexpr DWORD kDiskQuotaExceeded = 1295;
constexpr DWORD kVirusFound = 225;
constexpr DWORD kVirusRemoved = 226;
constexpr DWORD kFirstOfCloud = 358;
constexpr DWORD kCloudNotSupported = 379;
constexpr DWORD kCloudInUse = 391;
constexpr DWORD kCloudDenied = 395;
constexpr DWORD kCloudHardLinks = 396;
constexpr DWORD kLastOfCloud = 404;

constexpr auto kInUse = std::errc::device_or_resource_busy;

constexpr Row kRows[] = {
    {ERROR_FILE_NOT_FOUND, std::errc::no_such_file_or_directory},
    {ERROR_PATH_NOT_FOUND, std::errc::no_such_file_or_directory},
    {ERROR_INVALID_NAME, std::errc::no_such_file_or_directory},
    {ERROR_BAD_PATHNAME, std::errc::no_such_file_or_directory},
    {ERROR_BAD_NETPATH, std::errc::no_such_file_or_directory},
    {ERROR_BAD_NET_NAME, std::errc::no_such_file_or_directory},
    {ERROR_INVALID_DRIVE, std::errc::no_such_file_or_directory},
    {ERROR_MOD_NOT_FOUND, std::errc::no_such_file_or_directory},
    {ERROR_FILE_EXISTS, std::errc::file_exists},
    {ERROR_ALREADY_EXISTS, std::errc::file_exists},
    {ERROR_DIRECTORY, std::errc::not_a_directory},
    {ERROR_DIR_NOT_EMPTY, std::errc::directory_not_empty},
    {ERROR_ACCESS_DENIED, std::errc::permission_denied},
    {ERROR_NETWORK_ACCESS_DENIED, std::errc::permission_denied},
    {ERROR_SHARING_VIOLATION, kInUse},
    {ERROR_LOCK_VIOLATION, kInUse},
    {ERROR_USER_MAPPED_FILE, kInUse},
    {ERROR_DELETE_PENDING, kInUse},
    {ERROR_BUSY, kInUse},
    {kCloudInUse, kInUse},
    {kCloudDenied, std::errc::permission_denied},
    {kCloudNotSupported, std::errc::operation_not_supported},
    {kCloudHardLinks, std::errc::operation_not_supported},
    {ERROR_CURRENT_DIRECTORY, std::errc::permission_denied},
    {ERROR_CANNOT_MAKE, std::errc::permission_denied},
    {ERROR_WRITE_PROTECT, std::errc::permission_denied},
    {ERROR_PRIVILEGE_NOT_HELD, std::errc::permission_denied},
    {ERROR_DISK_FULL, std::errc::no_space_on_device},
    {ERROR_HANDLE_DISK_FULL, std::errc::no_space_on_device},
    {kDiskQuotaExceeded, std::errc::no_space_on_device},
    {ERROR_NOT_SAME_DEVICE, std::errc::cross_device_link},
    {ERROR_INVALID_FUNCTION, std::errc::operation_not_supported},
    {ERROR_NOT_SUPPORTED, std::errc::operation_not_supported},
    {ERROR_CALL_NOT_IMPLEMENTED, std::errc::operation_not_supported},
    {ERROR_BAD_EXE_FORMAT, std::errc::executable_format_error},
    {ERROR_NO_ASSOCIATION, std::errc::operation_not_supported},
    {ERROR_TOO_MANY_LINKS, std::errc::too_many_links},
    {ERROR_INVALID_PARAMETER, std::errc::invalid_argument},
    {ERROR_NOT_A_REPARSE_POINT, std::errc::invalid_argument},
    {ERROR_FILENAME_EXCED_RANGE, std::errc::filename_too_long},
    {ERROR_CANT_RESOLVE_FILENAME, std::errc::too_many_symbolic_link_levels},
    {ERROR_TOO_MANY_OPEN_FILES, std::errc::too_many_files_open},
    {ERROR_NOT_ENOUGH_MEMORY, std::errc::not_enough_memory},
    {ERROR_OUTOFMEMORY, std::errc::not_enough_memory},
    {ERROR_CANCELLED, std::errc::operation_canceled},
    {ERROR_NOT_READY, std::errc::io_error},
    {ERROR_CRC, std::errc::io_error},
    {ERROR_SEEK, std::errc::io_error},
    {ERROR_SECTOR_NOT_FOUND, std::errc::io_error},
    {ERROR_WRITE_FAULT, std::errc::io_error},
    {ERROR_READ_FAULT, std::errc::io_error},
    {ERROR_GEN_FAILURE, std::errc::io_error},
    {ERROR_IO_DEVICE, std::errc::io_error},
    {ERROR_DISK_OPERATION_FAILED, std::errc::io_error},
    {ERROR_FILE_CORRUPT, std::errc::io_error},
    {ERROR_DISK_CORRUPT, std::errc::io_error},
    {ERROR_DEV_NOT_EXIST, std::errc::io_error},
    {ERROR_NETNAME_DELETED, std::errc::io_error},
};

const Row* FindRow(DWORD code) {
    const auto* row =
        std::find_if(std::begin(kRows), std::end(kRows), [&](const Row& r) { return r.code == code; });
    return row == std::end(kRows) ? nullptr : row;
}

/// Where the system has no text of its own: a version before the code was introduced.
std::string OwnSentence(DWORD code) {
    if (code == kVirusFound || code == kVirusRemoved)
        return "The file contains a virus or potentially unwanted software";
    if (code >= kFirstOfCloud && code <= kLastOfCloud)
        return "The file is kept in the cloud, and is not on this device";
    return "Windows error " + std::to_string(code);
}

class WindowsErrors : public std::error_category {
public:
    const char* name() const noexcept override { return "windows"; }

    std::string message(int value) const override {
        const auto code = static_cast<DWORD>(value);
        std::array<wchar_t, 512> text{};
        const DWORD flags =
            FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
        const DWORD length =
            FormatMessageW(flags, nullptr, code, 0, text.data(), DWORD{text.size()}, nullptr);
        std::wstring_view sentence(text.data(), length);
        // The sentences of the other systems have no final point either.
        sentence = sentence.substr(0, sentence.find_last_not_of(L" .\r\n") + 1);
        return sentence.empty() ? OwnSentence(code) : NarrowText(sentence);
    }

    std::error_condition default_error_condition(int value) const noexcept override {
        if (const auto* row = FindRow(static_cast<DWORD>(value)))
            return std::make_error_condition(row->meaning);
        return {value, *this};
    }
};

const WindowsErrors& Category() {
    static const WindowsErrors category;
    return category;
}

} // namespace

std::error_code WinError(unsigned long code) { return {static_cast<int>(code), Category()}; }

std::error_code LastError() {
    const DWORD code = GetLastError();
    return code == ERROR_SUCCESS ? std::make_error_code(std::errc::io_error) : WinError(code);
}

std::error_code StatusError(long status) {
    SetLastError(RtlNtStatusToDosError(status));
    return LastError();
}

bool MayPass(const std::error_code& error, FileAccess access) {
    // A reader is denied for want of a right, a writer also while somebody holds the file or the folder.
    return IsInUse(error) || (access == FileAccess::Writing && error == WinError(ERROR_ACCESS_DENIED));
}

} // namespace quillbay
