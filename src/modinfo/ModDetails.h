#pragma once

#include "modinfo/ModInfo.h"
#include "platform/FileSystem.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbay {

/// What the details panel shows of a mod, apart from the decoded picture.
struct ModDetails {
    bool hasReadme = false;
    /// Bytes of the whole folder; none when it could not be computed.
    std::optional<std::uint64_t> size;
    /// Plain files in the known folders and directly in the mod's folder; none when the folder is unreadable.
    std::optional<std::size_t> fileCount;
    /// A picture is present by name (`ModPic.bmp` or `ModPic.jpg`, exact spelling).
    bool hasPicture = false;
    /// Paths of the pictures to load, in this order; the last one that decodes is shown. `ModPic.jpg` is
    /// among them only when the folder lists it before every other `ModPic.*`; there may be none.
    std::vector<std::string> pictures;
    ModInfoCaptions captions;
};

/// The first plain file whose name contains `readme` in any letter case; null when there is none.
const DirEntry* FindReadme(const std::vector<DirEntry>& modFolderEntries);

/// Lists the mod's own folder once. Steps that fail leave their member at its default.
ModDetails ReadModDetails(const FileSystem& files, std::string_view modFolder);

} // namespace quillbay
