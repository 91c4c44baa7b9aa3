#include "platform/windows/FolderScan.h"

#include "platform/windows/WidePath.h"
#include "platform/windows/WinError.h"

#include <string_view>

namespace quillbay {

namespace {

class Search {
public:
    Search(const std::wstring& pattern, WIN32_FIND_DATAW& entry)
        : handle_(FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &entry, FindExSearchNameMatch, nullptr,
                                   FIND_FIRST_EX_LARGE_FETCH)) {}
    Search(const Search&) = delete;
    ~Search() {
        if (*this) FindClose(handle_);
    }

    explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
    bool Next(WIN32_FIND_DATAW& entry) { return FindNextFileW(handle_, &entry); }

private:
    HANDLE handle_;
};

bool IsDots(const WIN32_FIND_DATAW& entry) {
    const std::wstring_view name = entry.cFileName;
    return name == L"." || name == L"..";
}

/// Why a folder could not be searched: the system does not tell a file from a missing folder.
std::error_code SearchFailure(const std::wstring& longFolder, std::error_code error) {
    const DWORD attributes = GetFileAttributesW(longFolder.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return error;
    if (!(attributes & FILE_ATTRIBUTE_DIRECTORY)) return std::make_error_code(std::errc::not_a_directory);
    return error;
}

} // namespace

bool IsLink(const WIN32_FIND_DATAW& entry) {
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) &&
           IsReparseTagNameSurrogate(entry.dwReserved0);
}

bool IsFolder(const WIN32_FIND_DATAW& entry) {
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) && !IsLink(entry);
}

Result<WIN32_FIND_DATAW> FindEntry(const std::wstring& longPath) {
    WIN32_FIND_DATAW entry{};
    if (Search(longPath, entry)) return entry;
    const auto error = LastError();
    if (longPath.back() != L'\\') return error;
    // A root is no entry of any folder.
    WIN32_FILE_ATTRIBUTE_DATA root{};
    if (!GetFileAttributesExW(longPath.c_str(), GetFileExInfoStandard, &root)) return LastError();
    entry.dwFileAttributes = root.dwFileAttributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_REPARSE_POINT);
    entry.ftLastWriteTime = root.ftLastWriteTime;
    return entry;
}

Result<std::vector<WIN32_FIND_DATAW>> ScanFolder(const std::wstring& longFolder) {
    std::vector<WIN32_FIND_DATAW> entries;
    WIN32_FIND_DATAW entry{};
    Search search(InFolder(longFolder, L"*"), entry);
    if (!search) {
        // An empty root has not even the two dots.
        if (GetLastError() == ERROR_FILE_NOT_FOUND && longFolder.back() == L'\\') return entries;
        return SearchFailure(longFolder, LastError());
    }
    do {
        if (!IsDots(entry)) entries.push_back(entry);
    } while (search.Next(entry));
    if (GetLastError() != ERROR_NO_MORE_FILES) return LastError();
    return entries;
}

} // namespace quillbay
