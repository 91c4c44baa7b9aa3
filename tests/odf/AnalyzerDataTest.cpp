#include "odf/ListedFile.h"
#include "odf/UnitStatistics.h"
#include "support/DiskTest.h"

namespace quillbay::test {
namespace {

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

TEST_F(AnalyzerData, StatisticsAreTheRawRestOfTheLastLineOfEachKey) {
    std::string shown;
    for (std::size_t i = 0; i < kMaxUnitValueCharacters; ++i)
        shown += "\u00E9";
    const std::tuple<std::string, std::size_t, std::string> cases[] = {
        {"", 0, "unitName = (File does not contain 'unitName')"},
        {"race = \"a\"\r\nrace = \"b\" // two", 1, "race = \"b\" // two"},
        {"race = \"b\"\rrace= \"c\"\r race = d", 1, "race = \"b\""},
        {"BuildTime = 5", 2, "buildTime = (File does not contain 'buildTime')"},
        {"officerCost =", 3, "officerCost = "},
        {"crewCost =\xE9" + std::string("7"), 4, "crewCost = 7"},
        {"crewCost2 = 7", 4, "crewCost = (File does not contain 'crewCost')"},
        {"crewCost = 7\ncrewCost = 8", 4, "crewCost = 7\ncrewCost = 8"},
        {"shieldRate = " + std::string(2 * kMaxUnitValueCharacters, '\xE9'), 9, "shieldRate = " + shown}};
    for (const auto& [odf, key, caption] : cases)
        EXPECT_EQ(FindUnitStatistics(odf)[key], caption) << odf.substr(0, 40);
}

} // namespace
} // namespace quillbay::test
