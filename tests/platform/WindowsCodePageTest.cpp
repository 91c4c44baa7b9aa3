#include "platform/windows/CodePageCodec.h"

#include <gtest/gtest.h>
#include <random>
#include <windows.h>

namespace quillbay::test {
namespace {

constexpr unsigned kWestern = 1252, kJapanese = 932, kTraditionalChinese = 950, kUtf8 = 65001;

TEST(WindowsCodePageTest, ReadsAndWritesTheCharactersOfACodePage) {
    for (const auto& [codePage, bytes, text] : {std::tuple{kWestern, "\x80 \xE4", "\u20AC \u00E4"},
                                                {kJapanese, "\x83\x41.odf", "\u30A2.odf"},
                                                {kUtf8, "\u30A2\U0001F600", "\u30A2\U0001F600"},
                                                // Bytes that are no characters.
                                                {kJapanese, "a\x83", "a\uF783"},
                                                {kUtf8, "a\xFF\xC3\xA4", "a\uF7FF\u00E4"}}) {
        EXPECT_EQ(CodePageCodec(codePage).Decode(bytes), text) << codePage;
        EXPECT_EQ(CodePageCodec(codePage).Encode(text).bytes, bytes) << codePage;
    }
}

TEST(WindowsCodePageTest, NamesTheFirstCharacterItCannotWrite) {
    // Full-width A and the Greek letters have look-alikes in the code page, which must not be taken.
    for (const auto& [codePage, text, character] : {std::tuple{kWestern, "a\uFF21\u03A3", "\uFF21"},
                                                    {kWestern, "\u0394?", "\u0394"},
                                                    {kWestern, "\U0001F600", "\U0001F600"},
                                                    {kWestern, "\xFFx", "\xFF"},
                                                    {kUtf8, "\xED\xA0\x80", "\xED\xA0\x80"}})
        EXPECT_EQ(CodePageCodec(codePage).Encode(text).unencodable, character);
}

TEST(WindowsCodePageTest, EveryByteComesBack) {
    std::mt19937 random(20260401);
    for (const unsigned codePage : {GetACP(), kWestern, kJapanese, kTraditionalChinese, kUtf8}) {
        // What stands for a byte itself, then pairs (some characters are there twice), then rubbish.
        std::vector<std::string> texts = {"\uF741"};
        for (unsigned pair = 0x8000; pair <= 0xFFFF; ++pair)
            texts.push_back({static_cast<char>(pair >> 8), static_cast<char>(pair)});
        for (int round = 0; round < 300; ++round)
            for (char& byte : texts.emplace_back(random() % 40, '\0'))
                byte = static_cast<char>(round % 2 ? random() : random() | 0x80);
        for (const std::string& bytes : texts) {
            const EncodedText again = CodePageCodec(codePage).Encode(CodePageCodec(codePage).Decode(bytes));
            ASSERT_FALSE(again.unencodable) << codePage;
            ASSERT_EQ(again.bytes, bytes) << codePage;
        }
    }
}

} // namespace
} // namespace quillbay::test
