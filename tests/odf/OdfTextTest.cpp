#include "odf/OdfChecks.h"
#include "odf/OdfFile.h"
#include "odf/OdfRepair.h"
#include "support/DiskTest.h"
#include "support/FaultyFileSystem.h"

#include <random>

namespace quillbay {
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

TEST(OdfText, AFailedCheckNamesAPartOfAnyText) {
    const std::string_view pieces[] = {"\r", "\n", "\r\n", "//", " = ", "\"", "race", "#include \"", " "};
    std::mt19937 random(20'260'108);
    for (int round = 0; round < 3'000; ++round) {
        std::string bytes;
        for (auto count = random() % 20; count > 0; --count) {
            bytes += pieces[random() % std::size(pieces)];
            bytes += static_cast<char>(random());
        }
        const auto failed = CheckOdfText(bytes, OdfCheckSet().set(), {});
        EXPECT_TRUE(!failed || bytes.find(failed->cutText) != std::string::npos) << bytes;
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

class ReplaceOdfTest : public test::DiskTest {};

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
        test::PutFile(path, "old");
        if (isShared) Ignore(disk_->HardLink(path, path + "shared", false));
        ASSERT_FALSE(disk_->SetReadOnly(path, true));
        FaultyFileSystem files(*disk_);
        files.Arm(2, FaultyFileSystem::Fault::Fail, failure);
        EXPECT_EQ(ReplaceOdf(files, path, "new"), error);
        EXPECT_EQ(test::FileBytes(path), error == std::errc() ? "new" : "old");
        EXPECT_EQ(disk_->Stat(path)->readOnly, error != std::errc());
        EXPECT_EQ(disk_->Stat(path)->links, isShared ? 2U : 1U);
        if (isShared) continue;
        EXPECT_FALSE(ReplaceOdf(*disk_, path, "newer"));
        EXPECT_EQ(test::FileBytes(path), "newer");
        EXPECT_FALSE(disk_->Stat(path)->readOnly);
    }
}

} // namespace
} // namespace quillbay
