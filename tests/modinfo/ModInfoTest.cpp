#include "modinfo/ModInfo.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <tuple>

namespace quillbay {
namespace {

ModInfoValues Parse(std::string_view bytes) {
    ModInfoParser parser;
    parser.Feed(bytes);
    return parser.Finish();
}

ModInfoCaptions Captions(std::string_view bytes) { return MakeModInfoCaptions(Parse(bytes)); }

auto Tie(const ModInfoValues& v) {
    return std::tie(v.author, v.description, v.version, v.other, v.otherHeading);
}

TEST(ModInfo, FallbackTextsTellAbsentFileMissingLineAndBlankValue) {
    const ModInfoCaptions absent = MakeModInfoCaptions(std::nullopt);
    EXPECT_EQ(absent.author, "(File 'ModInfo.txt' not found)");
    EXPECT_EQ(absent.other, "(File 'ModInfo.txt' not found)");
    EXPECT_EQ(absent.otherHeading, "Other: ");

    const ModInfoCaptions missing = Captions("Author: Bob");
    EXPECT_EQ(missing.author, "Bob");
    EXPECT_EQ(missing.description, "(File does not contain description)");
    EXPECT_EQ(missing.version, "(File does not contain version number)");
    EXPECT_EQ(missing.other, "(File does not contain 'other')");
    EXPECT_EQ(missing.otherHeading, "Other: ");

    const ModInfoCaptions blank =
        Captions("Author: Bob\r\nAuthor: \r\nOther:    \rOther Heading: \rVersion: \t");
    EXPECT_EQ(blank.author, "(File does not contain author)");
    EXPECT_EQ(blank.other, "(File does not contain Other)");
    EXPECT_EQ(blank.otherHeading, "(File does not contain OtherHeading)");
    EXPECT_EQ(blank.version, "\t");
}

TEST(ModInfo, PrefixesAreExactAndValuesUnchanged) {
    const ModInfoValues none = Parse("author: Bob\r\n Author: Bob\r\nAuthor:Bob\r\n\nVersion: 1");
    EXPECT_FALSE(none.author);
    EXPECT_FALSE(none.version);
    // A lone line feed stays inside the line.
    const ModInfoValues values =
        Parse("Author:   Bob  \nVersion: 2\rOther Heading: Credits\r\rDescription: a && b");
    EXPECT_EQ(values.author, "  Bob  \nVersion: 2");
    EXPECT_FALSE(values.version);
    EXPECT_EQ(values.otherHeading, "Credits");
    EXPECT_FALSE(values.other);
    EXPECT_EQ(values.description, "a && b");
}

TEST(ModInfo, CaptionsAreDecodedAndCut) {
    EXPECT_EQ(Captions("Author: J\xF6rg").author, "J\xC3\xB6rg");
    const std::string caption = Captions("Other: " + std::string(12'000, '\xE4')).other;
    EXPECT_EQ(caption.size(), 2 * kMaxShownCharacters);
}

TEST(ModInfo, LongLinesAreKeptOnlyInPart) {
    ModInfoParser parser;
    parser.Feed("Version: 1\rOther Heading: ");
    const std::string piece(1'000'000, 'x');
    for (int i = 0; i < 100; ++i)
        parser.Feed(piece);
    parser.Feed("\rAuthor: " + piece);
    const ModInfoValues values = parser.Finish();
    EXPECT_EQ(values.otherHeading, piece.substr(0, ModInfoParser::kMaxValueBytes));
    EXPECT_EQ(values.author, values.otherHeading) << "whatever the length of the prefix";
    EXPECT_EQ(values.version, "1");
}

TEST(ModInfo, PiecesGiveTheSameAsTheWhole) {
    const std::string_view fragments[] = {
        "Author: ", "Description: ", "Version: ", "Other: ", "Other Heading: ", "\r", "\n", "\r\n", "", " "};
    std::mt19937 random(20'260'101);
    for (int round = 0; round < 2'000; ++round) {
        std::string bytes;
        for (auto i = random() % 30; i > 0; --i) {
            bytes += fragments[random() % std::size(fragments)];
            bytes += static_cast<char>(random());
        }
        ModInfoParser parser;
        for (std::string_view rest = bytes; !rest.empty();) {
            const std::size_t size = std::min<std::size_t>(random() % 4, rest.size());
            parser.Feed(rest.substr(0, size));
            rest.remove_prefix(size);
        }
        const ModInfoValues whole = Parse(bytes);
        ASSERT_EQ(Tie(parser.Finish()), Tie(whole)) << round;
        EXPECT_FALSE(MakeModInfoCaptions(whole).author.empty());
    }
}

} // namespace
} // namespace quillbay
