#include "driver/DrivenProgram.h"
#include "sample/Sample.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <sys/stat.h>

/// The real program, killed in the middle of its work.
namespace quillbay {

namespace {

namespace fs = std::filesystem;

struct FileState {
    std::string bytes;
    timespec modified{};
    mode_t mode = 0;
    nlink_t names = 0;

    bool operator==(const FileState& other) const {
        return bytes == other.bytes && modified.tv_sec == other.modified.tv_sec &&
               modified.tv_nsec == other.modified.tv_nsec && mode == other.mode;
    }
};

std::map<std::string, FileState> ReadGame(const fs::path& game) {
    std::map<std::string, FileState> files;
    for (const auto& entry : fs::recursive_directory_iterator(game)) {
        if (!entry.is_directory()) {
            struct stat status {};
            EXPECT_EQ(::stat(entry.path().c_str(), &status), 0);
            std::ifstream stream(entry.path(), std::ios::binary);
            std::ostringstream bytes;
            bytes << stream.rdbuf();
            files[fs::relative(entry.path(), game)] = {bytes.str(), status.st_mtim, status.st_mode,
                                                       status.st_nlink};
        }
    }
    return files;
}

class KilledProgramTest : public ::testing::Test {
protected:
    void SetUp() override {
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
        std::string pattern = fs::temp_directory_path() / "quillbay-kill-XXXXXX";
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        folder_ = pattern;
        game_ = sample::MakePrefix(folder_ / "prefix");
        sample::MakeGame(game_, 1'000, 3'000'000);
        mod_ = folder_ / "app/mods/Whole";
        sample::MakeReplacingMod(game_, mod_);
        for (int number = 0; number < 50; ++number) {
            std::ofstream(mod_ / "odf/ships" / ("new" + std::to_string(number) + ".odf")) << "new\r\n";
        }
        fs::copy_file(QUILLBAY, folder_ / "app/quillbay");
        before_ = ReadGame(game_);
        ASSERT_GT(before_.size(), 900U);
    }
    void TearDown() override { fs::remove_all(folder_); }

    bool IsInstalled() const { return fs::exists(mod_ / "Backup"); }

    /// Chooses the mod, presses the button and answers the questions; the work has begun when this returns,
    /// or is about to.
    void Begin(DrivenProgram& program, const std::string& job) const {
        const bool installed = IsInstalled();
        program.Do("title Quillbay");
        program.Do("select lstMods|Whole");
        program.Do("click cmd" + job + "Mod");
        program.Do("answer " + job + " Whole mod?|Yes");
        if (job == "Install" && installed) {
            program.Do("answer Continue installation?|Yes");
        }
    }

    /// Runs the job to its end in a program of its own.
    void Finish(const std::string& job) const {
        DrivenProgram program(folder_ / "app/quillbay", folder_);
        Begin(program, job);
        program.Do("await cmd" + job + "Mod|text|" + job + " Mod");
    }

    /// Starts the job and kills the program at the first moment at which `reached` holds (or the job is
    /// over).
    void KillDuring(const std::string& job, const std::function<bool()>& reached) const {
        DrivenProgram program(folder_ / "app/quillbay", folder_);
        Begin(program, job);
        const auto patience = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        while (!reached() && std::chrono::steady_clock::now() < patience) {
        }
        program.Kill();
    }

    bool IsReplaced(const std::string& file) const {
        struct stat status {};
        if (::stat((game_ / file).c_str(), &status) != 0) {
            return true;
        }
        const timespec& old = before_.at(file).modified;
        return status.st_mtim.tv_sec != old.tv_sec || status.st_mtim.tv_nsec != old.tv_nsec;
    }

    /// A game file that is neither among the first nor among the last that a job reaches.
    std::string FileAt(double share) const {
        auto place = before_.begin();
        std::advance(place, static_cast<int>(share * static_cast<double>(before_.size())));
        return place->first;
    }

    /// True when some of the game's files are the mod's and some are not.
    bool IsHalfDone() const {
        std::size_t replaced = 0;
        for (const auto& [path, state] : before_) {
            replaced += IsReplaced(path) ? 1 : 0;
        }
        return replaced > 0 && replaced < before_.size();
    }

    /// Where a mod does not count as installed, what an end left beside it may still share files with the
    /// game; the next job sweeps it.
    void ExpectGameAsBefore(bool shared = false) const {
        const auto after = ReadGame(game_);
        ASSERT_EQ(after.size(), before_.size());
        for (const auto& [path, state] : before_) {
            ASSERT_TRUE(after.contains(path)) << path;
            ASSERT_TRUE(after.at(path) == state) << path;
            ASSERT_TRUE(shared || after.at(path).names == 1) << path;
        }
    }

    fs::path folder_;
    fs::path game_;
    fs::path mod_;
    std::map<std::string, FileState> before_;
};

TEST_F(KilledProgramTest, AnInstallationKilledAnywhereCanBeUndone) {
    const std::size_t modEntries =
        static_cast<std::size_t>(std::distance(fs::directory_iterator(mod_), fs::directory_iterator()));
    const std::function<bool()> moments[] = {
        [&] { // the first thing is being saved
            return static_cast<std::size_t>(
                       std::distance(fs::directory_iterator(mod_), fs::directory_iterator())) > modEntries;
        },
        [&] { return IsInstalled(); },
        [&] { return IsReplaced(FileAt(0.1)); },
        [&] { return IsReplaced(FileAt(0.6)); },
    };
    bool installAgain = false;
    int halfDone = 0;
    for (const auto& moment : moments) {
        KillDuring("Install", moment);
        halfDone += IsHalfDone() ? 1 : 0;
        if (installAgain || !IsInstalled()) {
            if (!IsInstalled()) {
                ExpectGameAsBefore(true);
            }
            Finish("Install");
        }
        installAgain = !installAgain;
        ASSERT_TRUE(IsInstalled());
        Finish("Uninstall");
        ASSERT_FALSE(IsInstalled());
        ExpectGameAsBefore();
    }
    EXPECT_GT(halfDone, 0) << "the program was never killed in the middle";
}

TEST_F(KilledProgramTest, AnUninstallationKilledAnywhereCanBeFinished) {
    const std::function<bool()> moments[] = {
        [&] { return !IsReplaced(FileAt(0.1)); },
        [&] { return !IsReplaced(FileAt(0.6)); },
        [&] { return !IsInstalled(); },
    };
    int halfDone = 0;
    for (const auto& moment : moments) {
        Finish("Install");
        ASSERT_TRUE(IsReplaced(FileAt(0.1)));
        KillDuring("Uninstall", moment);
        halfDone += IsHalfDone() ? 1 : 0;
        if (!IsInstalled()) {
            ExpectGameAsBefore(true);
            Finish("Install");
        }
        Finish("Uninstall");
        ASSERT_FALSE(IsInstalled());
        ExpectGameAsBefore();
    }
    EXPECT_GT(halfDone, 0) << "the program was never killed in the middle";
}

TEST_F(KilledProgramTest, ASecondProgramLeavesTheFirstAlone) {
    DrivenProgram first(folder_ / "app/quillbay", folder_);
    first.Do("title Quillbay");
    DrivenProgram second(folder_ / "app/quillbay", folder_);
    EXPECT_EQ(second.Do("answer Warning!|OK"),
              "Warning: Previous instance of application detected. Aborting load.");
    second.Wait();
    first.Do("select lstMods|Whole");
    ExpectGameAsBefore();
}

} // namespace

} // namespace quillbay
