#include "library/ModRemoval.h"
#include "library/ModSubfolders.h"
#include "platform/FileSystemWrapper.h"
#include "support/DiskTest.h"

#include <filesystem>

namespace quillbay::test {
namespace {

namespace fs = std::filesystem;

class PosixModRemovalTest : public DiskTest {
protected:
    PosixModRemovalTest() {
        PutFile(temp_ / "game\\odf\\ships\\a.odf", "game's own");
        PutFolder(temp_ / "game\\odf\\weapons\\Pulse");
        PutFile(temp_ / "mods\\M\\Sod\\mod.sod", "mod");
        PutFile(temp_ / "mods\\M\\sounds\\mod.wav", "mod");
        Link("game/odf", "mods/M/ODF");
        Link("game/odf/ships/a.odf", "mods/M/Sod/a.sod");
    }
    void Link(const char* target, const char* name) const {
        fs::create_symlink(DiskPath(temp_ / target), DiskPath(temp_ / name));
    }
    void ExpectGameWhole() const {
        EXPECT_EQ(FileBytes(temp_ / "game\\odf\\ships\\a.odf"), "game's own");
        EXPECT_TRUE(fs::exists(DiskPath(temp_ / "game\\odf\\weapons\\Pulse")));
        EXPECT_EQ(disk_->List(temp_ / "game\\odf", Detail::Names)->size(), 2U);
    }

    std::vector<std::size_t> shown_;
    const RemovalProgress progress_ = [this](std::size_t done, std::size_t total) {
        EXPECT_EQ(total, 3U);
        shown_.push_back(done);
    };
};

TEST_F(PosixModRemovalTest, NeverLeavesTheModsFolder) {
    EXPECT_FALSE(RemoveModFolder(*disk_, temp_ / "mods\\M", progress_));
    EXPECT_EQ(shown_, (std::vector<std::size_t>{1, 2, 3}));
    Link("game", "mods/Linked");
    EXPECT_FALSE(RemoveModFolder(*disk_, temp_ / "mods\\Linked", progress_));
    EXPECT_TRUE(disk_->List(temp_ / "mods", Detail::Names)->empty());
    ExpectGameWhole();
}

TEST_F(PosixModRemovalTest, AFileThatStaysIsLeftToTheTree) {
    // One that hides nothing of the removal but single files.
    class Stubborn : public FileSystemWrapper {
    public:
        using FileSystemWrapper::FileSystemWrapper;
        std::error_code RemoveFile(std::string_view) override {
            return std::make_error_code(std::errc::io_error);
        }
    } files(*disk_);
    EXPECT_FALSE(RemoveModFolder(files, temp_ / "mods\\M", progress_));
    EXPECT_FALSE(fs::exists(DiskPath(temp_ / "mods\\M")));
    ExpectGameWhole();
}

TEST_F(PosixModRemovalTest, SubfoldersComeAndGoInsideTheModOnly) {
    PutFile(temp_ / "mods\\M\\bitmaps", "a file in the way");
    const auto failure = MakeSubfolders(*disk_, temp_ / "mods\\M");
    EXPECT_EQ(failure.path, (temp_ / "mods\\M\\bitmaps\\"));
    EXPECT_TRUE(fs::exists(DiskPath(temp_ / "mods\\M\\Textures\\Rgb")));
    RemoveSubfolders(*disk_, temp_ / "mods\\M");
    EXPECT_EQ(disk_->List(temp_ / "mods\\M", Detail::Names)->size(), 4U);
    EXPECT_EQ(FileBytes(temp_ / "mods\\M\\sounds\\mod.wav"), "mod");
    ExpectGameWhole();
}

TEST_F(PosixModRemovalTest, SaysWhatGoesWithTheMod) {
    PutFolder(temp_ / "mods\\M\\Addon\\X\\Backup");
    Link("mods/M", "mods/Linked");
    const std::string mods = temp_ / "mods";
    const auto rows = ScanModLibrary(*disk_, mods);
    const auto state = [&](const char* mod, const std::string& game) {
        return CheckRemoval(*disk_, game, mods, rows, {mod});
    };
    EXPECT_EQ(state("M", temp_ / "game"), RemovalState::LosesBackup);
    EXPECT_EQ(state("M\\Addon\\X", temp_ / "game"), RemovalState::LosesBackup);
    EXPECT_EQ(state("Linked", temp_ / "game"), RemovalState::Free);
    EXPECT_EQ(state("M", temp_ / "mods\\M\\Sod"), RemovalState::HoldsGame);
    EXPECT_EQ(state("Linked", temp_ / "mods\\M\\Sod"), RemovalState::Free);
}

} // namespace
} // namespace quillbay::test
