#include "platform/windows/Removal.h"

#include "platform/Result.h"
#include "platform/windows/FolderScan.h"
#include "platform/windows/OpenFile.h"
#include "platform/windows/WidePath.h"

#include <vector>

namespace quillbay {

namespace {

/// FileDispositionInfoEx, which not every set of headers declares.
constexpr auto kDispositionEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);

/// Windows 10 1809 and later, on NTFS: the name goes at once and the attribute is not looked at.
bool RemoveIgnoringReadOnly(const std::wstring& longPath) {
    const Handle file = OpenName(longPath, DELETE);
    FILE_DISPOSITION_INFO_EX how{FILE_DISPOSITION_FLAG_DELETE | FILE_DISPOSITION_FLAG_POSIX_SEMANTICS |
                                 FILE_DISPOSITION_FLAG_IGNORE_READONLY_ATTRIBUTE};
    return file && SetFileInformationByHandle(file.Get(), kDispositionEx, &how, sizeof how);
}

std::error_code Outcome(BOOL isDone) { return isDone ? std::error_code{} : LastError(); }

/// True when the failed removal of the path may be repeated without its attribute.
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
    return WithoutReadOnly(longPath, [&] { return Outcome(DeleteFileW(longPath.c_str())); });
}

std::error_code RemoveFolderName(const std::wstring& longPath) {
    if (RemoveDirectoryW(longPath.c_str())) return {};
    const auto error = LastError();
    if (!FailedAsReadOnly(longPath, error)) return error;
    return WithoutReadOnly(longPath, [&] { return Outcome(RemoveDirectoryW(longPath.c_str())); });
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
