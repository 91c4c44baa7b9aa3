#include "platform/windows/LinkText.h"

#include "platform/windows/Handle.h"
#include "platform/windows/WinError.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace quillbay {

namespace {

/// What FSCTL_GET_REPARSE_POINT writes: this, for a symbolic link four bytes of flags, then the names.
struct LinkHeader {
    ULONG tag;
    USHORT dataLength;
    USHORT reserved;
    USHORT storedOffset; // offsets and lengths are bytes; offsets count from the first name
    USHORT storedLength;
    USHORT shownOffset;
    USHORT shownLength;
};

std::wstring TakeName(const std::byte* names, std::size_t available, std::size_t offset, std::size_t length) {
    if (offset + length > available) return {};
    std::wstring name(length / sizeof(wchar_t), L'\0');
    std::memcpy(name.data(), names + offset, name.size() * sizeof(wchar_t));
    return name;
}

} // namespace

Result<std::wstring> ReadLinkText(const std::wstring& longPath) {
    const Handle link(CreateFileW(
        longPath.c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
        nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!link) return LastError();
    std::array<std::byte, MAXIMUM_REPARSE_DATA_BUFFER_SIZE> data;
    DWORD size = 0;
    if (!DeviceIoControl(link.Get(), FSCTL_GET_REPARSE_POINT, nullptr, 0, data.data(),
                         static_cast<DWORD>(data.size()), &size, nullptr))
        // A file whose reparse data cannot be read has no link text.
        return std::errc::invalid_argument;

    LinkHeader header{};
    if (size < sizeof header) return std::errc::invalid_argument;
    std::memcpy(&header, data.data(), sizeof header);
    std::size_t names = sizeof header;
    if (header.tag == IO_REPARSE_TAG_SYMLINK) {
        names += sizeof(ULONG);
    } else if (header.tag != IO_REPARSE_TAG_MOUNT_POINT) {
        return std::errc::invalid_argument;
    }
    if (size < names) return std::errc::invalid_argument;
    const std::size_t available = size - names;
    std::wstring text = TakeName(data.data() + names, available, header.shownOffset, header.shownLength);
    if (!text.empty()) return text;
    text = TakeName(data.data() + names, available, header.storedOffset, header.storedLength);
    constexpr std::wstring_view kSystemPrefix = L"\\??\\";
    return text.starts_with(kSystemPrefix) ? text.substr(kSystemPrefix.size()) : text;
}

} // namespace quillbay
