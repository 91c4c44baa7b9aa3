#include "platform/CodePage.h"

#include <gtest/gtest.h>
#include <random>

namespace quillbay {

namespace {

TEST(CodePageTest, EveryByteComesBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all.push_back(static_cast<char>(byte));
    std::mt19937 random(7);
    for (int round = 0; round < 2'000; ++round) {
        const auto encoded = EncodeSystemText(DecodeSystemText(all));
        ASSERT_FALSE(encoded.unencodable);
        ASSERT_EQ(encoded.bytes, all);
        all.resize(std::uniform_int_distribution<std::size_t>(0, 64)(random));
        for (char& byte : all)
            byte = static_cast<char>(random());
    }
}

TEST(CodePageTest, MapsTheWesternLetters) {
    EXPECT_EQ(DecodeSystemText("Gr\xF6\xDF"
                               "e\r\n"),
              "Größe\r\n");
    EXPECT_EQ(EncodeSystemText("Größe").bytes, "Gr\xF6\xDF"
                                               "e");
    EXPECT_EQ(DecodeSystemText("\x80\x93\x99"), "€“™");
}

TEST(CodePageTest, SaysWhichCharacterItCannotHold) {
    EXPECT_EQ(EncodeSystemText("abc жук").unencodable, "ж");
    EXPECT_EQ(EncodeSystemText("\xF0\x9F\x9A\x80").unencodable, "\xF0\x9F\x9A\x80");
    EXPECT_EQ(EncodeSystemText("a\xFF").unencodable, "\xFF");
    EXPECT_FALSE(EncodeSystemText("plain").unencodable);
}

} // namespace

} // namespace quillbay
