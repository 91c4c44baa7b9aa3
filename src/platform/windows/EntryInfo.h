#pragma once

#include "platform/FileSystem.h"
#include "platform/windows/Handle.h"

#include <cstdint>
#include <string>

/// What the system tells of an entry of a folder; paths are long paths (WidePath.h).
namespace quillbay {

constexpr std::uint64_t Wide(DWORD high, DWORD low) { return (std::uint64_t{high} << 32) | low; }

constexpr bool IsFolderAttribute(DWORD attributes) { return attributes & FILE_ATTRIBUTE_DIRECTORY; }

/// Of what the path leads to, links followed.
Result<BY_HANDLE_FILE_INFORMATION> ReadInformation(const std::wstring& path);

/// From a listing. `path` is asked only when the entry is a link.
void FillEntry(DirEntry& entry, const WIN32_FIND_DATAW& found, const std::wstring& path);

FileId IdOf(const Handle& file);

/// FileSystem::Stat.
Result<FileInfo> StatEntry(const std::wstring& path);

/// FileSystem::StatContents.
Result<FileInfo> StatEntryContents(const std::wstring& path);

} // namespace quillbay
