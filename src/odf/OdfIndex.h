#pragma once

#include "library/KnownFolders.h"
#include "odf/OdfLines.h"
#include "platform/FileSystem.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillbay {

/// The `.odf` files (any letter case) of the kOdfFolders, by full path in the order of the file system.
struct OdfFolders {
    std::array<std::vector<std::string>, kOdfFolders.size()> odfs;
    std::size_t totalFiles = 0; ///< plain files in those folders, whatever their ending
};

/// Lists each folder below the `odf` folder once; one that is missing or cannot be listed has no files, and
/// `failure` is the first that cannot.
OdfFolders ListOdfFolders(const FileSystem& files, std::string_view odfFolder,
                          ReadFailure* failure = nullptr);

/// Finds ODF files by the end of their path in logarithmic time.
class OdfIndex {
public:
    OdfIndex() = default;
    explicit OdfIndex(const OdfFolders& folders);

    /// True when a full path, written with backslashes, ends with the name in any letter case: `ship.odf` is
    /// found when only `battleship.odf` exists, and the empty name always.
    bool OdfExists(std::string_view name) const;

private:
    std::vector<std::string> reversedPaths_; ///< case folded, sorted
};

} // namespace quillbay
