#pragma once

#include "platform/FileSystem.h"

#include <string_view>

namespace quillbay {

/// Which items of the Manager menu the disk allows to be chosen.
struct ManagerItems {
    bool launchGame = false;      ///< a file `tempest2.exe` in any letter case is in the game directory
    bool installMapEditor = true; ///< not both marker files are there in exactly their spelling
    bool launchMapEditor = false; ///< both are
    bool openFinder = false;      ///< `FileList.txt` is in the program's folder
};

/// Lists the game directory once; what cannot be read counts as missing.
ManagerItems FindManagerItems(const FileSystem& files, std::string_view gameDirectory,
                              std::string_view programDirectory);

} // namespace quillbay
