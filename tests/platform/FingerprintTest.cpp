#include "platform/Fingerprint.h"

#include <gtest/gtest.h>

namespace quillbay {
namespace {

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

TEST(Fingerprint, IsReadBackFromItsDigitsAlone) {
    const Fingerprint small{0x0123456789abcdef, 0xf};
    EXPECT_EQ(ToHex(small), "0123456789abcdef000000000000000f");
    EXPECT_EQ(FingerprintFromHex(ToHex(small)), small);
    for (const char* text : {"", "0", "0123456789ABCDEF000000000000000F", "0123456789abcdef00000000000000f",
                             "0123456789abcdef000000000000000f0", "0123456789abcdef-00000000000000f",
                             "0123456789abcdeg000000000000000f", "0x23456789abcdef000000000000000f ",
                             " 123456789abcdef000000000000000f"})
        EXPECT_FALSE(FingerprintFromHex(text)) << text;
}

} // namespace
} // namespace quillbay
