#include "common/modMisc.h"

#include <cmath>
#include <gtest/gtest.h>

namespace quillbay {
namespace {

TEST(modMisc, ContainsTextIgnoresLetterCaseBeyondAscii) {
    EXPECT_TRUE(ContainsText("Gr\xC3\x9C\xC3\x9F.TXT", "gr\xC3\xBC"));
    EXPECT_TRUE(ContainsText("a", ""));
    EXPECT_FALSE(ContainsText("read me", "readme"));
}

TEST(modMisc, ParseLeadingNumberReadsTheBeginningOfEveryMagnitude) {
    for (const auto& [text, number] : {std::pair<std::string, double>{"  - 2 3.5e1x9", -235},
                                       {"+.5E+2", 50},
                                       {"12e", 12},
                                       {"1,5", 1},
                                       {"-1e999999999999999999999", -HUGE_VAL},
                                       {std::string(400, '9'), HUGE_VAL},
                                       {"." + std::string(400, '0') + "1", 0},
                                       {"0e999", 0}})
        EXPECT_EQ(ParseLeadingNumber(text), number) << text;
    for (const char* none : {"", " ", "abc", "-", ".", "e5", "&H10", "inf", "nan"})
        EXPECT_EQ(ParseLeadingNumber(none), 0) << none;
}

TEST(modMisc, CutTextNeverCutsACharacter) {
    const std::string text = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80z";
    EXPECT_EQ(CutText(text, 2), "a\xC3\xA4");
    EXPECT_EQ(CutText(text, 4), text.substr(0, text.size() - 1));
    EXPECT_EQ(CutText(text, 99), text);
    EXPECT_EQ(CutText("\x80\x80\x80", 2).size(), 2U) << "stray bytes count one each";
}

TEST(modMisc, FormatSizeRoundsHalfUpAndChangesUnitAboveHundredKilobytes) {
    EXPECT_EQ(FormatSize(128, "."), "0.13 KB");
    EXPECT_EQ(FormatSize(102'400, "."), "100 KB");
    EXPECT_EQ(FormatSize(103'424, ","), "0,1 MB");
    EXPECT_EQ(FormatSize(20'000'000'000'000'000ULL, "."), "19531250000 MB");
}

} // namespace
} // namespace quillbay
