#include "platform/windows/FinalPath.h"

#include "platform/windows/FolderScan.h"
#include "platform/windows/LinkText.h"
#include "platform/windows/OpenFile.h"
#include "platform/windows/WidePath.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WinError.h"

#include <array>
#include <cstddef>
#include <cstring>

namespace quillbay {

namespace {

constexpr int kMostLinks = 40; ///< in one path

/// Upper case, so that two spellings of a drive are one.
std::wstring RealRoot(std::wstring root) {
    const auto drive = root.rfind(L':');
    if (drive != std::wstring::npos && root[drive - 1] >= L'a') root[drive - 1] -= L'a' - L'A';
    return root;
}

Result<std::wstring> FindPath(const std::wstring& path, int links);

/// Where the system does not tell: it knows no final path on drives that its mount manager has not heard of,
/// as those of RAM disks and encrypted containers, and Wine none of more than 260 characters.
Result<std::wstring> FollowPath(const std::wstring& path, int links, std::error_code failure) {
    if (path.back() == L'\\') return RealRoot(path);
    const auto entry = FindEntry(path);
    if (!entry || links == kMostLinks) return failure;
    const auto parent = FindPath(std::wstring(LongParent(path)), links);
    if (!parent) return parent.Error();
    if (!IsLink(*entry)) return InFolder(*parent, entry->cFileName);
    const auto text = ReadLinkText(path);
    if (!text) return text.Error();
    const bool isAbsolute = text->starts_with(L'\\') || text->find(L':') != std::wstring::npos;
    const auto target = LongPath(NarrowText(isAbsolute ? *text : InFolder(*parent, *text)));
    return target ? FindPath(*target, links + 1) : target;
}

/// Empty where the system does not tell.
std::wstring FinalPathOf(const Handle& handle) {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const auto room = static_cast<DWORD>(path.size());
        const DWORD length = GetFinalPathNameByHandleW(handle.Get(), path.data(), room, 0);
        path.resize(length);
        if (length < room) return path;
    }
}

Result<std::wstring> FindPath(const std::wstring& path, int links) {
    const Handle handle = OpenTarget(path);
    if (!handle) return LastError();
    auto real = FinalPathOf(handle);
    if (!real.empty()) return real;
    return FollowPath(path, links, LastError());
}

} // namespace

Result<std::wstring> FindFinalPath(const std::wstring& longPath) { return FindPath(longPath, 0); }

std::wstring StoredPathOf(const Handle& entry) {
    // FileNormalizedNameInfo: not in every set of headers, and unknown to Wine. It asks the file system
    // alone.
    constexpr auto kStoredName = static_cast<FILE_INFO_BY_HANDLE_CLASS>(24);
    alignas(FILE_NAME_INFO) std::array<std::byte, 2048> buffer;
    if (!GetFileInformationByHandleEx(entry.Get(), kStoredName, buffer.data(), DWORD{buffer.size()}))
        return FinalPathOf(entry);
    FILE_NAME_INFO head{};
    std::memcpy(&head, buffer.data(), sizeof head);
    std::wstring path(head.FileNameLength / sizeof(wchar_t), L'\0');
    std::memcpy(path.data(), buffer.data() + offsetof(FILE_NAME_INFO, FileName), head.FileNameLength);
    return path;
}

} // namespace quillbay
