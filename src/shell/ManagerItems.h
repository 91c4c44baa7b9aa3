#pragma once

#include "platform/FileSystem.h"

#include <array>
#include <string>
#include <string_view>
#include <system_error>

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

/// The game opens its map editor only while both files, empty or not, lie in its directory.
inline constexpr std::array<std::string_view, 2> kMapEditorMarkers = {"HLVX", "unsupportedextension_mapedit"};

struct MarkerFailure {
    std::string path;
    std::error_code error;
};

/// Makes both files, empty and in exactly this spelling, in an existing game directory. The first file that
/// could not be written; no error when both are there.
MarkerFailure WriteMapEditorMarkers(FileSystem& files, std::string_view gameDirectory);

} // namespace quillbay
