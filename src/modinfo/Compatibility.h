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
    std::vector<std::string> folders;  ///< that hold them, in stored spelling
    std::vector<std::size_t> folderOf; ///< by path: position in `folders`

    bool Usable() const { return !tooMany && !failure; }
    /// Where the file lies on the disk.
    std::string StoredPath(std::size_t path) const;
};

/// The plain files in the known folders of `base`, without those named exactly like one of `leftOut` and
/// without leftovers of interrupted operations. A missing `base` is a failure, a missing subfolder is none.
ComparedFiles ListComparedFiles(const FileSystem& files, std::string_view base,
                                std::span<const std::string_view> leftOut = {});

/// A path that both sides hold: its positions in their `paths`.
struct CommonPath {
    std::size_t first = 0;
    std::size_t second = 0;

    friend bool operator==(const CommonPath&, const CommonPath&) = default;
};

/// Every path of `first` that `second` holds too, letter case included, once each and in the order of
/// `first`. `progress(done, total)` is called for each path of `first`; it may be empty.
std::vector<CommonPath> FindCommonPaths(const std::vector<std::string>& first,
                                        const std::vector<std::string>& second,
                                        const std::function<void(std::size_t, std::size_t)>& progress = {});

/// Finds out, file by file, which of the common files hold the same bytes.
class ContentComparison {
public:
    ContentComparison(const FileSystem& files, ComparedFiles first, ComparedFiles second,
                      std::vector<CommonPath> common);

    /// Compares the next file; false when there is none.
    bool Step();

    std::size_t Common() const { return common_.size(); }
    std::size_t Equal() const { return equal_; }
    const std::vector<std::string>& Different() const { return different_; }
    /// Those of which one side cannot be read any more.
    const std::vector<std::string>& Unreadable() const { return unreadable_; }

private:
    const FileSystem& files_;
    const ComparedFiles first_;
    const ComparedFiles second_;
    const std::vector<CommonPath> common_;
    std::size_t done_ = 0;
    std::size_t equal_ = 0;
    std::vector<std::string> different_;
    std::vector<std::string> unreadable_;
};

} // namespace quillbay
