#include "library/ModRemoval.h"
#include "library/ModSubfolders.h"
#include "platform/FileSystemWrapper.h"
#include "support/DiskTest.h"

namespace quillbay::test {
namespace {

/// A mod into which a part of the game is linked.
class PosixModRemovalTest : public DiskTest {
protected:
    PosixModRemovalTest() {
        PutFile(temp_ / "game\\odf\\ships\\a.odf", "game's own");
        PutFolder(temp_ / "game\\odf\\weapons\\Pulse");
        PutFile(temp_ / "mods\\M\\Sod\\mod.sod", "mod");
        Link("game/odf", "mods/M/ODF");
        Link("game/odf/ships/a.odf", "mods/M/Sod/a.sod");
        Link("game", "mods/Linked");
    }
    ~PosixModRemovalTest() override {
        EXPECT_EQ(FileBytes(temp_ / "game\\odf\\ships\\a.odf"), "game's own");
        EXPECT_TRUE(disk_->Stat(temp_ / "game\\odf\\weapons\\Pulse"));
        EXPECT_EQ(disk_->List(temp_ / "game\\odf", Detail::Names)->size(), 2U);
    }
    void Link(const char* target, const char* name) const {
        std::filesystem::create_symlink(DiskPath(temp_ / target), DiskPath(temp_ / name));
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
    std::vector<std::size_t> shown;
    for (const char* mod : {"mods\\M", "mods\\Linked"})
        EXPECT_FALSE(RemoveModFolder(files, temp_ / mod, [&](std::size_t done, std::size_t total) {
            shown.insert(shown.end(), {done, total});
        }));
    EXPECT_EQ(shown, (std::vector<std::size_t>{1, 2, 2, 2}));
    EXPECT_TRUE(disk_->List(temp_ / "mods", Detail::Names)->empty());
}

TEST_F(PosixModRemovalTest, SubfoldersComeAndGoInsideTheModOnly) {
    PutFile(temp_ / "mods\\M\\bitmaps", "a file in the way");
    EXPECT_EQ(MakeSubfolders(*disk_, temp_ / "mods\\M").path, temp_ / "mods\\M\\bitmaps\\");
    EXPECT_TRUE(disk_->Stat(temp_ / "mods\\M\\Textures\\Rgb"));
    RemoveSubfolders(*disk_, temp_ / "mods\\M");
    EXPECT_EQ(disk_->List(temp_ / "mods\\M", Detail::Names)->size(), 3U);
}

TEST_F(PosixModRemovalTest, SaysWhatGoesWithTheMod) {
    PutFolder(temp_ / "mods\\M\\Addon\\X\\Backup");
    const auto state = [&](const char* mod, const char* game) {
        const auto rows = ScanModLibrary(*disk_, temp_ / "mods");
        return CheckRemoval(*disk_, temp_ / game, temp_ / "mods", rows, {mod});
    };
    EXPECT_EQ(state("M", "game"), RemovalState::LosesBackup);
    EXPECT_EQ(state("M\\Addon\\X", "game"), RemovalState::LosesBackup);
    EXPECT_EQ(state("M", "mods\\M\\Sod"), RemovalState::HoldsGame);
    EXPECT_EQ(state("Linked", "game"), RemovalState::Free);
}

} // namespace
} // namespace quillbay::test
