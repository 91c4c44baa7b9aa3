#include "odf/OdfChecks.h"
#include "odf/OdfFile.h"
#include "odf/OdfRepair.h"
#include "support/DiskTest.h"
#include "support/FaultyFileSystem.h"

#include <random>
#include <regex>

namespace quillbay {
namespace {

/// Pairs of a line and its value; "-" where the reader must pass the line over.
template <typename Reader>
void Expect(Reader reader, const std::vector<std::string>& pairs) {
    for (std::size_t at = 0; at < pairs.size(); at += 2) {
        const auto value = reader(std::string_view(pairs[at]));
        EXPECT_EQ(value ? std::string(*value) : "-", pairs[at + 1]) << pairs[at];
    }
}

TEST(OdfText, EachReaderTakesItsOwnLinesOnly) {
    Expect(IncludedOdf,
           {R"(#include "a.odf")", "a.odf", R"(#include "a.odf" )", "a.odf\"", "#include \"a\u00E9", "a",
            "#include \"", "", "#Include \"a\"", "-", "#include  \"a\"", "-", " #include \"a\"", "-"});
    Expect(RaceValue, {R"(race = "a" "b")", "a", R"(Race = "a")", "-", R"(race= "a")", "-"});
    Expect(WeaponOdf,
           {"weapon1 = \"gun\"", "gun.odf", "WEAPON12 = \"a.odf\"", "a.odf.odf", "weapon1 = \"\"", ".odf",
            "weapon007x = \"a\"", "a.odf", "weapon1=\"a\"", "a.odf", "weapon1 = gun", "-"});
    Expect(WeaponOdf,
           {"weapon0 = \"a\"", "-", "weapon = \"1\"", "-", "weapon 1 = \"a\"", "-", "weapon+1 = \"a\"", "-"});
    Expect(WeaponOdf, {"weapon0001 = \"a\"", "-", "weaponHardpoints1 = \"a\"", "-", " weapon1 = \"a\"", "-"});
    Expect(TooltipValue, {"tooltip = \"A Ship\"  ", "\"a ship\"", "ToolTip = ", "", "tooltip =", "",
                          "tooltip =\"x\"", "x\"", "tooltip=\"x\"", "-", "verbosetooltip = \"x\"", "-"});
    Expect(BuildItemOdf,
           {"builditem1 = \"scout\"", "scout.odf", "BuildItem9 = \"scout.odf\"", "scout.odf",
            "builditem1 = \"a.ODF\"", "a.ODF.odf", "builditem1 = \"a\" ", "a\".odf", "builditem = \"a = b\"",
            ".odf", "builditem1 = \u00E9\u00E9", ".odf", "builditem1 = ", "odf", "builditem1 =\"a\"", "-"});
}

TEST(OdfText, FirstFailedCheckOfTheFirstBadLineCounts) {
    OdfFolders folders;
    folders.odfs.back() = {R"(C:\odf/weapons\BattleShip.ODF)"};
    const OdfSurroundings around{OdfIndex(folders), {"", "Terran"}};
    // By the place of the check in kOdfChecks that they fail.
    const std::vector<std::vector<std::string>> failing = {
        {" \" // \"", R"(#include "none.odf)"},
        {R"(#include "none.odf")", R"(#include "scout.odf")"},
        {R"(race = "terran")"},
        {R"(weapon1 = "attleshi")"},
        {R"(ToolTip = "Write Me" )", R"(tooltip = "writeme" // x)", R"(tooltip = "")", "tooltip ="},
        {R"(builditem1 = "none")"},
        {R"(VerboseTooltip = "")"}};
    for (std::size_t check = 0; check < failing.size(); ++check) {
        for (const std::string& line : failing[check]) {
            const auto failed = CheckOdfText("x\r\n" + line + "\r\"", OdfCheckSet().set(), around);
            ASSERT_TRUE(failed) << line;
            EXPECT_EQ(failed->check, &kOdfChecks[check]) << line;
            EXPECT_EQ(failed->line, 1U) << line;
            EXPECT_EQ(failed->cutText, line.substr(0, line.find("//")));
            const auto other = CheckOdfText(line, OdfCheckSet().set(check).flip(), around);
            EXPECT_TRUE(!other || other->check != &kOdfChecks[check]) << line;
        }
    }
    for (const char* good : {"// \"", "  ", "x // \"", R"(#include "ODF\Weapons\battleship.odf")",
                             R"(#include "")", R"(race = "Terran")", R"(race = "")", R"(weapon1 = "SHIP")",
                             R"(tooltip = "write")", R"(builditem1 = "ship")"})
        EXPECT_FALSE(CheckOdfText(good, OdfCheckSet().set(), around)) << good;
}

TEST(OdfText, EveryByteSurvivesButLineEnds) {
    EXPECT_EQ(OdfBytesToText("a\nb\rc\r\n"), "a\u2028b\r\nc");
    EXPECT_EQ(OdfTextToBytes("a\u2028b\r\nc\u2603").unencodable, "\u2603");

    const std::string_view pieces[] = {"\r",   "\n",          "\r\n",         "//",       " = ", "\"",
                                       "race", "#include \"", "builditem = ", "weapon1 ", " "};
    std::mt19937 random(20'260'108);
    for (int round = 0; round < 3'000; ++round) {
        std::string bytes;
        for (auto count = random() % 40; count > 0; --count) {
            if (random() % 3 == 0)
                bytes += pieces[random() % std::size(pieces)];
            else
                bytes += static_cast<char>(random());
        }
        std::string expected = std::regex_replace(bytes, std::regex("\r\n?"), "\r\n");
        if (!expected.ends_with("\r\n")) expected += "\r\n";
        ASSERT_EQ(OdfTextToBytes(OdfBytesToText(bytes)).bytes, expected);
        const auto failed = CheckOdfText(OdfBytesToText(bytes), OdfCheckSet().set(), {});
        EXPECT_TRUE(!failed || OdfBytesToText(bytes).find(failed->cutText) != std::string::npos) << bytes;
    }
}

TEST(OdfText, CommentLinesAndBlankLinesOnlyAreRemoved) {
    EXPECT_EQ(RemoveUnusedLines("// a\r\nb // c\r   \r\n //d\r\t\r\n\r\ne"), "b // c\r\n //d\r\n\t\r\ne\r\n");
    EXPECT_EQ(RemoveUnusedLines("// a\r\n  \r\n"), "");
    EXPECT_EQ(RemoveUnusedLines("a\rb"), std::nullopt);
    EXPECT_EQ(RemoveUnusedLines("// a\nrace = \"x\"\r\n"), std::nullopt);
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
