#pragma once

#include "platform/FileSystem.h"

#include <string_view>

namespace quillbay {

/// What the Manager menu must know about the disk each time it opens.
struct ManagerItems {
    bool hasGameExecutable = false; ///< a file `tempest2.exe` in any letter case in the game directory
    bool hasMapEditor = false;      ///< both marker files of the map editor, in exactly their spelling
    bool hasFileList = false;       ///< `FileList.txt` in the program's folder
};

/// Lists the game directory once; what cannot be read counts as missing.
ManagerItems FindManagerItems(const FileSystem& files, std::string_view gameDirectory,
                              std::string_view programDirectory);

} // namespace quillbay
