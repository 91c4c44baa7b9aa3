#include "catalogue/FinderActions.h"

#include "support/FaultyFileSystem.h"
#include "support/TempFolder.h"

#include <algorithm>

namespace quillbay {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;
const Names kNames{"odf\\ships\\a.odf", "Textures\\Rgb\\b.tga", "c.txt"};

class FinderActions : public test::DiskTest {
protected:
    FinderActions() { Reset(); }
    /// A game in which every file holds its name, and no destination.
    void Reset() const {
        fs::remove_all(test::DiskPath(temp_ / "mod"));
        for (const std::string& name : kNames)
            test::PutFile(temp_ / ("game\\" + name), name);
    }
    bool Exists(const std::string& path) const { return fs::exists(test::DiskPath(temp_ / path)); }
    bool Has(const std::string& folder, const std::string& name) const {
        return Exists(folder + name) && test::FileBytes(temp_ / (folder + name)) == name;
    }
    FileActionResult Run(FileSystem& files, FileAction action, std::string_view to) const {
        return RunFileAction(files,
                             PlanFileAction(files, action, temp_ / "game", temp_ / to, kNames, nullptr),
                             [](std::size_t, std::size_t) {});
    }
};

TEST_F(FinderActions, UseTheSpellingThatIsThereAndTidyUp) {
    for (const FileAction action : {FileAction::Move, FileAction::Copy}) {
        Reset();
        test::PutFile(temp_ / "mod/ODF/Ships/A.odf", "old");
        test::PutFolder(temp_ / "mod/C.TXT");
        test::PutFolder(temp_ / "mod/bitmaps/ms");
        const bool moves = action == FileAction::Move;
        const FileActionResult result = Run(*disk_, action, "mod\\");
        EXPECT_EQ(result.failed, Names{"c.txt"});
        EXPECT_EQ(result.done, moves ? 1U : 2U) << "a move counts no file that stays";
        EXPECT_EQ(test::FileBytes(temp_ / "mod/ODF/Ships/A.odf"), moves ? "old" : kNames[0]);
        EXPECT_EQ(std::distance(fs::directory_iterator(test::DiskPath(temp_ / "mod/ODF/Ships")), {}), 1);
        EXPECT_TRUE(Has("game\\", kNames[0]) && Has("mod\\", kNames[1]));
        EXPECT_EQ(Has("game\\", kNames[1]), !moves);
        EXPECT_FALSE(Exists("mod/bitmaps"));
    }
}

TEST_F(FinderActions, LoseNothingWhateverFails) {
    using Fault = FaultyFileSystem::Fault;
    FaultyFileSystem other(*disk_); // as if the destination were on another volume
    other.hook = [](auto operation, auto, auto) {
        return std::make_error_code(operation == "Rename" ? std::errc::cross_device_link : std::errc());
    };
    FaultyFileSystem same(*disk_);
    const auto check = [&](FaultyFileSystem& files, FileAction action) {
        Reset();
        Run(files, action, "mod");
        const auto meet = [&](std::size_t number, Fault fault) {
            Reset();
            files.Arm(number, fault);
            const auto result = Run(files, action, "mod");
            for (const std::string& name : kNames) {
                const bool inGame = Has("game\\", name), inMod = Has("mod\\", name);
                EXPECT_TRUE(inGame || (inMod && action == FileAction::Move));
                if (fault != Fault::Fail || result.refusal) continue;
                const bool failed = std::ranges::count(result.failed, name) > 0;
                EXPECT_TRUE(failed ? inGame : inMod && inGame == (action == FileAction::Copy));
            }
        };
        SweepFaults(std::string(files.Trace()), {Fault::Fail, Fault::EndTempHalf, Fault::EndAfter}, meet);
    };
    check(same, FileAction::Copy);
    same.Arm(0, Fault::None);
    check(same, FileAction::Move);
    check(other, FileAction::Move);
}

TEST_F(FinderActions, LeaveTheGameAloneAsItsOwnDestination) {
    std::error_code noLinks;
    fs::create_directory_symlink(test::DiskPath(temp_ / "game"), test::DiskPath(temp_ / "link"), noLinks);
    for (const char* to : {"game", "GAME\\", noLinks ? "game/" : "link"})
        for (const FileAction action : {FileAction::Copy, FileAction::Move})
            EXPECT_EQ(Run(*disk_, action, to).refusal.value().cause,
                      FileActionRefusal::Cause::DestinationIsGame)
                << to;
    for (const std::string& name : kNames)
        EXPECT_TRUE(Has("game\\", name)) << name;
}

} // namespace
} // namespace quillbay
