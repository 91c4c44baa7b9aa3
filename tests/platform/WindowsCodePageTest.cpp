#include "platform/windows/CodePageCodec.h"

#include <gtest/gtest.h>
#include <random>

namespace quillbay::test {
namespace {

constexpr unsigned kWestern = 1252, kJapanese = 932, kTraditionalChinese = 950, kUtf8 = 65001;

TEST(WindowsCodePageTest, ReadsAndWritesTheCharactersOfACodePage) {
    const CodePageCodec western(kWestern);
    EXPECT_EQ(western.Decode("\x80 \xE4"), "\u20AC \u00E4");
    EXPECT_EQ(western.Encode("\u20AC \u00E4").bytes, "\x80 \xE4");
    const CodePageCodec japanese(kJapanese);
    EXPECT_EQ(japanese.Decode("\x83\x41.odf"), "\u30A2.odf");
    EXPECT_EQ(japanese.Encode("\u30A2.odf").bytes, "\x83\x41.odf");
    EXPECT_EQ(CodePageCodec(kUtf8).Decode("\u30A2\U0001F600"), "\u30A2\U0001F600");
}

TEST(WindowsCodePageTest, NamesTheFirstCharacterItCannotWrite) {
    const CodePageCodec western(kWestern);
    // Full-width A and the Greek letter have look-alikes in the code page, which must not be taken.
    EXPECT_EQ(western.Encode("a\uFF21\u03A3").unencodable, "\uFF21");
    EXPECT_EQ(western.Encode("\u0394?").unencodable, "\u0394");
    EXPECT_EQ(western.Encode("\U0001F600").unencodable, "\U0001F600");
    EXPECT_EQ(western.Encode("\xFFx").unencodable, "\xFF");
    EXPECT_EQ(CodePageCodec(kUtf8).Encode("\xED\xA0\x80").unencodable, "\xED\xA0\x80");
    EXPECT_FALSE(western.Encode("? \u00E4").unencodable);
}

TEST(WindowsCodePageTest, CarriesBytesThatAreNoCharacters) {
    EXPECT_EQ(CodePageCodec(kJapanese).Decode("a\x83"), "a\uF783");
    EXPECT_EQ(CodePageCodec(kUtf8).Decode("a\xFF\xC3\xA4"), "a\uF7FF\u00E4");
    // Bytes of a private code point that stands for another byte.
    EXPECT_EQ(CodePageCodec(kUtf8).Encode(CodePageCodec(kUtf8).Decode("\uF741")).bytes, "\uF741");

    std::mt19937 random(20260401);
    for (const unsigned codePage : {kWestern, kJapanese, kTraditionalChinese, kUtf8}) {
        const CodePageCodec codec(codePage);
        for (int round = 0; round < 300; ++round) {
            std::string bytes(random() % 40, '\0');
            for (char& byte : bytes)
                byte = static_cast<char>(random() % (round % 2 ? 256 : 128) + (round % 2 ? 0 : 128));
            const EncodedText again = codec.Encode(codec.Decode(bytes));
            ASSERT_FALSE(again.unencodable) << codePage;
            ASSERT_EQ(again.bytes, bytes) << codePage;
        }
        // Characters that the code page holds twice.
        for (unsigned pair = 0x8000; pair <= 0xFFFF; ++pair) {
            const std::string bytes{static_cast<char>(pair >> 8), static_cast<char>(pair)};
            ASSERT_EQ(codec.Encode(codec.Decode(bytes)).bytes, bytes) << codePage << ' ' << pair;
        }
    }
}

} // namespace
} // namespace quillbay::test
