#include "library/KnownFolders.h"

#include "common/PathText.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <map>

namespace quillbay {
namespace {

class CountingFileSystem : public FileSystemWrapper {
public:
    using FileSystemWrapper::FileSystemWrapper;

    Result<std::vector<DirEntry>> List(std::string_view folder, Detail detail) const override {
        ++listed[std::string(folder)];
        if (LastComponent(folder) == "bzn") return std::errc::permission_denied;
        return Base().List(folder, detail);
    }
    Result<FileInfo> Stat(std::string_view path) const override {
        ADD_FAILURE() << "a listing has answered this already: " << path;
        return Base().Stat(path);
    }

    mutable std::map<std::string, int> listed;
};

TEST(GameFolders, EveryParentComesBeforeItsChildren) {
    std::map<std::string_view, std::size_t> seen;
    for (std::size_t i = 0; i < kKnownFolderCount; ++i) {
        const std::string_view parent = Parent(GameFolders[i]);
        EXPECT_TRUE(parent.empty() || seen.contains(parent)) << GameFolders[i];
        EXPECT_TRUE(seen.emplace(WithoutFinalSeparators(GameFolders[i]), i).second) << GameFolders[i];
    }
    EXPECT_EQ(GameFolders[kKnownFolderCount], "");
}

TEST(KnownFolders, EveryPositionIsFoundAndListedOnce) {
    TempFolder temp;
    for (const std::string_view folder : GameFolders)
        temp.WriteFile(Join(folder, "file.txt"), "x");
    const CountingFileSystem files(temp.Files());
    std::vector<std::size_t> positions;

    const KnownFolders known =
        ListKnownFolders(files, temp.Path(), Detail::Names,
                         [&](const KnownFolders&, std::size_t position) { positions.push_back(position); });

    for (std::size_t i = 0; i < kGameFolderCount; ++i) {
        EXPECT_EQ(positions.at(i), i);
        if (GameFolders[i] == R"(bzn\)") {
            EXPECT_TRUE(known[i].empty()) << "cannot be listed";
            continue;
        }
        ASSERT_EQ(known[i].size(), 1U) << GameFolders[i];
        EXPECT_EQ(known[i][0].path, WithoutFinalSeparators(Join(temp.Path(), GameFolders[i])));
        EXPECT_EQ(CountPlainFiles(known[i]), 1U) << GameFolders[i];
    }
    EXPECT_EQ(files.listed.size(), kGameFolderCount);
    for (const auto& [folder, times] : files.listed)
        EXPECT_EQ(times, 1) << folder;
}

TEST(KnownFolders, MissingFoldersCostNoCall) {
    TempFolder temp;
    temp.MakeFolders("ODF\\Ships\\deeper");
    temp.WriteFile("ODF\\Ships\\fighter.odf", "x");
    temp.WriteFile("Textures", "a file");
    temp.WriteFile("ODF\\other", "a file");
    const CountingFileSystem files(temp.Files());
    std::size_t last = 0;

    const std::size_t total =
        CountKnownFiles(files, temp.Path() + "\\", [&](std::size_t, std::size_t sum) { last = sum; });

    EXPECT_EQ(total, 3U) << "the ship and the two files that have names of folders";
    EXPECT_EQ(last, 3U);
    EXPECT_EQ(files.listed.size(), 3U) << "the folder itself, ODF and Ships";
    EXPECT_TRUE(files.listed.contains(temp.Path() + "\\ODF\\Ships")) << "in stored spelling";
    EXPECT_EQ(CountFilesInFolder(files, temp.Path("ODF")), 1U);
    EXPECT_EQ(CountFilesInFolder(files, temp.Path("missing")), 0U);
    EXPECT_EQ(CountKnownFiles(files, temp.Path("missing")), 0U);
}

} // namespace
} // namespace quillbay
