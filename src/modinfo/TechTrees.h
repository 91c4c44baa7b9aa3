#pragma once

#include "library/ModRows.h"
#include "platform/FileSystem.h"

#include <string_view>
#include <vector>

namespace quillbay {

/// Names of the game's tech tree options, in the order in which they are shown.
struct TechTrees {
    std::vector<std::string_view> available;
    std::vector<std::string_view> unavailable;
};

/// Which options the mod brings: by the names of the plain files in its `techtree` folder, in any letter
/// case. An empty path, and a folder that is missing or cannot be read, make all of them unavailable.
TechTrees FindTechTrees(const FileSystem& files, std::string_view modLibrary, const ModPath& mod);

} // namespace quillbay
