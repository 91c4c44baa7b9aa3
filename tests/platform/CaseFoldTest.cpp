#include "platform/CaseFold.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace quillbay {

namespace {

std::string RandomBytes(std::mt19937& random) {
    std::string bytes(std::uniform_int_distribution<std::size_t>(0, 12)(random), '\0');
    // Much of UTF-8's alphabet, so that whole characters occur among the rubbish.
    constexpr std::string_view kAlphabet = "aAzZ_\x80\xBF\xC3\xA4\x84\xC5\xBF\xCE\xB1\xE2\xF0\x9F\xFF";
    for (char& byte : bytes) {
        byte = kAlphabet[std::uniform_int_distribution<std::size_t>(0, kAlphabet.size() - 1)(random)];
    }
    return bytes;
}

TEST(CaseFoldTest, FoldsLettersOneForOne) {
    EXPECT_EQ(FoldCase("odf\\Ships_[1]{~"), "ODF\\SHIPS_[1]{~");
    EXPECT_EQ(FoldCase("Größe, ÿ, жук, αβγ"), "GRÖßE, Ÿ, ЖУК, ΑΒΓ");
    // None of these may be taken for an ASCII letter.
    EXPECT_FALSE(EqualFolded("ı", "I"));
    EXPECT_FALSE(EqualFolded("ſ", "S"));
    EXPECT_FALSE(EqualFolded("\u212A", "K"));
    EXPECT_TRUE(EqualFolded("\xFFTÄST", "\xFFtäst"));
    EXPECT_FALSE(EqualFolded("abc", "abcd"));
    EXPECT_FALSE(EqualFolded("\xE4", "\xC4"));
}

TEST(CaseFoldTest, SortsByFoldedFormThenByCodePoint) {
    std::vector<std::string> names = {"b", "Zebra", "a_", "äb", "aB", "Ab", "ab", "_", "Äa", "a"};
    std::sort(names.begin(), names.end(), LessFolded);
    EXPECT_EQ(names, (std::vector<std::string>{"a", "Ab", "aB", "ab", "a_", "b", "Zebra", "_", "Äa", "äb"}));
}

TEST(CaseFoldTest, HoldsItsRulesForAnyBytes) {
    std::mt19937 random(20260105);
    for (int i = 0; i < 20'000; ++i) {
        const auto a = RandomBytes(random);
        const auto b = RandomBytes(random);
        ASSERT_EQ(FoldCase(FoldCase(a)), FoldCase(a)) << a;
        ASSERT_EQ(EqualFolded(a, b), FoldCase(a) == FoldCase(b)) << a << ' ' << b;
        ASSERT_TRUE(EqualFolded(a, FoldCase(a))) << a;
        const bool less = FoldCase(a) != FoldCase(b) ? FoldCase(a) < FoldCase(b) : a < b;
        ASSERT_EQ(LessFolded(a, b), less) << a << ' ' << b;
    }
}

} // namespace

} // namespace quillbay
