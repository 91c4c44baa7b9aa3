#include "odf/ListedFile.h"
#include "odf/OdfCheckRun.h"
#include "odf/OdfChecks.h"
#include "odf/OdfFile.h"
#include "odf/OdfRepair.h"
#include "odf/RaceList.h"
#include "odf/UnitStatistics.h"
#include "platform/PathText.h"
#include "support/FaultyFileSystem.h"
#include "support/TempFolder.h"

namespace quillbay::test {
namespace {

using Lines = std::vector<std::string>;

TEST(OdfText, EachCheckFailsForItsOwnLinesOnly) {
    OdfFolders folders;
    folders.odfs.back() = {R"(C:\odf/weapons\BattleShip.ODF)"};
    const OdfSurroundings around{OdfIndex(folders), {"", "Terran"}};
    // In the order of kOdfChecks: lines that fail, and lines that this check passes.
    const std::pair<Lines, Lines> checks[] = {
        {{" \" // \"", R"(#include "none.odf)"}, {"// \"", "  ", "x // \"", R"("")"}},
        {{R"(#include "none.odf")", R"(#include "battleship.odf" )"},
         {R"(#include "ODF\Weapons\battleship.odf")", "#include \"battleship.odf\u00E9", "#include \"",
          R"(#include "")", R"(#Include "no")", R"(#include  "no")", R"( #include "no")"}},
        {{R"(race = "terran")"}, {R"(race = "Terran" "x")", R"(race = "")", R"(Race = "x")", R"(race= "x")"}},
        {{R"(weapon1 = "attleshi")", R"(WEAPON12 = "ship.odf")", R"(weapon007x = "no")", R"(weapon1="no")"},
         {R"(weapon1 = "SHIP")", R"(weapon1 = "")", "weapon1 = no", R"(weapon0 = "no")", R"(weapon = "1")",
          R"(weapon 1 = "no")", R"(weapon+1 = "no")", R"(weapon0001 = "no")", R"(weaponHardpoints1 = "no")",
          R"( weapon1 = "no")"}},
        {{R"(ToolTip = "Write Me" )", R"(tooltip = "writeme" // x)", R"(tooltip = "")", "tooltip ="},
         {R"(tooltip = "write")", R"(tooltip ="writeme")", R"(tooltip="")", R"(verbosetooltip = "")"}},
        {{R"(builditem1 = "no")", R"(BuildItem1 = "ship.ODF")", R"(builditem1 = "ship" )"},
         {R"(builditem1 = "ship")", R"(builditem9 = "ship.odf")", R"(builditem = "a = b")",
          "builditem1 = \u00E9\u00E9", "builditem1 = ", R"(builditem1 ="no")"}},
        {{R"(VerboseTooltip = "")"}, {R"(tooltip = "")"}}};
    for (std::size_t check = 0; check < std::size(checks); ++check) {
        for (const std::string& bad : checks[check].first) {
            const auto failed = CheckOdfText("x\r\n" + bad + "\r\"", OdfCheckSet().set(), around);
            ASSERT_TRUE(failed) << bad;
            EXPECT_EQ(failed->check, &kOdfChecks[check]) << bad;
            EXPECT_EQ(failed->line, 1U) << bad;
            EXPECT_EQ(failed->cutText, bad.substr(0, bad.find("//")));
        }
        for (const std::string& good : checks[check].second)
            EXPECT_FALSE(CheckOdfText(good, OdfCheckSet().set(check), around)) << check << ": " << good;
    }
}

TEST(OdfText, OnlyCommentLinesAndBlankLinesAreRemovedAndOnlyShortLinesShown) {
    EXPECT_EQ(RemoveUnusedLines("// a\r\nb // c\r   \r\n //d\r\t\r\n\r\ne"), "b // c\r\n //d\r\n\t\r\ne\r\n");
    EXPECT_EQ(RemoveUnusedLines("// a\r\n  \r\n"), "");
    EXPECT_EQ(RemoveUnusedLines("a\rb"), std::nullopt);
    EXPECT_EQ(RemoveUnusedLines("// a\nrace = \"x\"\r\n"), std::nullopt);
    const std::string line(256 * 1024, 'x');
    EXPECT_FALSE(IsTooLargeToShow(line + "\r" + line));
    EXPECT_TRUE(IsTooLargeToShow(line + "\nx"));
}

class ReplaceOdfTest : public DiskTest {};

/// A file that another name shares keeps its attribute: that is not ours to change.
TEST_F(ReplaceOdfTest, IsWholeOrNotAtAll) {
    const struct {
        std::errc failure; ///< of the first write; Windows denies that of a read-only file
        bool isShared;
        std::errc error;
    } cases[] = {{std::errc::no_space_on_device, false, std::errc::no_space_on_device},
                 {std::errc::permission_denied, true, std::errc::permission_denied},
                 {std::errc::permission_denied, false, std::errc()}};
    for (const auto& [failure, isShared, error] : cases) {
        const std::string path = temp_ / std::to_string(&failure - &cases[0].failure);
        SCOPED_TRACE(path);
        PutFile(path, "old");
        if (isShared) Ignore(disk_->HardLink(path, path + "shared", false));
        ASSERT_FALSE(disk_->SetReadOnly(path, true));
        FaultyFileSystem files(*disk_);
        files.Arm(2, FaultyFileSystem::Fault::Fail, failure);
        EXPECT_EQ(ReplaceOdf(files, path, "new"), error);
        EXPECT_EQ(FileBytes(path), error == std::errc() ? "new" : "old");
        EXPECT_EQ(disk_->Stat(path)->readOnly, error != std::errc());
        EXPECT_EQ(disk_->Stat(path)->links, isShared ? 2U : 1U);
        if (isShared) continue;
        EXPECT_FALSE(ReplaceOdf(*disk_, path, "newer"));
        EXPECT_EQ(FileBytes(path), "newer");
        EXPECT_FALSE(disk_->Stat(path)->readOnly);
    }
}

using Texts = std::vector<std::string>;

class OdfCheckRunTest : public DiskTest {
protected:
    void Put(std::string_view name, std::string_view bytes) const { PutFile(Join(odf_, name), bytes); }

    const std::string odf_ = temp_ / "odf";
};

TEST_F(OdfCheckRunTest, NamesWhatItCouldNotRewriteUntilItCan) {
    Put(R"(ships\a.odf)", "// unused\r\nx");
    FaultyFileSystem files(*disk_);
    files.hook = [](auto operation, auto, auto) {
        return std::make_error_code(operation == "WriteFile" ? std::errc::no_space_on_device : std::errc());
    };
    OdfCheckRun run(files, odf_);
    EXPECT_EQ(run.Next({{}, true}), OdfCheckRun::Step::FileDone);
    EXPECT_EQ(run.PassedOver(), Texts{odf_ + R"(\ships\a.odf)"});
    files.hook = {};
    run.CheckAgain();
    EXPECT_EQ(run.Next({{}, true}), OdfCheckRun::Step::FileDone);
    EXPECT_TRUE(run.PassedOver().empty());
    EXPECT_EQ(run.Rewritten(), 1U);
}

TEST_F(OdfCheckRunTest, RaceListAndItsProbe) {
    EXPECT_EQ(BuildRaceList(*disk_, odf_), Texts{""});
    EXPECT_FALSE(ProbeRaceFiles(*disk_, odf_));
    Put(R"(other\a.odf)", "name = \"Old\"\rname = \"\xC4rger\"\r\nName = \"no\"\r\n name = \"no\"");
    Put("a.odf", "name = \"outside\"");
    const auto expect = [&](const std::string& bytes, const Texts& races, bool probe) {
        Put(R"(other\races.odf)", bytes);
        EXPECT_EQ(BuildRaceList(*disk_, odf_), races) << bytes;
        EXPECT_EQ(ProbeRaceFiles(*disk_, odf_), probe) << bytes;
    };
    expect("race = \"A.odf\"\rrace = \"none.odf\"\rrace\r", {"", "\u00C4rger", ""}, false);
    expect("RACE \"a.odf\"\rrace2\rRace1 = \"a.odf\"", {"", "\u00C4rger", "\u00C4rger"}, true);
    for (const std::string bad : {"", R"(..\a.odf)", "../a.odf", "..", ".", R"(x\..\a.odf)", "c:a.odf"})
        expect("race \"" + bad + "\"", {"", ""}, false);
}

class AnalyzerData : public DiskTest {};

TEST_F(AnalyzerData, FilesArePastedWithoutOverwritingAndKnownByLetterCase) {
    for (const char* name : {"from\\scout.odf", "taken\\SCOUT.odf", "free\\other.odf"})
        PutFile(temp_ / name, name);
    const ListedFile file{temp_ / "from\\scout.odf", "scout.odf"};
    const ListedFile other{temp_ / "from\\Scout.odf", "Scout.odf"};
    EXPECT_EQ(PasteFile(*disk_, file, {temp_ / "free", temp_ / "taken"}), std::errc::file_exists);
    EXPECT_EQ(PasteFile(*disk_, file, {temp_ / "from"}), std::errc::file_exists);
    EXPECT_EQ(PasteFile(*disk_, other, {temp_ / "free"}), std::errc::no_such_file_or_directory);
    EXPECT_TRUE(PasteFile(*disk_, file, {temp_ / "gone"}));
    EXPECT_TRUE(PasteFile(*disk_, file, {}));
    EXPECT_EQ(ListFiles(*disk_, {temp_ / "free", temp_ / "gone"}).size(), 1U);
    EXPECT_FALSE(PasteFile(*disk_, file, {temp_ / "free"}));
    EXPECT_EQ(FileBytes(temp_ / "free\\scout.odf"), "from\\scout.odf");
    EXPECT_EQ(FileBytes(temp_ / "taken\\SCOUT.odf"), "taken\\SCOUT.odf");

    EXPECT_FALSE(RemoveListedFile(*disk_, other));
    EXPECT_TRUE(IsStillThere(*disk_, file) && !IsStillThere(*disk_, other));
    for (const bool isThere : {true, false}) {
        EXPECT_EQ(IsStillThere(*disk_, file), isThere);
        EXPECT_FALSE(RemoveListedFile(*disk_, file));
    }
}

} // namespace
} // namespace quillbay::test
