#include "platform/CaseFold.h"

#include <gtest/gtest.h>
#include <random>

namespace quillbay {
namespace {

TEST(CaseFoldTest, FoldsLettersOneForOne) {
    EXPECT_EQ(FoldCase("odf\\Ships_[1]{~"), "ODF\\SHIPS_[1]{~");
    EXPECT_EQ(FoldCase("Größe, ÿœ, жукё, αβγά 🚀"), "GRÖßE, ŸŒ, ЖУКЁ, ΑΒΓΆ 🚀");
    EXPECT_EQ(FoldCase("ıſ\u212A"), "ıſ\u212A") << "none may be taken for an ASCII letter";
    EXPECT_EQ(FoldCase("\xFF\xE4z\xED\xA0\x80z"), "\xFF\xE4Z\xED\xA0\x80Z") << "no characters, but bytes";
}

TEST(CaseFoldTest, ComparesFoldedFormsThenCodePointsOfAnyBytes) {
    // Much of UTF-8's alphabet, so that whole characters occur among the rubbish.
    constexpr std::string_view kAlphabet = "aAzZ_\x80\xBF\xC3\xA4\x84\xC5\xBF\xCE\xB1\xE2\xF0\x9F\xFF";
    std::mt19937 random(20260105);
    const auto randomBytes = [&] {
        std::string bytes(random() % 13, '\0');
        for (char& byte : bytes)
            byte = kAlphabet[random() % kAlphabet.size()];
        return bytes;
    };
    for (int i = 0; i < 20'000; ++i) {
        const auto a = randomBytes();
        const auto b = i % 4 == 0 ? FoldCase(a) : randomBytes();
        const auto foldedA = FoldCase(a);
        const auto foldedB = FoldCase(b);
        ASSERT_EQ(FoldCase(foldedA), foldedA) << a;
        ASSERT_EQ(EqualFolded(a, b), foldedA == foldedB) << a << ' ' << b;
        ASSERT_EQ(LessFolded(a, b), foldedA != foldedB ? foldedA < foldedB : a < b) << a << ' ' << b;
    }
}

} // namespace
} // namespace quillbay
