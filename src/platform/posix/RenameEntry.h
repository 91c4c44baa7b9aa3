#pragma once

#include <string>
#include <system_error>

/// Renames that lose nothing. All paths are as the system calls take them, in their stored spelling.
namespace quillbay {

/// Gives `from` the name `to`. -1 and errno on failure; EEXIST when `to` exists.
int RenameWithoutReplacing(const char* from, const char* to);

/// Gives the finished `temp` the name `to` in the same folder. With `replace` it takes the place of an
/// existing file or link in one step; a folder is is_a_directory. On failure both are as they were.
std::error_code MoveIntoPlace(const std::string& temp, const std::string& to, bool replace);

/// Gives the file `temp` the name `to` by one rename over what is there; also where both are names of one
/// file already.
std::error_code RenameOver(const std::string& temp, const std::string& to);

/// Removes what an interrupted operation left under a temporary name; a link itself, never a full folder.
std::error_code RemoveLeftover(const std::string& path);

} // namespace quillbay
