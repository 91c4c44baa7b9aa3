#pragma once

#include "platform/FileSystem.h"

#include <cstddef>
#include <string>
#include <system_error>

/// The game's known folders inside a mod, for an author to drop files into. Folders that are linked or
/// mounted into the mod are left as they are.
namespace quillbay {

struct SubfolderResult {
    std::size_t made = 0;
    std::string failed; ///< the first folder that could not be made
    std::error_code error;
};

/// Makes the known folders that the mod does not have in any letter case; goes on after a failure.
SubfolderResult MakeSubfolders(FileSystem& files, const std::string& modFolder);

/// Removes the known folders that are empty, children first, and returns how many. What cannot be removed
/// stays.
std::size_t RemoveSubfolders(FileSystem& files, const std::string& modFolder);

} // namespace quillbay
