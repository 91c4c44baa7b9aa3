#include "catalogue/FinderActions.h"

#include "support/DiskTest.h"
#include "support/FaultyFileSystem.h"

#include <algorithm>

namespace quillbay {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;
const Names kNames{"odf\\ships\\a.odf", "Textures\\Rgb\\b.tga", "c.txt"};

/// The destination lies on another volume.
class OtherVolume : public FaultyFileSystem {
public:
    using FaultyFileSystem::FaultyFileSystem;
    std::error_code Rename(std::string_view, std::string_view) override {
        return std::make_error_code(std::errc::cross_device_link);
    }
};

class FinderActions : public test::DiskTest {
protected:
    FinderActions() { Reset(); }
    void Reset() {
        for (const char* folder : {"game", "mod"})
            fs::remove_all(test::DiskPath(temp_ / folder));
        for (const std::string& name : kNames)
            test::PutFile(temp_ / ("game\\" + name), name);
    }
    bool Has(const std::string& path, const std::string& bytes) const {
        return fs::is_regular_file(test::DiskPath(temp_ / path)) && test::FileBytes(temp_ / path) == bytes;
    }
    FileActionResult Run(FileSystem& files, FileAction action, std::string_view to = "mod",
                         const Names& names = kNames) const {
        const auto plan = PlanFileAction(files, action, temp_ / "game", temp_ / to, names);
        return RunFileAction(files, plan, [](std::size_t, std::size_t) {});
    }
};

TEST_F(FinderActions, KeepTheSpellingThatIsThereAndTidyUp) {
    for (const FileAction action : {FileAction::Copy, FileAction::Move}) {
        Reset();
        test::PutFile(temp_ / "mod/ODF/Ships/A.odf", "old");
        test::PutFolder(temp_ / "mod/textures/RGB/c.txt");
        test::PutFolder(temp_ / "mod/bitmaps/ms");
        const bool moves = action == FileAction::Move;
        const auto result = Run(*disk_, action, "mod\\");
        EXPECT_EQ(result.done, 3U);
        EXPECT_TRUE(Has("mod/ODF/Ships/A.odf", moves ? "old" : kNames[0]));
        EXPECT_TRUE(Has("game/odf/ships/a.odf", kNames[0]));
        EXPECT_EQ(std::distance(fs::directory_iterator(test::DiskPath(temp_ / "mod/ODF/Ships")), {}), 1);
        EXPECT_TRUE(Has("mod/textures/RGB/b.tga", kNames[1]));
        EXPECT_EQ(Has("game/Textures/Rgb/b.tga", kNames[1]), !moves);
        EXPECT_FALSE(fs::exists(test::DiskPath(temp_ / "mod/bitmaps")));
    }
}

TEST_F(FinderActions, LeaveTheGameAloneAsItsOwnDestination) {
    std::error_code noLinks;
    fs::create_directory_symlink(test::DiskPath(temp_ / "game"), test::DiskPath(temp_ / "link"), noLinks);
    for (const char* to : {"game", "GAME\\", "odf\\..\\Game", noLinks ? "game/" : "link"}) {
        for (const FileAction action : {FileAction::Copy, FileAction::Move})
            EXPECT_EQ(Run(*disk_, action, to).state, FileActionState::DestinationIsGame) << to;
        for (const std::string& name : kNames)
            EXPECT_TRUE(Has("game\\" + name, name)) << to;
    }
}

TEST_F(FinderActions, SkipWhatIsGone) {
    const auto result = Run(*disk_, FileAction::Delete, "", {"odf\\gone", "unknown\\c.txt", kNames[0]});
    EXPECT_EQ(result.failed, (Names{"odf\\gone", "unknown\\c.txt"}));
    EXPECT_EQ(result.firstError, std::errc::no_such_file_or_directory);
    EXPECT_TRUE(Has("game/c.txt", kNames[2]));
    EXPECT_FALSE(Has("game/odf/ships/a.odf", kNames[0]));
}

TEST_F(FinderActions, LoseNothingWhateverFails) {
    using Fault = FaultyFileSystem::Fault;
    OtherVolume other(*disk_);
    FaultyFileSystem same(*disk_);
    for (FaultyFileSystem* files : {&same, static_cast<FaultyFileSystem*>(&other)}) {
        for (const FileAction action : {FileAction::Copy, FileAction::Move}) {
            for (const Fault fault : {Fault::Fail, Fault::EndBefore, Fault::EndTempHalf, Fault::EndAfter}) {
                for (std::size_t number = 1;; number += QUILLBAY_SWEEP_STRIDE) {
                    Reset();
                    files->Arm(number, fault);
                    const auto result = Run(*files, action);
                    for (const std::string& name : kNames) {
                        const bool inGame = Has("game\\" + name, name);
                        const bool inMod = Has("mod\\" + name, name);
                        EXPECT_TRUE(action == FileAction::Copy ? inGame : inGame || inMod);
                        if (fault != Fault::Fail || result.state != FileActionState::Ready) continue;
                        const bool failed = std::ranges::find(result.failed, name) != result.failed.end();
                        EXPECT_TRUE(failed ? inGame : inMod && inGame == (action == FileAction::Copy));
                    }
                    if (files->Trace().size() < number) break;
                }
            }
        }
    }
}

} // namespace
} // namespace quillbay
