#include "platform/windows/WinError.h"

#include <algorithm>
#include <iterator>
#include <windows.h>

namespace quillbay {

namespace {

struct Row {
    DWORD code;
    std::errc meaning;
};

constexpr DWORD kDiskQuotaExceeded = 1295; // not in every set of headers

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
    {ERROR_SHARING_VIOLATION, std::errc::permission_denied},
    {ERROR_LOCK_VIOLATION, std::errc::permission_denied},
    {ERROR_USER_MAPPED_FILE, std::errc::permission_denied},
    {ERROR_DELETE_PENDING, std::errc::permission_denied},
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

} // namespace

std::error_code WinError(unsigned long code) {
    const auto* row =
        std::find_if(std::begin(kRows), std::end(kRows), [&](const Row& r) { return r.code == code; });
    if (row != std::end(kRows)) return std::make_error_code(row->meaning);
    return {static_cast<int>(code), std::system_category()};
}

std::error_code LastError() {
    const DWORD code = GetLastError();
    return code == ERROR_SUCCESS ? std::make_error_code(std::errc::io_error) : WinError(code);
}

} // namespace quillbay
