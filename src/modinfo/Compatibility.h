#pragma once

#include "library/KnownFolders.h"
#include "platform/FileSystem.h"

#include <array>
#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Which files two mods, or a mod and the game, have in common.
namespace quillbay {

/// More files than this on one side cannot be compared.
inline constexpr std::size_t kMostComparedFiles = 10'000;

/// What every mod may have in its own folder without being in another one's way.
inline constexpr std::array<std::string_view, 3> kDescriptionFiles{"ModInfo.txt", "ModPic.bmp", "ModPic.jpg"};

/// The files of one side as relative paths: a GameFolders entry in its own spelling and a file name as
/// stored.
struct ComparedFiles {
    std::vector<std::string>
        paths;            ///< in list order, each folder in listing order; empty when they do not count
    bool tooMany = false; ///< there are more than kMostComparedFiles
    ReadFailure failure;  ///< the side's folder, or one in it, could not be read or is missing

    bool Usable() const { return !tooMany && !failure; }
};

/// The plain files in the known folders of `base`, without those named exactly like one of `leftOut` and
/// without leftovers of interrupted operations. A missing `base` is a failure, a missing subfolder is none.
ComparedFiles ListComparedFiles(const FileSystem& files, std::string_view base,
                                std::span<const std::string_view> leftOut = {});

/// Every path of `first` that `second` holds too, letter case included, once each and in the order of
/// `first`. `progress(done, total)` is called for each path of `first`; it may be empty.
std::vector<std::string> CommonPaths(const std::vector<std::string>& first,
                                     const std::vector<std::string>& second,
                                     const std::function<void(std::size_t, std::size_t)>& progress = {});

} // namespace quillbay
