#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>

namespace quillbay {

class FileSystem;

enum class RecompileOutcome {
    Done,
    NoGame,     ///< the game directory is unknown or gone
    Unreadable, ///< one of its folders is there but cannot be listed
    NotWritten,
};

struct RecompileResult {
    RecompileOutcome outcome = RecompileOutcome::Done;
    std::string concerned; ///< the path that made it fail
    std::error_code error;
    std::size_t files = 0; ///< recorded
};

/// Writes the program's FileList.txt anew from the game as it is. Files that vanish meanwhile are left out,
/// and so is a file whose name begins like a heading, which would hide the records after it. Whatever fails,
/// the old catalogue stays.
RecompileResult RecompileFileList(FileSystem& files, std::string_view gameDirectory,
                                  std::string_view programDirectory);

} // namespace quillbay
