#include "odf/UnitStatistics.h"

#include <gtest/gtest.h>

namespace quillbay::test {
namespace {

TEST(UnitStatistics, ShowsTheRawRestOfTheLastLineOfEachKey) {
    struct Case {
        std::string odf;
        std::size_t key;
        std::string caption;
    };
    const std::string longValue(2 * kMaxUnitValueCharacters, '\xE9');
    std::string shownValue;
    for (std::size_t i = 0; i < kMaxUnitValueCharacters; ++i)
        shownValue += "\xC3\xA9";
    const std::vector<Case> cases{
        {"", 0, "unitName = (File does not contain 'unitName')"},
        {"race = \"a\"\r\nrace = \"b\" // two", 1, "race = \"b\" // two"},
        {"race = \"b\"\rrace= \"c\"\r race = d", 1, "race = \"b\""},
        {"BuildTime = 5", 2, "buildTime = (File does not contain 'buildTime')"},
        {"officerCost =", 3, "officerCost = "},
        {"crewCost =\xE9"
         "7",
         4, "crewCost = 7"},
        {"crewCost2 = 7", 4, "crewCost = (File does not contain 'crewCost')"},
        {"crewCost = 7\ncrewCost = 8", 4, "crewCost = 7\ncrewCost = 8"},
        {"maxHealth = 500 // raw \xE9", 8, "maxHealth = 500 // raw \xC3\xA9"},
        {"shieldRate = " + longValue, 9, "shieldRate = " + shownValue},
    };
    for (const Case& test : cases)
        EXPECT_EQ(FindUnitStatistics(test.odf)[test.key], test.caption) << test.odf.substr(0, 40);
}

} // namespace
} // namespace quillbay::test
