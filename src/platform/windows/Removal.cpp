#include "platform/windows/Removal.h"

#include "platform/Result.h"
#include "platform/windows/FolderScan.h"
#include "platform/windows/OpenFile.h"
#include "platform/windows/WidePath.h"
#include "platform/windows/WinError.h"

#include <vector>

namespace quillbay {

namespace {

/// FileDispositionInfoEx, which not every set of headers declares.
constexpr auto kDispositionEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);

/// Removes what was refused (`denied`), if it has the read-only attribute.
std::error_code RemoveReadOnly(const std::wstring& longPath, bool isFolder, std::error_code denied) {
    const Handle entry = OpenName(longPath, DELETE | FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES);
    if (!entry) return LastError();
    BY_HANDLE_FILE_INFORMATION now{};
    if (!GetFileInformationByHandle(entry.Get(), &now) || !(now.dwFileAttributes & FILE_ATTRIBUTE_READONLY))
        return denied;
    if (isFolder != bool(now.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) return denied;
    // Windows 10 1809 and later, on NTFS: the name goes at once and the attribute is not looked at.
    FILE_DISPOSITION_INFO_EX how{FILE_DISPOSITION_FLAG_DELETE | FILE_DISPOSITION_FLAG_POSIX_SEMANTICS |
                                 FILE_DISPOSITION_FLAG_IGNORE_READONLY_ATTRIBUTE};
    if (SetFileInformationByHandle(entry.Get(), kDispositionEx, &how, sizeof how)) return {};
    if (!isFolder && now.nNumberOfLinks != 1) return denied;
    const DWORD others = now.dwFileAttributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY);
    if (const auto error = SetAttributesOf(entry, others)) return error;
    FILE_DISPOSITION_INFO gone{TRUE};
    if (SetFileInformationByHandle(entry.Get(), FileDispositionInfo, &gone, sizeof gone)) return {};
    const auto error = LastError();
    Ignore(SetAttributesOf(entry, now.dwFileAttributes));
    return error;
}

} // namespace

std::error_code RemoveFileName(const std::wstring& longPath) {
    if (DeleteFileW(longPath.c_str())) return {};
    const auto error = LastError();
    return error == std::errc::permission_denied ? RemoveReadOnly(longPath, false, error) : error;
}

std::error_code RemoveFolderName(const std::wstring& longPath) {
    if (RemoveDirectoryW(longPath.c_str())) return {};
    const auto error = LastError();
    return error == std::errc::permission_denied ? RemoveReadOnly(longPath, true, error) : error;
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
