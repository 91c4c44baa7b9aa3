#include "support/FaultyFileSystem.h"
#include "support/InstallLab.h"

#include <array>
#include <tuple>

namespace quillbay {
namespace {

namespace fs = std::filesystem;
using Fault = FaultyFileSystem::Fault;

enum class Job { Install, InstallAgain, Uninstall };

/// A mod with every kind of file, beside a mod installed earlier that shares some of them.
class Scenario {
public:
    explicit Scenario(Job job) : job_(job) {
        lab.Make({"game/odf/ships/cruiser.odf", "game/odf/ships/late.odf", "game/odf/ships/shared.odf",
                  "game/Sod/Hull.sod", "game/readme.txt", "game/sounds/untouched.wav",
                  "game/odf/ships/twice.odf", "mods/First/odf/ships/shared.odf",
                  "mods/First/odf/ships/added.odf", "mods/Mod/readme.txt", "mods/Mod/ModInfo.txt",
                  "mods/Mod/odf/ships/CRUISER.odf", "mods/Mod/odf/ships/shared.odf",
                  "mods/Mod/odf/ships/added.odf", "mods/Mod/sod/hull.sod", "mods/Mod/Textures/Rgb/new.tga",
                  "mods/Mod/bitmaps/multisetup/buttons/opponentbutts/deep.bmp"});
        for (const char* path : {"game/odf/ships/same.odf", "mods/Mod/odf/ships/same.odf"})
            lab.Put(path, "equal in game and mod");
        for (const char* path : {"mods/First/odf/ships/common.odf", "mods/Mod/odf/ships/common.odf"})
            lab.Put(path, "equal in both mods");
        lab.SetReadOnly("game/Sod/Hull.sod");
        lab.SetReadOnly("mods/Mod/sod/hull.sod");
        fs::permissions(lab.Native("game/readme.txt"), fs::perms(06755)); // also what runs as its owner
        fs::create_hard_link(lab.Native("game/odf/ships/twice.odf"),
                             lab.Native("mods/Mod/odf/ships/twice.odf"));
        lab.SetReadOnly("game/odf/ships/twice.odf");

        pristine_ = lab.State("game");
        EXPECT_EQ(lab.Install("First").outcome, InstallOutcome::Done);
        before_ = lab.State("game");
        if (job_ == Job::Install) {
            // Of an earlier run. It must not become a part of the backup, even if it cannot be removed.
            lab.Put("mods/Mod/~quillbay.bak/readme.txt", "stale");
            return;
        }
        EXPECT_EQ(lab.Install("Mod").outcome, InstallOutcome::Done);
        if (job_ == Job::Uninstall) return;
        lab.Make({"mods/Mod/odf/ships/late.odf", "mods/Mod/techtree/mod.tt"});
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
            EXPECT_EQ(Differences(before_, lab.State("game")), "");
        }
        if (sameAgain && (job_ != Job::Uninstall || lab.Installed("Mod"))) Run(lab.Files());
        if (lab.Installed("Mod"))
            EXPECT_FALSE(lab.Uninstall("Mod").BackupStays());
        else
            EXPECT_FALSE(sameAgain && job_ != Job::Uninstall) << "not installed after a second try";
        EXPECT_FALSE(lab.Installed("Mod"));
        EXPECT_EQ(Differences(before_, lab.State("game")), "");
        lab.Uninstall("First");
        EXPECT_EQ(Differences(pristine_, lab.State("game")), "");
        EXPECT_EQ(lab.SharedFiles(), "");
        for (const auto& [path, state] : lab.State("mods"))
            EXPECT_EQ(path.find("~quillbay"), std::string::npos) << path;
    }

    InstallLab lab;

private:
    Job job_;
    TreeState pristine_;
    TreeState before_;
};

class InstallSweepTest : public testing::TestWithParam<std::tuple<Job, bool>> {};

TEST_P(InstallSweepTest, EveryFailureAndEveryEndGivesTheGameBack) {
    const auto [job, hardLinks] = GetParam();
    /// Runs the job with a fault at one operation, and puts things right; the trace of its operations.
    const auto run = [job, hardLinks](std::size_t number, Fault fault, bool sameAgain) {
        constexpr std::array kErrors = {std::errc::no_space_on_device, std::errc::permission_denied,
                                        std::errc::io_error};
        Scenario scenario(job);
        FaultyFileSystem files(scenario.lab.Files());
        files.Arm(number, fault, kErrors[number % kErrors.size()]);
        if (!hardLinks) files.ForbidHardLinks();
        scenario.Run(files);
        scenario.Finish(sameAgain);
        return files.Trace();
    };
    const auto trace = run(0, Fault::None, false);
    ASSERT_GT(trace.size(), 40u);

    SweepFaults(trace,
                {Fault::Fail, Fault::EndBefore, Fault::EndTempHalf, Fault::EndTempWhole, Fault::EndSwapped,
                 Fault::EndAfter},
                [&](std::size_t number, Fault fault) {
                    for (const bool sameAgain : {true, false}) {
                        SCOPED_TRACE(sameAgain);
                        run(number, fault, sameAgain);
                    }
                });
}

INSTANTIATE_TEST_SUITE_P(Jobs, InstallSweepTest,
                         testing::Combine(testing::Values(Job::Install, Job::InstallAgain, Job::Uninstall),
                                          testing::Bool()));

} // namespace
} // namespace quillbay
