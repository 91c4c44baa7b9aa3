#pragma once

#include "platform/FileSystem.h"

#include <string>
#include <system_error>

/// The game's known folders inside a mod, for an author to drop files into. Folders that are linked or
/// mounted into the mod are left as they are.
namespace quillbay {

struct SubfolderFailure {
    std::string path;
    std::error_code error;
};

/// Makes the known folders that the mod does not have in any letter case; goes on after a failure and returns
/// the first one, or no error.
SubfolderFailure MakeSubfolders(FileSystem& files, const std::string& modFolder);

/// Removes the known folders that are empty, children first. What cannot be removed stays.
void RemoveSubfolders(FileSystem& files, const std::string& modFolder);

} // namespace quillbay
