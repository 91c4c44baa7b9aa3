#include "platform/CaseFold.h"
#include "platform/Fingerprint.h"

#include <random>

namespace quillbay::test {
namespace {

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

TEST(Fingerprint, IsThatOfXxh3InOnePartOrMany) {
    // As the shared library computes them.
    EXPECT_EQ(ToHex(FingerprintOf("")), "99aa06d3014798d86001c324468d497f");
    std::string bytes;
    for (int i = 0; i < 5000; ++i)
        bytes += static_cast<char>(i * 7);
    Fingerprinter parts;
    EXPECT_EQ(parts.Finish(), FingerprintOf(""));
    for (std::size_t at = 0, part = 1; at < bytes.size(); at += part, part += 61)
        parts.Add(std::string_view(bytes).substr(at, part));
    EXPECT_EQ(parts.Finish(), FingerprintOf(bytes));
    EXPECT_EQ(ToHex(parts.Finish()), "a4ba2a60fb07e0166abe8be5abcb2760");
}

} // namespace
} // namespace quillbay::test
