#include "modinfo/ModDetails.h"
#include "modinfo/ModInfoWriter.h"
#include "support/FaultyFileSystem.h"
#include "support/ListingFileSystem.h"
#include "support/TempFolder.h"

namespace quillbay::test {
namespace {

class ModInfo : public DiskTest {
protected:
    /// The details when the folder lists `first` before all others.
    ModDetails Details(const char* first = "") const {
        return ReadModDetails(ListingFileSystem(*disk_, first), temp_.Path());
    }
    const std::string file_ = temp_ / "ModInfo.txt";
};

ModInfoValues Parse(std::string_view bytes) {
    ModInfoParser parser;
    parser.Feed(bytes);
    return parser.Finish();
}

/// In the order of the file.
std::string Shown(const std::optional<ModInfoValues>& values) {
    const auto [author, description, version, other, heading] = MakeModInfoCaptions(values);
    return author + '|' + description + '|' + version + '|' + heading + '|' + other;
}

TEST_F(ModInfo, ValuesAreShownUnchangedAndFallbackTextsTellWhyThereIsNone) {
    const std::string absent = "(File 'ModInfo.txt' not found)";
    EXPECT_EQ(Shown(std::nullopt), absent + '|' + absent + '|' + absent + "|Other: |" + absent);
    const std::string author = "(File does not contain author)|";
    const std::string description = "(File does not contain description)|";
    const std::string version = "(File does not contain version number)|";
    const std::string other = "(File does not contain 'other')";
    const std::pair<std::string, std::string> cases[] = {
        {"author: Bob\r\n Author: Bob\r\nAuthor:Bob\r\n\nVersion: 1",
         author + description + version + "Other: |" + other},
        {"Author: Bob\r\nAuthor: \r\nOther:    \rOther Heading: \rVersion: \t",
         author + description + "\t|(File does not contain OtherHeading)|(File does not contain Other)"},
        // A lone line feed stays inside the line.
        {"Author:   Bob  \nVersion: 2\rOther Heading: Credits\r\rDescription: J\xF6rg && b",
         "  Bob  \nVersion: 2|J\xC3\xB6rg && b|" + version + "Credits|" + other},
    };
    for (const auto& [bytes, shown] : cases)
        EXPECT_EQ(Shown(Parse(bytes)), shown) << bytes;
}

TEST_F(ModInfo, IsReplacedAsAWholeOrNotAtAllInAnyLetterCase) {
    const std::string file = temp_ / "modinfo.TXT";
    PutFile(file, "Other: " + std::string(kMaxShownCharacters, '\xE4')); // not cut
    const ModInfoCaptions values{"Tom && J\xC3\xB6rg", "one\r\nAuthor: two", "1.0 ", "", "Credits"};
    EXPECT_EQ(WriteModInfo(*disk_, temp_.Path(), values).outcome, ModInfoOutcome::Written);
    const std::string bytes = "Author: Tom && J\xF6rg\r\n\r\nDescription: one\r\nAuthor: two\r\n\r\n"
                              "Version: 1.0 \r\n\r\nOther Heading: Credits\r\n\r\nOther: \r\n";
    EXPECT_EQ(FileBytes(file), bytes);
    EXPECT_EQ(disk_->List(temp_.Path(), Detail::Names)->size(), 1U);

    for (std::size_t step = 1; step <= 3; ++step) { // listing, reading, writing
        FaultyFileSystem files(*disk_);
        files.Arm(step, FaultyFileSystem::Fault::Fail, std::errc::no_space_on_device);
        EXPECT_EQ(WriteModInfo(files, temp_.Path(), {}).outcome, ModInfoOutcome::Failed) << step;
        EXPECT_EQ(FileBytes(file), bytes) << step;
    }
}

TEST_F(ModInfo, SizeAndCountAreWithoutWhatTheProgramKeeps) {
    temp_.Put("file=12345 Backup/odf/saved=123 Addon/A/own=1");
    const auto expectSame = [&] {
        EXPECT_EQ(Details().size, 9U);
        EXPECT_EQ(Details().fileCount, 1U);
    };
    expectSame();
    for (const std::string folder : {"", "Addon/A/"})
        temp_.Put(folder + "Backup/~quillbay.record=12 " + folder + "Changed/then/odf/a=3 " + folder +
                  "~quillbay.bak/b=45");
    expectSame();
}

TEST_F(ModInfo, TheListingOrderDecidesBetweenPictures) {
    using Paths = std::vector<std::string>;
    const std::string bitmap = temp_ / "ModPic.bmp";
    const std::string jpeg = temp_ / "ModPic.jpg";
    PutFile(temp_ / "modpic.gif", "");
    EXPECT_FALSE(Details().hasPicture);
    PutFile(jpeg, "");
    EXPECT_TRUE(Details("modpic.gif").hasPicture);
    EXPECT_EQ(Details("modpic.gif").pictures, Paths{});
    PutFile(bitmap, "");
    EXPECT_EQ(Details("ModPic.bmp").pictures, Paths{bitmap});
    EXPECT_EQ(Details("ModPic.jpg").pictures, (Paths{bitmap, jpeg}));
}

} // namespace
} // namespace quillbay::test
