#include "platform/CodePage.h"

namespace quillbay {
namespace {

TEST(PosixCodePageTest, MapsTheWesternLettersAndEveryOtherByte) {
    const std::string bytes = "Gr\xF6\xDF\x65\r\n\x80\x93\x99";
    EXPECT_EQ(DecodeSystemText(bytes), "Größe\r\n€“™");
    EXPECT_EQ(EncodeSystemText("Größe\r\n€“™").bytes, bytes);
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all.push_back(static_cast<char>(byte));
    const EncodedText again = EncodeSystemText(DecodeSystemText(all));
    EXPECT_FALSE(again.unencodable);
    EXPECT_EQ(again.bytes, all);
}

TEST(PosixCodePageTest, SaysWhichCharacterItCannotHold) {
    EXPECT_EQ(EncodeSystemText("abc жук").unencodable, "ж");
    EXPECT_EQ(EncodeSystemText("\xF0\x9F\x9A\x80").unencodable, "\xF0\x9F\x9A\x80");
    EXPECT_EQ(EncodeSystemText("a\xFF").unencodable, "\xFF");
}

} // namespace
} // namespace quillbay
