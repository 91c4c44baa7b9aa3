#include "support/FaultyFileSystem.h"
#include "support/InstallLab.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <tuple>

namespace quillbay {
namespace {

using Fault = FaultyFileSystem::Fault;

enum class Job { Install, InstallAgain, Uninstall };

/// A mod with every kind of file, beside a mod installed earlier that shares some of them.
class Scenario {
public:
    explicit Scenario(Job job) : job_(job) {
        lab.Put("game/Tempest2.exe", "program");
        lab.Put("game/odf/ships/cruiser.odf", "game cruiser");
        lab.Put("game/odf/ships/late.odf", "game late");
        lab.Put("game/odf/ships/same.odf", "equal in game and mod");
        lab.Put("game/odf/ships/shared.odf", "game shared");
        lab.Put("game/Sod/Hull.sod", "game hull");
        lab.SetReadOnly("game/Sod/Hull.sod");
        lab.Put("game/readme.txt", "game readme");
        lab.Put("game/sounds/untouched.wav", "game sound");

        lab.Put("mods/First/odf/ships/shared.odf", "first shared");
        lab.Put("mods/First/odf/ships/added.odf", "first added");
        lab.Put("mods/First/odf/ships/common.odf", "equal in both mods");

        lab.Put("mods/Mod/readme.txt", "mod readme");
        lab.Put("mods/Mod/ModInfo.txt", "Author: nobody");
        lab.Put("mods/Mod/odf/ships/CRUISER.odf", "mod cruiser, longer than that of the game");
        lab.Put("mods/Mod/odf/ships/same.odf", "equal in game and mod");
        lab.Put("mods/Mod/odf/ships/shared.odf", "mod shared");
        lab.Put("mods/Mod/odf/ships/added.odf", "mod added");
        lab.Put("mods/Mod/odf/ships/common.odf", "equal in both mods");
        lab.Put("mods/Mod/sod/hull.sod", "mod hull");
        lab.SetReadOnly("mods/Mod/sod/hull.sod");
        lab.Put("mods/Mod/Textures/Rgb/new.tga", "mod texture");
        lab.Put("mods/Mod/bitmaps/multisetup/buttons/opponentbutts/deep.bmp", "mod bitmap");

        pristine = lab.State("game");
        EXPECT_EQ(lab.Install("First").outcome, InstallOutcome::Done);
        before = lab.State("game");
        if (job_ == Job::Install) {
            // Of an earlier run. It must not become a part of the backup, even if it cannot be removed.
            lab.Put("mods/Mod/~quillbay.bak/readme.txt", "stale");
            return;
        }
        EXPECT_EQ(lab.Install("Mod").outcome, InstallOutcome::Done);
        if (job_ == Job::Uninstall) return;
        lab.Put("mods/Mod/odf/ships/late.odf", "mod late");
        lab.Put("mods/Mod/techtree/mod.tt", "mod tree");
    }

    void Run(FileSystem& files) {
        if (job_ == Job::Uninstall)
            lab.Uninstall(files, "Mod");
        else
            lab.Install(files, "Mod");
    }

    /// What a player does after the program has ended in the middle: the same again, or straight back.
    void Finish(bool sameAgain) {
        if (!lab.Installed("Mod")) {
            EXPECT_EQ(Differences(before, lab.State("game")), "");
        }
        if (sameAgain && (job_ != Job::Uninstall || lab.Installed("Mod"))) Run(lab.Files());
        if (lab.Installed("Mod")) {
            const auto result = lab.Uninstall("Mod");
            EXPECT_FALSE(result.BackupStays());
        } else if (sameAgain && job_ != Job::Uninstall) {
            ADD_FAILURE() << "not installed after a second try";
        }
        EXPECT_FALSE(lab.Installed("Mod"));
        EXPECT_EQ(Differences(before, lab.State("game")), "");
        lab.Uninstall("First");
        EXPECT_EQ(Differences(pristine, lab.State("game")), "");
        EXPECT_EQ(lab.SharedFiles(), "");
        for (const auto& [path, state] : lab.State("mods"))
            EXPECT_EQ(path.find("~quillbay"), std::string::npos) << path;
    }

    InstallLab lab;
    TreeState pristine;
    TreeState before;

private:
    Job job_;
};

class InstallSweepTest : public testing::TestWithParam<std::tuple<Job, bool>> {};

TEST_P(InstallSweepTest, EveryFailureAndEveryEndGivesTheGameBack) {
    const auto [job, hardLinks] = GetParam();
    const auto arm = [&, links = hardLinks](FaultyFileSystem& files, std::size_t number, Fault fault) {
        constexpr std::array kErrors = {std::errc::no_space_on_device, std::errc::permission_denied,
                                        std::errc::io_error};
        files.Arm(number, fault, kErrors[number % kErrors.size()]);
        if (!links) files.ForbidHardLinks();
    };

    Scenario whole(job);
    FaultyFileSystem counting(whole.lab.Files());
    arm(counting, 0, Fault::None);
    whole.Run(counting);
    const auto trace = counting.Trace();
    ASSERT_GT(trace.size(), 40u);
    whole.Finish(false);

    std::size_t met = 0;
    for (std::size_t number = 1; number <= trace.size(); ++number) {
        const char kind = trace[number - 1];
        for (const auto fault : {Fault::Fail, Fault::EndBefore, Fault::EndTempHalf, Fault::EndTempWhole,
                                 Fault::EndSwapped, Fault::EndAfter}) {
            if (fault == Fault::EndTempHalf && kind == '.') continue;
            if ((fault == Fault::EndTempWhole || fault == Fault::EndSwapped) && kind != 'c') continue;
            for (const bool sameAgain : {true, false}) {
                if (++met % QUILLBAY_SWEEP_STRIDE != 0) continue;
                SCOPED_TRACE("operation " + std::to_string(number) + " of " + std::to_string(trace.size()) +
                             ", fault " + std::to_string(static_cast<int>(fault)) +
                             (sameAgain ? ", then again" : ", then back"));
                Scenario scenario(job);
                FaultyFileSystem files(scenario.lab.Files());
                arm(files, number, fault);
                scenario.Run(files);
                scenario.Finish(sameAgain);
                if (HasFailure()) return;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Jobs, InstallSweepTest,
                         testing::Combine(testing::Values(Job::Install, Job::InstallAgain, Job::Uninstall),
                                          testing::Bool()));

} // namespace
} // namespace quillbay
