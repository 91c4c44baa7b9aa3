#include "driver/DrivenProgram.h"
#include "sample/Sample.h"
#include "support/InstallLab.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iterator>
#include <string>

/// The real program, killed in the middle of its work.
namespace quillbay {
namespace {

namespace fs = std::filesystem;

constexpr char kGame[] = "prefix/drive_c/Program Files/Brightgate/Tempest II";

class KilledProgramTest : public ::testing::Test {
protected:
    using Moment = std::function<bool()>;

    void SetUp() override {
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
        sample::MakeGame(sample::MakePrefix(folder_ / "prefix"), 1'000, 3'000'000);
        sample::MakeReplacingMod(lab_.Native(kGame), mod_);
        for (int number = 0; number < 50; ++number)
            lab_.Put("app/mods/Whole/odf/ships/new" + std::to_string(number) + ".odf", "new\r\n");
        fs::copy_file(QUILLBAY, folder_ / "app/quillbay");
        before_ = lab_.State(kGame);
        ASSERT_GT(before_.size(), 900U);
    }

    bool IsInstalled() const { return fs::exists(mod_ / "Backup"); }
    auto ModEntries() const { return std::distance(fs::directory_iterator(mod_), fs::directory_iterator()); }

    /// Chooses the mod, presses the button and answers the questions; the work has begun when this returns,
    /// or is about to.
    void Begin(DrivenProgram& program, const std::string& job) const {
        const bool installed = IsInstalled();
        program.Do("title Quillbay");
        program.Do("select lstMods|Whole");
        program.Do("click cmd" + job + "Mod");
        program.Do("answer " + job + " Whole mod?|Yes");
        if (job == "Install" && installed) program.Do("answer Continue installation?|Yes");
    }

    /// Runs the job to its end in a program of its own.
    void Finish(const std::string& job) const {
        DrivenProgram program(folder_ / "app/quillbay", folder_);
        Begin(program, job);
        program.Do("await cmd" + job + "Mod|text|" + job + " Mod");
    }

    /// Starts the job, kills the program at the first moment at which `reached` holds (or the job is over),
    /// and expects an untouched game where the mod does not count as installed. Then an installation follows
    /// where there is none, or when it is wanted again, and an uninstallation, which gives back everything.
    void KillAndGoBack(const std::string& job, const Moment& reached, bool installAgain) {
        {
            DrivenProgram program(folder_ / "app/quillbay", folder_);
            Begin(program, job);
            const auto patience = std::chrono::steady_clock::now() + std::chrono::minutes(1);
            while (!reached() && std::chrono::steady_clock::now() < patience) {
            }
            program.Kill();
        }
        halfDone_ += IsHalfDone() ? 1 : 0;
        // What the end left beside the mod may still share files with the game; the next job sweeps it.
        if (!IsInstalled()) {
            EXPECT_EQ(Differences(before_, lab_.State(kGame)), "");
        }
        if (!IsInstalled() || installAgain) Finish("Install");
        ASSERT_TRUE(IsInstalled());
        Finish("Uninstall");
        ASSERT_FALSE(IsInstalled());
        ASSERT_EQ(Differences(before_, lab_.State(kGame)), "");
        ASSERT_EQ(lab_.SharedFiles(), "");
    }

    bool IsReplaced(const std::string& file) const {
        std::error_code error;
        return fs::last_write_time(lab_.Native(kGame) / file, error) != before_.at(file).modified;
    }
    /// Of a game file that is neither among the first nor among the last that a job reaches.
    bool IsReplacedAt(double share) const {
        const auto number = static_cast<std::ptrdiff_t>(share * static_cast<double>(before_.size()));
        return IsReplaced(std::next(before_.begin(), number)->first);
    }
    /// True when some of the game's files are the mod's and some are not.
    bool IsHalfDone() const {
        std::size_t replaced = 0;
        for (const auto& [path, state] : before_)
            replaced += IsReplaced(path) ? 1 : 0;
        return replaced > 0 && replaced < before_.size();
    }

    InstallLab lab_;
    const fs::path folder_ = lab_.Native("");
    const fs::path mod_ = lab_.Native("app/mods/Whole");
    TreeState before_;
    int halfDone_ = 0; ///< how often the program was killed in the middle
};

TEST_F(KilledProgramTest, AnInstallationKilledAnywhereCanBeUndone) {
    const auto modEntries = ModEntries();
    const Moment moments[] = {
        [&] { return ModEntries() > modEntries; }, // the first thing is being saved
        [&] { return IsInstalled(); },
        [&] { return IsReplacedAt(0.1); },
        [&] { return IsReplacedAt(0.6); },
    };
    bool installAgain = false;
    for (const auto& moment : moments) {
        ASSERT_NO_FATAL_FAILURE(KillAndGoBack("Install", moment, installAgain)) << &moment - moments;
        installAgain = !installAgain;
    }
    EXPECT_GT(halfDone_, 0) << "the program was never killed in the middle";
}

TEST_F(KilledProgramTest, AnUninstallationKilledAnywhereCanBeFinished) {
    const Moment moments[] = {
        [&] { return !IsReplacedAt(0.1); },
        [&] { return !IsReplacedAt(0.6); },
        [&] { return !IsInstalled(); },
    };
    for (const auto& moment : moments) {
        Finish("Install");
        ASSERT_TRUE(IsReplacedAt(0.1));
        ASSERT_NO_FATAL_FAILURE(KillAndGoBack("Uninstall", moment, false)) << &moment - moments;
    }
    EXPECT_GT(halfDone_, 0) << "the program was never killed in the middle";
}

TEST_F(KilledProgramTest, ASecondProgramLeavesTheFirstAlone) {
    DrivenProgram first(folder_ / "app/quillbay", folder_);
    first.Do("title Quillbay");
    DrivenProgram second(folder_ / "app/quillbay", folder_);
    EXPECT_EQ(second.Do("answer Warning!|OK"),
              "Warning: Previous instance of application detected. Aborting load.");
    second.Wait();
    first.Do("select lstMods|Whole");
}

} // namespace
} // namespace quillbay
