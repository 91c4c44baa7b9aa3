#include "platform/CodePage.h"

#include <gtest/gtest.h>

namespace quillbay {

namespace {

TEST(PosixCodePageTest, MapsTheWesternLetters) {
    EXPECT_EQ(DecodeSystemText("Gr\xF6\xDF"
                               "e\r\n"),
              "Größe\r\n");
    EXPECT_EQ(EncodeSystemText("Größe").bytes, "Gr\xF6\xDF"
                                               "e");
    EXPECT_EQ(DecodeSystemText("\x80\x93\x99"), "€“™");
}

TEST(PosixCodePageTest, SaysWhichCharacterItCannotHold) {
    EXPECT_EQ(EncodeSystemText("abc жук").unencodable, "ж");
    EXPECT_EQ(EncodeSystemText("\xF0\x9F\x9A\x80").unencodable, "\xF0\x9F\x9A\x80");
    EXPECT_EQ(EncodeSystemText("a\xFF").unencodable, "\xFF");
    EXPECT_FALSE(EncodeSystemText("plain").unencodable);
}

} // namespace

} // namespace quillbay
