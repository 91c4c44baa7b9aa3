#pragma once

#include "platform/FileSystem.h"

#include <memory>
#include <string>
#include <system_error>

/// Files that get their name only when they are whole; paths are long paths (WidePath.h).
namespace quillbay {

/// FileSystem::Copy.
std::error_code CopyToName(const std::wstring& from, const std::wstring& to, CopyOptions options);

/// FileSystem::HardLink.
std::error_code LinkToName(const std::wstring& from, const std::wstring& to, bool replace);

/// FileSystem::RenameOver.
std::error_code MoveOverName(const std::wstring& from, const std::wstring& to);

/// FileSystem::WriteFile. `file` has the spelling that it is to have.
std::error_code WriteWholeFile(const std::wstring& file, std::string_view bytes);

/// FileSystem::MakeFile.
Result<std::unique_ptr<FileWriter>> StartFile(const std::wstring& file, NewFile traits);

} // namespace quillbay
