#include "support/FaultyFileSystem.h"
#include "support/InstallLab.h"

#include <algorithm>
#include <array>
#include <random>
#include <set>

/// What happens between the commands: mods are updated, the library is copied, somebody else writes into the
/// game.
namespace quillbay {
namespace {

namespace fs = std::filesystem;

const std::array<std::string, 3> kFiles = {"/odf/ships/x.odf", "/y.txt", "/Sod/z.sod"};

/// Random commands and events with two to four mods, all files of one size and many of one time.
class Story {
public:
    Story(unsigned seed, bool isEdited)
        : isEdited_(isEdited), random_(seed), text_(std::to_string(seed) + ":") {
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
        for (const auto& mod : mods_)
            if (lab_.Installed(mod)) Uninstall(mod);
        if (!isEdited_) {
            auto after = lab_.State("game");
            // Copies without their times cannot give them back.
            for (auto& [path, file] : after)
                if (isCopied_ && before_.contains(path)) file.modified = before_.at(path).modified;
            ASSERT_EQ(Differences(before_, after), "") << text_;
        }
        ASSERT_EQ(lab_.SharedFiles(), "") << text_;
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

    void Install(const std::string& mod) {
        text_ += " +" + mod;
        ASSERT_EQ(lab_.Install(mod).outcome, InstallOutcome::Done) << text_;
        ExpectNothingLost();
    }

    void Uninstall(const std::string& mod) {
        text_ += " -" + mod;
        const auto result = lab_.Uninstall(mod);
        ASSERT_FALSE(result.BackupStays()) << text_;
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
class InstallSequenceTest : public testing::TestWithParam<bool> {};

TEST_P(InstallSequenceTest, LosesNothingWhateverHappensBetween) {
    const auto seed =
        GTEST_FLAG_GET(shuffle) ? 1000U * unsigned(testing::UnitTest::GetInstance()->random_seed()) : 0;
    for (unsigned story = 0; story < 300 / SweepStride() && !HasFailure(); ++story)
        Story(seed + story, GetParam()).Run();
}

INSTANTIATE_TEST_SUITE_P(Edited, InstallSequenceTest, testing::Bool(),
                         [](const auto& test) { return test.param ? "ByOthersToo" : "ByMods"; });

} // namespace
} // namespace quillbay
