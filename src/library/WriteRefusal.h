#pragma once

#include "platform/FileSystem.h"

#include <string>
#include <system_error>
#include <vector>

/// Whether the rights of this program reach into the game, found out before anything is changed there.
namespace quillbay {

/// A folder in which no file can be made, and why.
struct WriteRefusal {
    std::string folder;
    std::error_code error;

    explicit operator bool() const { return bool(error); }
};

/// True for a failure that more rights, or a disk that is not write-protected, would have spared.
bool IsAboutRights(const std::error_code& error);

/// Tries one folder after the other until one can be written, or cannot for another reason than rights: then
/// there is no refusal. The first one when every folder refuses.
WriteRefusal TryToWrite(FileSystem& files, const std::vector<std::string>& folders);

} // namespace quillbay
