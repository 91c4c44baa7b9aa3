#include "platform/windows/Removal.h"

#include "platform/Result.h"
#include "platform/windows/FolderScan.h"
#include "platform/windows/Handle.h"
#include "platform/windows/WidePath.h"

#include <vector>

namespace quillbay {

namespace {

Handle OpenName(const std::wstring& longPath, DWORD access) {
    return Handle(CreateFileW(longPath.c_str(), access,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                              FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

/// FileDispositionInfoEx, which not every set of headers declares.
constexpr auto kDispositionEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);

/// Windows 10 1809 and later, on NTFS: the name goes at once and the attribute is not looked at.
bool RemoveIgnoringReadOnly(const std::wstring& longPath) {
    const Handle file = OpenName(longPath, DELETE);
    FILE_DISPOSITION_INFO_EX how{FILE_DISPOSITION_FLAG_DELETE | FILE_DISPOSITION_FLAG_POSIX_SEMANTICS |
                                 FILE_DISPOSITION_FLAG_IGNORE_READONLY_ATTRIBUTE};
    return file && SetFileInformationByHandle(file.Get(), kDispositionEx, &how, sizeof how);
}

/// True when the removal that failed may be tried again after clearing the read-only attribute.
bool FailedAsReadOnly(const std::wstring& longPath, const std::error_code& error) {
    if (error != std::errc::permission_denied) return false;
    const DWORD attributes = GetFileAttributesW(longPath.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY);
}

} // namespace

unsigned CountLinks(const std::wstring& longPath) {
    const Handle file = OpenName(longPath, FILE_READ_ATTRIBUTES);
    BY_HANDLE_FILE_INFORMATION information{};
    if (!file || !GetFileInformationByHandle(file.Get(), &information)) return 0;
    return information.nNumberOfLinks;
}

std::error_code RemoveFileName(const std::wstring& longPath) {
    if (DeleteFileW(longPath.c_str())) return {};
    const auto error = LastError();
    if (!FailedAsReadOnly(longPath, error)) return error;
    if (RemoveIgnoringReadOnly(longPath)) return {};
    if (CountLinks(longPath) != 1) return error;
    return WithoutReadOnly(longPath, [&] { return DeleteFileW(longPath.c_str()); });
}

std::error_code RemoveFolderName(const std::wstring& longPath) {
    if (RemoveDirectoryW(longPath.c_str())) return {};
    const auto error = LastError();
    if (!FailedAsReadOnly(longPath, error)) return error;
    return WithoutReadOnly(longPath, [&] { return RemoveDirectoryW(longPath.c_str()); });
}

std::error_code RemoveFolderTree(const std::wstring& longFolder) {
    std::error_code first;
    const auto note = [&](const std::error_code& error) {
        if (!first && error != std::errc::no_such_file_or_directory) first = error;
    };
    std::vector<std::wstring> folders{longFolder};
    for (std::size_t i = 0; i < folders.size(); ++i) {
        const auto entries = ScanFolder(folders[i]);
        if (!entries) {
            note(entries.Error());
            continue;
        }
        for (const WIN32_FIND_DATAW& entry : *entries) {
            std::wstring path = InFolder(folders[i], entry.cFileName);
            if (IsFolder(entry)) {
                folders.push_back(std::move(path));
            } else if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
                note(RemoveFolderName(path));
            } else {
                note(RemoveFileName(path));
            }
        }
    }
    // Every folder stands behind the one that holds it.
    for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder)
        note(RemoveFolderName(*folder));
    return first;
}

} // namespace quillbay
