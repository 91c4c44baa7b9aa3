#include "library/FindEntry.h"
#include "library/ModRemoval.h"
#include "library/ModSubfolders.h"
#include "library/OwnTree.h"
#include "platform/FileSystemWrapper.h"
#include "support/DiskTest.h"

namespace quillbay::test {
namespace {

/// A mod into which a part of the game is linked.
class PosixModRemovalTest : public DiskTest {
protected:
    PosixModRemovalTest() {
        PutFile(temp_ / "game\\odf\\ships\\a.odf", "game's own");
        PutFile(temp_ / "mods\\M\\Sod\\mod.sod", "mod");
        for (const auto& [target, name] : {std::pair{"game/odf", "M/ODF"}, {"game", "Linked"}})
            std::filesystem::create_symlink(DiskPath(temp_ / target), DiskPath(temp_ / "mods") / name);
    }
    ~PosixModRemovalTest() override {
        EXPECT_EQ(FileBytes(temp_ / "game\\odf\\ships\\a.odf"), "game's own");
        EXPECT_EQ(disk_->List(temp_ / "game\\odf", Detail::Names)->size(), 1U);
    }
};

TEST_F(PosixModRemovalTest, NeverLeavesTheModAndLeavesStubbornFilesToTheTree) {
    class Stubborn : public FileSystemWrapper {
    public:
        using FileSystemWrapper::FileSystemWrapper;
        std::error_code RemoveFile(std::string_view file) override {
            return file.ends_with(".sod") ? std::make_error_code(std::errc::io_error)
                                          : Base().RemoveFile(file);
        }
    } files(*disk_);
    const auto expectOne = [](std::size_t done, std::size_t total) { EXPECT_EQ(done + total, 2U); };
    for (const char* mod : {"mods\\M", "mods\\Linked"})
        EXPECT_FALSE(RemoveModFolder(files, temp_ / mod, expectOne));
    EXPECT_TRUE(disk_->List(temp_ / "mods", Detail::Names)->empty());
}

TEST_F(PosixModRemovalTest, SubfoldersComeAndGoInsideTheModOnly) {
    PutFile(temp_ / "mods\\M\\bitmaps", "a file in the way");
    const SubfolderResult result = MakeSubfolders(*disk_, temp_ / "mods\\M");
    EXPECT_EQ(result.failed, temp_ / "mods\\M\\bitmaps\\");
    EXPECT_TRUE(disk_->Stat(temp_ / "mods\\M\\Textures\\Rgb"));
    EXPECT_EQ(RemoveSubfolders(*disk_, temp_ / "mods\\M"), result.made);
    EXPECT_EQ(disk_->List(temp_ / "mods\\M", Detail::Names)->size(), 3U);
}

TEST_F(PosixModRemovalTest, WhatIsMountedIsNoPartOfATree) {
    const auto all = disk_->List("/", Detail::Names);
    const auto own = OwnTree(*disk_).List("/", Detail::Names);
    EXPECT_TRUE(FindEntry(*all, "proc", EntryKind::Folder));
    EXPECT_FALSE(FindEntry(*own, "proc", EntryKind::Folder));
    EXPECT_TRUE(FindEntry(*own, "etc", EntryKind::Folder));
}

} // namespace
} // namespace quillbay::test
