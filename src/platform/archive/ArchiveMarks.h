#pragma once

#include <string_view>
#include <system_error>

/// What an archive's bytes say that the unpacking library passes over.
namespace quillbay {

/// How much of an archive's beginning and end is looked at.
inline constexpr std::size_t kMarkBytes = 64 * 1024;

/// PartOfSet or Encrypted, where the beginning of a rar says so: the library would give a first part's bytes
/// as far as they go, and the bytes of a protected file as they are.
std::error_code FindRarMark(std::string_view head);

/// True when the name or the end (of a zip) says that a file which could not be read is only a part.
bool LooksLikePart(std::string_view fileName, std::string_view tail);

} // namespace quillbay
