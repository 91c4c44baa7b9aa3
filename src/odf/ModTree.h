#pragma once

#include "library/ModRows.h"

#include <string>
#include <string_view>
#include <vector>

namespace quillbay {

/// A node of the analyzer's tree. The texts from the root down, joined by backslashes, name one node only.
struct TreeFolder {
    std::string text;
    /// The folders on the disk in stored spelling: several where names differ in letter case only, the one
    /// that look-ups find first.
    std::vector<std::string> folders;
    std::vector<TreeFolder> children;

    friend bool operator==(const TreeFolder&, const TreeFolder&) = default;
};

/// The root "Mods" (the folder `mods`), below it the mods of a mod list, below each the known folders that it
/// has, in the order of GameFolders. Addons get no node, nor does a row that stands for no mod.
TreeFolder ReadModTree(const FileSystem& files, std::string_view programDirectory,
                       const std::vector<ModRow>& rows);

} // namespace quillbay
