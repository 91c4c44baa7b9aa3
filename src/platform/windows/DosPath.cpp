#include "platform/DosPath.h"

#include "platform/CaseFold.h"
#include "platform/windows/FolderScan.h"
#include "platform/windows/WidePath.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WinError.h"

#include <algorithm>
#include <vector>
#include <windows.h>

namespace quillbay {

namespace {

bool HasDrive(std::string_view path) { return path.size() >= 2 && path[1] == ':'; }

} // namespace

std::string NativePath(std::string_view dosPath) { return std::string(dosPath); }

Result<std::string> ShortPath(std::string_view folder, std::string_view) {
    const auto path = LongPath(folder);
    if (!path) return path.Error();
    std::wstring shortPath(path->size() + 1, L'\0');
    for (;;) {
        const DWORD length =
            GetShortPathNameW(path->c_str(), shortPath.data(), static_cast<DWORD>(shortPath.size()));
        if (length == 0) return LastError();
        const bool complete = length < shortPath.size();
        shortPath.resize(length);
        if (complete) return NarrowText(WithoutLongPrefix(shortPath));
    }
}

std::vector<std::string> SearchRoots(std::string_view programDirectory) {
    if (HasDrive(programDirectory)) return {std::string(programDirectory.substr(0, 2))};
    // A share has no drive: `\\server\share`.
    constexpr std::string_view kSeparators = "\\/";
    const auto server = programDirectory.find_first_not_of(kSeparators);
    const auto share =
        programDirectory.find_first_not_of(kSeparators, programDirectory.find_first_of(kSeparators, server));
    return {std::string(programDirectory.substr(0, programDirectory.find_first_of(kSeparators, share)))};
}

std::string DriveRootText(std::string_view programDirectory) {
    std::string root;
    for (int i = 0; i < 3 && !programDirectory.empty(); ++i) {
        const std::size_t length = ReadWideUtf8(programDirectory, 0).length;
        root.append(programDirectory.substr(0, length));
        programDirectory.remove_prefix(length);
    }
    // The folder `C:` is the root itself.
    return root.size() == 2 && HasDrive(root) ? root + '\\' : root;
}

std::string FirstFolder(std::string_view programDirectory) {
    return SearchRoots(programDirectory).front() + '\\';
}

std::string FindFileInTree(std::string_view root, std::string_view fileName) {
    const auto path = LongPath(root);
    if (!path || fileName.empty()) return {};
    std::vector<std::wstring> pending{*path};
    while (!pending.empty()) {
        const std::wstring folder = std::move(pending.back());
        pending.pop_back();
        const auto entries = ScanFolder(folder);
        if (!entries) continue;
        for (const WIN32_FIND_DATAW& entry : *entries) {
            if (IsFolder(entry)) {
                pending.push_back(InFolder(folder, entry.cFileName));
            } else if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) &&
                       EqualFolded(NarrowText(entry.cFileName), fileName)) {
                return NarrowText(WithoutLongPrefix(InFolder(folder, entry.cFileName)));
            }
        }
    }
    return {};
}

} // namespace quillbay
