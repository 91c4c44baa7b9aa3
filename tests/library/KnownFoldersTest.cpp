#include "library/KnownFolders.h"

#include "common/PathText.h"
#include "support/DiskTest.h"
#include "support/ListingFileSystem.h"

#include <gtest/gtest.h>

namespace quillbay::test {
namespace {

class KnownFoldersTest : public DiskTest {};

class CountingFileSystem : public ListingFileSystem {
public:
    using ListingFileSystem::ListingFileSystem;

    Result<std::vector<DirEntry>> List(std::string_view folder, Detail detail) const override {
        auto entries = ListingFileSystem::List(folder, detail);
        if (LastComponent(folder) == "bzn") return std::errc::permission_denied;
        return entries;
    }
    Result<FileInfo> Stat(std::string_view path) const override {
        ADD_FAILURE() << "a listing has answered this already: " << path;
        return Base().Stat(path);
    }
};

TEST_F(KnownFoldersTest, EveryPositionIsFoundAndListedOnce) {
    for (const std::string_view folder : GameFolders)
        PutFile(temp_ / Join(folder, "file.txt"), "x");
    const CountingFileSystem files(*disk_);
    const KnownFolders known = ListKnownFolders(files, temp_.Path(), Detail::Names);
    for (std::size_t i = 0; i < kGameFolderCount; ++i) {
        if (GameFolders[i] == R"(bzn\)") {
            EXPECT_TRUE(known[i].empty()) << "cannot be listed";
            continue;
        }
        ASSERT_EQ(known[i].size(), 1U) << GameFolders[i];
        EXPECT_EQ(known[i][0].path, WithoutFinalSeparators(Join(temp_.Path(), GameFolders[i])));
        EXPECT_EQ(CountPlainFiles(known[i]), 1U) << GameFolders[i];
    }
    EXPECT_EQ(files.listed.size(), kGameFolderCount);
    for (const auto& [folder, times] : files.listed)
        EXPECT_EQ(times, 1) << folder;

    const CountingFileSystem ended(*disk_);
    CountKnownFiles(ended, temp_.Path(), [](std::size_t position, std::size_t) { return position == 0; });
    EXPECT_EQ(ended.listed.size(), 3U) << "the root and two folders";
}

TEST_F(KnownFoldersTest, MissingFoldersCostNoCall) {
    PutFolder(temp_ / "ODF\\Ships\\deeper");
    PutFile(temp_ / "ODF\\Ships\\fighter.odf", "x");
    PutFile(temp_ / "Textures", "a file");
    PutFile(temp_ / "ODF\\other", "a file");
    const CountingFileSystem files(*disk_);

    EXPECT_EQ(CountKnownFiles(files, temp_.Path() + "\\"), 3U)
        << "the ship and the two files that have names of folders";
    EXPECT_EQ(files.listed.size(), 3U) << "the folder itself, ODF and Ships";
    EXPECT_TRUE(files.listed.contains(temp_.Path() + "\\ODF\\Ships")) << "in stored spelling";
    EXPECT_EQ(CountFilesInFolder(files, temp_ / "ODF"), 1U);
    EXPECT_EQ(CountFilesInFolder(files, temp_ / "missing"), 0U);
    EXPECT_EQ(CountKnownFiles(files, temp_ / "missing"), 0U);
}

} // namespace
} // namespace quillbay::test
