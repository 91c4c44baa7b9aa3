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
    std::vector<std::size_t> positions;

    const KnownFolders known =
        ListKnownFolders(files, temp_.Path(), Detail::Names,
                         [&](const KnownFolders&, std::size_t position) { positions.push_back(position); });

    for (std::size_t i = 0; i < kGameFolderCount; ++i) {
        EXPECT_EQ(positions.at(i), i);
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
}

TEST_F(KnownFoldersTest, MissingFoldersCostNoCall) {
    PutFolder(temp_ / "ODF\\Ships\\deeper");
    PutFile(temp_ / "ODF\\Ships\\fighter.odf", "x");
    PutFile(temp_ / "Textures", "a file");
    PutFile(temp_ / "ODF\\other", "a file");
    const CountingFileSystem files(*disk_);
    std::size_t last = 0;

    const std::size_t total =
        CountKnownFiles(files, temp_.Path() + "\\", [&](std::size_t, std::size_t sum) { last = sum; });

    EXPECT_EQ(total, 3U) << "the ship and the two files that have names of folders";
    EXPECT_EQ(last, 3U);
    EXPECT_EQ(files.listed.size(), 3U) << "the folder itself, ODF and Ships";
    EXPECT_TRUE(files.listed.contains(temp_.Path() + "\\ODF\\Ships")) << "in stored spelling";
    EXPECT_EQ(CountFilesInFolder(files, temp_ / "ODF"), 1U);
    EXPECT_EQ(CountFilesInFolder(files, temp_ / "missing"), 0U);
    EXPECT_EQ(CountKnownFiles(files, temp_ / "missing"), 0U);
}

} // namespace
} // namespace quillbay::test
