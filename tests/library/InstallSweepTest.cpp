#include "support/FaultyFileSystem.h"
#include "support/InstallLab.h"

#include <random>
#include <set>
#include <tuple>
#include <utility>

namespace quillbay::test {
namespace {

namespace fs = std::filesystem;
using Fault = FaultyFileSystem::Fault;

/// What is done with the mod; beside it stands one that was installed before, or in the last three after it.
enum class Job { Install, InstallAgain, Uninstall, InstallEarlierAgain, UninstallEarlier, UninstallCovered };

/// A mod with every kind of file, beside a mod installed earlier that shares some of them.
class Scenario {
public:
    explicit Scenario(Job job) : job_(job) {
        lab.Make({"game/odf/ships/cruiser.odf", "game/odf/ships/late.odf", "game/odf/ships/shared.odf",
                  "game/Sod/Hull.sod", "game/readme.txt", "game/sounds/untouched.wav",
                  "mods/First/odf/ships/shared.odf", "mods/First/odf/ships/added.odf", "mods/Mod/readme.txt",
                  "mods/Mod/ModInfo.txt", "mods/Mod/odf/ships/CRUISER.odf", "mods/Mod/odf/ships/shared.odf",
                  "mods/Mod/odf/ships/added.odf", "mods/Mod/sod/hull.sod", "mods/Mod/Textures/Rgb/new.tga",
                  "mods/Mod/bitmaps/multisetup/buttons/opponentbutts/deep.bmp"});
        for (const char* path : {"game/odf/ships/same.odf", "mods/Mod/odf/ships/same.odf"})
            lab.Put(path, "equal in game and mod");
        for (const char* path : {"mods/First/odf/ships/common.odf", "mods/Mod/odf/ships/common.odf"})
            lab.Put(path, "equal in both mods");
        lab.SetReadOnly("game/Sod/Hull.sod");
        lab.SetReadOnly("mods/Mod/sod/hull.sod");
        fs::permissions(lab.Native("game/readme.txt"), fs::perms(06755)); // also what runs as its owner

        pristine_ = lab.State("game");
        if (IsEarlier()) std::swap(mod_, other_);
        EXPECT_EQ(lab.Install("First").outcome, InstallOutcome::Done);
        before_ = lab.State("game");
        if (job_ == Job::Install) {
            // Of an earlier run. It must not become a part of the backup, even if it cannot be removed.
            lab.Put("mods/Mod/~quillbay.bak/readme.txt", "stale");
            return;
        }
        EXPECT_EQ(lab.Install("Mod").outcome, InstallOutcome::Done);
        // Bytes that are nowhere else.
        lab.Put("game/odf/ships/cruiser.odf", "the player's");
        if (job_ == Job::InstallAgain) lab.Make({"mods/Mod/odf/ships/late.odf", "mods/Mod/techtree/mod.tt"});
        if (job_ == Job::InstallEarlierAgain)
            lab.Make({"mods/First/odf/ships/late.odf", "mods/First/readme.txt"});
        if (job_ != Job::UninstallCovered) return;
        // Over the other mod's file, without saving it.
        lab.Make({"mods/First/readme.txt"});
        EXPECT_EQ(lab.Install("First").outcome, InstallOutcome::Done);
        std::swap(mod_, other_);
    }

    void Run(FileSystem& files) {
        if (job_ == Job::Install || job_ == Job::InstallAgain || job_ == Job::InstallEarlierAgain)
            lab.Install(files, mod_);
        else
            lab.Uninstall(files, mod_);
    }

    /// What a player does after the program has ended in the middle: the same again, or straight back.
    void Finish(bool sameAgain) {
        const bool installs = job_ == Job::Install || job_ == Job::InstallAgain;
        if (job_ == Job::Install && !lab.Installed(mod_)) {
            EXPECT_EQ(Differences(before_, lab.State("game")), "");
        }
        if (sameAgain && (installs || lab.Installed(mod_))) Run(lab.Files());
        if (lab.Installed(mod_))
            EXPECT_FALSE(lab.Uninstall(mod_).BackupStays());
        else
            EXPECT_FALSE(sameAgain && installs) << "not installed after a second try";
        EXPECT_FALSE(lab.Installed(mod_));
        if (!IsEarlier()) {
            EXPECT_EQ(Differences(before_, lab.State("game")), "");
        }
        EXPECT_FALSE(lab.Uninstall(other_).BackupStays());
        EXPECT_EQ(Differences(pristine_, lab.State("game")), "");
        EXPECT_EQ(lab.SharedFiles(), "");
        bool isKept = job_ == Job::Install;
        for (const auto& [path, state] : lab.State("mods")) {
            EXPECT_EQ(path.find("~quillbay"), std::string::npos) << path;
            isKept = isKept || state.bytes == "the player's";
        }
        EXPECT_TRUE(isKept);
    }

    InstallLab lab;

private:
    bool IsEarlier() const { return job_ >= Job::InstallEarlierAgain; }

    Job job_;
    std::string mod_ = "Mod", other_ = "First";
    TreeState pristine_;
    TreeState before_;
};

class InstallSweepTest : public testing::TestWithParam<std::tuple<Job, bool>> {};

TEST_P(InstallSweepTest, EveryFailureAndEveryEndGivesTheGameBack) {
    const auto [job, isOneDisk] = GetParam();
    /// Runs the job with a fault at one operation, and puts things right; the trace of its operations.
    const auto run = [job, isOneDisk](std::size_t number, Fault fault, bool sameAgain) {
        constexpr std::array kErrors = {std::errc::no_space_on_device, std::errc::permission_denied,
                                        std::errc::io_error};
        Scenario scenario(job);
        FaultyFileSystem files(scenario.lab.Files());
        files.Arm(number, fault, kErrors[number % kErrors.size()]);
        files.hook = [&](auto operation, auto path, auto to) {
            // Only what a mod holds still may get lost in a power cut.
            const bool isMods = path.find("mods") != path.npos && path.find("ackup") == path.npos;
            EXPECT_TRUE(operation != "Copy" || isMods) << path;
            return isOneDisk ? std::error_code() : FaultyFileSystem::OnTwoDisks(operation, path, to);
        };
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

std::string NameOf(const testing::TestParamInfo<std::tuple<Job, bool>>& test) {
    constexpr std::array kJobs = {"Install",          "InstallAgain",    "Uninstall", "InstallEarlierAgain",
                                  "UninstallEarlier", "UninstallCovered"};
    const auto& [job, isOneDisk] = test.param;
    return std::string(kJobs[std::size_t(job)]) + (isOneDisk ? "" : "OnTwoDisks");
}

INSTANTIATE_TEST_SUITE_P(Jobs, InstallSweepTest,
                         testing::Combine(testing::Values(Job::Install, Job::InstallAgain, Job::Uninstall,
                                                          Job::InstallEarlierAgain, Job::UninstallEarlier,
                                                          Job::UninstallCovered),
                                          testing::Bool()),
                         NameOf);

namespace fs = std::filesystem;

const std::array<std::string, 3> kFiles = {"/odf/ships/x.odf", "/y.txt", "/Sod/z.sod"};

/// Random commands and events with two to four mods, all files of one size and many of one time.
class Story {
public:
    Story(unsigned seed, bool isEdited, bool isInterrupted)
        : isEdited_(isEdited), canBeLeftOver_(isInterrupted), isInterrupted_(isInterrupted), random_(seed),
          text_(std::to_string(seed) + ":") {
        mods_.resize(2 + Pick(3));
        std::ranges::shuffle(mods_, random_);
        for (const auto& file : kFiles) {
            if (Pick(3) > 0) Put("game" + file, std::string(1, "abc"[Pick(3)]));
            for (const auto& mod : mods_)
                if (Pick(4) > 0) ChangeMod(mod, file);
        }
        for (const auto& mod : mods_)
            lab_.Put("mods/" + mod + "/ModInfo.txt", "");
        before_ = lab_.State("game");
        for (const char* folder : {"game", "mods"})
            for (const auto& [path, bytes] : lab_.Read(folder))
                if (!bytes.empty()) text_ += " " + path + "=" + bytes;
        text_ += ";";
        Observe();
    }

    void Run() {
        for (auto steps = 4 + Pick(10); steps > 0 && !testing::Test::HasFatalFailure(); --steps)
            Step();
        isInterrupted_ = false;
        for (const auto& mod : mods_)
            if (lab_.Installed(mod)) Uninstall(mod);
        if (!isEdited_) {
            auto after = lab_.State("game");
            // Copies without their times cannot give them back.
            for (auto& [path, file] : after)
                if (isCopied_ && before_.contains(path)) file.modified = before_.at(path).modified;
            // A mod's record lets go of a file before another mod's command replaces it: when that ends in
            // between, the file stays.
            if (canBeLeftOver_)
                std::erase_if(after, [this](const auto& file) {
                    return !before_.contains(file.first) && modBytes_.contains(file.second.bytes);
                });
            ASSERT_EQ(Differences(before_, after), "") << text_;
        }
        // What an interrupted command has left beside a mod waits for the next one of that mod.
        if (!canBeLeftOver_) {
            ASSERT_EQ(lab_.SharedFiles(), "") << text_;
        }
    }

private:
    std::size_t Pick(std::size_t count) { return std::size_t(random_()) % count; }

    void Put(const std::string& path, const std::string& bytes) {
        lab_.Put(path, bytes);
        const auto hour = std::chrono::hours(Pick(4));
        if (hour.count() > 0) fs::last_write_time(lab_.Native(path), start_ - hour);
    }

    /// A new version of a file, which may be equal to one of another mod, of the game or an earlier one.
    void ChangeMod(const std::string& mod, const std::string& file) {
        const std::string bytes(1, "abcdef"[Pick(6)]);
        modBytes_.insert(bytes);
        Put("mods/" + mod + file, bytes);
    }

    void Step() {
        const auto& mod = mods_[Pick(mods_.size())];
        const auto& file = kFiles[Pick(kFiles.size())];
        switch (Pick(isEdited_ ? 12 : 9)) {
        case 0:
        case 1:
            text_ += " update " + mod + file;
            if (Pick(3) == 0)
                lab_.Remove("mods/" + mod + file);
            else
                ChangeMod(mod, file);
            if (const auto now = lab_.Read("mods/" + mod); now.contains(file.substr(1)))
                text_ += "=" + now.at(file.substr(1));
            return;
        case 2:
            text_ += " copy";
            CopyLibrary();
            return;
        case 9:
        case 10:
        case 11:
            Edit("game" + file);
            return;
        default:
            if (!lab_.Installed(mod) || Pick(3) == 0)
                Install(mod);
            else
                Uninstall(mod);
        }
    }

    /// Lets the command meet a fault, now and then.
    template <typename Command>
    bool Interrupt(Command command) {
        if (!isInterrupted_ || Pick(3) > 0) return false;
        constexpr std::array kErrors = {std::errc::no_space_on_device, std::errc::permission_denied,
                                        std::errc::io_error};
        FaultyFileSystem files(lab_.Files());
        const auto number = 1 + Pick(90);
        const auto fault = 1 + Pick(6);
        files.Arm(number, Fault(fault), kErrors[Pick(kErrors.size())]);
        command(files);
        text_ += "!" + std::to_string(number) + ":" + std::to_string(fault);
        ExpectNothingLost();
        return true;
    }

    void Install(const std::string& mod) {
        text_ += " +" + mod;
        if (Interrupt([&](FileSystem& files) { lab_.Install(files, mod); })) return;
        ASSERT_EQ(lab_.Install(mod).outcome, InstallOutcome::Done) << text_;
        ExpectNothingLost();
    }

    void Uninstall(const std::string& mod) {
        text_ += " -" + mod;
        if (Interrupt([&](FileSystem& files) { lab_.Uninstall(files, mod); })) return;
        const auto result = lab_.Uninstall(mod);
        // An installation that ended before its record was written may have saved what no mod has any more.
        ASSERT_TRUE(!result.BackupStays() || (canBeLeftOver_ && !result.strangers.empty())) << text_;
        ExpectNothingLost();
    }

    /// As a file manager does that keeps no times.
    void CopyLibrary() {
        fs::rename(lab_.Native("mods"), lab_.Native("old"));
        fs::copy(lab_.Native("old"), lab_.Native("mods"), fs::copy_options::recursive);
        lab_.Remove("old");
        isCopied_ = true;
    }

    /// The player or a patch writes or deletes a file of the game, and may keep its size and its time.
    void Edit(const std::string& path) {
        text_ += " edit " + path;
        const auto native = lab_.Native(path);
        const bool existed = fs::exists(native);
        const auto time = existed ? fs::last_write_time(native) : start_;
        if (Pick(4) == 0) {
            fs::remove(native);
        } else {
            const std::string bytes(1, static_cast<char>('A' + edits_++ % 26));
            lab_.Put(path, bytes);
            if (Pick(2) == 0) fs::last_write_time(native, time);
        }
        // What was only there is gone by the player's own hand.
        Observe();
    }

    std::set<std::string> AllBytes() const {
        std::set<std::string> found;
        for (const auto& [path, bytes] : lab_.Read("game"))
            found.insert(bytes);
        for (const auto& [path, bytes] : lab_.Read("mods"))
            if (path.find("Backup/") != std::string::npos || path.find("Changed/") != std::string::npos)
                found.insert(bytes);
        return found;
    }
    void Observe() { precious_ = AllBytes(); }
    void ExpectNothingLost() {
        const auto now = AllBytes();
        for (const auto& bytes : precious_) {
            // A record holds no bytes of the game.
            if (bytes.size() == 1) {
                ASSERT_TRUE(now.contains(bytes) || modBytes_.contains(bytes)) << text_ << ": lost " << bytes;
            }
        }
    }

    InstallLab lab_;
    const bool isEdited_;
    const bool canBeLeftOver_; ///< some command of the story was interrupted
    bool isInterrupted_;
    std::mt19937 random_;
    std::string text_; ///< what happened so far
    std::vector<std::string> mods_ = {"One", "Two", "One\\Addon\\Extra", "Three"};
    const fs::file_time_type start_ = fs::file_time_type::clock::now() - std::chrono::hours(100);
    TreeState before_;
    std::set<std::string> modBytes_; ///< of every version of every mod
    std::set<std::string> precious_; ///< bytes that were in the game, its backups or among the kept ones
    bool isCopied_ = false;
    int edits_ = 0;
};

/// More stories: --gtest_shuffle --gtest_repeat=N, as each repetition has a seed of its own.
class InstallSequenceTest : public testing::TestWithParam<std::tuple<bool, bool>> {};

TEST_P(InstallSequenceTest, LosesNothingWhateverHappensBetween) {
    const auto [isEdited, isInterrupted] = GetParam();
    const auto seed =
        GTEST_FLAG_GET(shuffle) ? 1000U * unsigned(testing::UnitTest::GetInstance()->random_seed()) : 0;
    for (const unsigned onceWrong :
         {95992016U, 81461219U, 64560009U, 80202129U, 27323104U, 40009092U, 231058U, 31466224U})
        Story(onceWrong, isEdited, isInterrupted).Run();
    for (unsigned story = 0; story < 300 / SweepStride() && !HasFailure(); ++story)
        Story(seed + story, isEdited, isInterrupted).Run();
}

std::string NameOfStories(const testing::TestParamInfo<std::tuple<bool, bool>>& test) {
    const auto [isEdited, isInterrupted] = test.param;
    return std::string(isEdited ? "ByOthersToo" : "ByMods") + (isInterrupted ? "Interrupted" : "");
}

INSTANTIATE_TEST_SUITE_P(Edited, InstallSequenceTest, testing::Combine(testing::Bool(), testing::Bool()),
                         NameOfStories);

} // namespace
} // namespace quillbay::test
