#include "modinfo/ModInfoWriter.h"

#include "support/DiskTest.h"
#include "support/FaultyFileSystem.h"

#include <gtest/gtest.h>
#include <random>

namespace quillbay::test {
namespace {

const ModInfoCaptions kValues{"Tom && J\xC3\xB6rg", "one\r\nAuthor: two", "1.0 ", "", "Credits"};
const std::string kBytes =
    "Author: Tom && J\xF6rg\r\n\r\nDescription: one\r\nAuthor: two\r\n\r\nVersion: 1.0 \r\n\r\n"
    "Other Heading: Credits\r\n\r\nOther: \r\n";

class ModInfoWriter : public DiskTest {
protected:
    std::string Bytes(const std::string& path) const { return disk_->Read(path, 0, 100'000).ValueOr({}); }
    ModInfoOutcome Write(const ModInfoCaptions& values) {
        return WriteModInfo(*disk_, temp_.Path(), values).outcome;
    }
};

TEST_F(ModInfoWriter, WritesNineLinesOrReplacesTheFileOfAnotherLetterCase) {
    EXPECT_EQ(Write(kValues), ModInfoOutcome::Written);
    EXPECT_EQ(Bytes(temp_ / "ModInfo.txt"), kBytes);

    ASSERT_FALSE(disk_->Rename(temp_ / "ModInfo.txt", temp_ / "modinfo.TXT"));
    EXPECT_EQ(Write({"x", "", "", "", ""}), ModInfoOutcome::Written);
    EXPECT_EQ(disk_->List(temp_.Path(), Detail::Names)->size(), 1U);
    EXPECT_TRUE(Bytes(temp_ / "modinfo.TXT").starts_with("Author: x\r\n"));
}

TEST_F(ModInfoWriter, ReplacesTheFileAsAWholeOrNotAtAll) {
    const ModInfoResult foreign = WriteModInfo(*disk_, temp_.Path(), {"a", "\xD0\x96", "", "", ""});
    EXPECT_EQ(foreign.outcome, ModInfoOutcome::Unencodable);
    EXPECT_EQ(foreign.character, "\xD0\x96");
    EXPECT_TRUE(disk_->List(temp_.Path(), Detail::Names)->empty());
    EXPECT_EQ(WriteModInfo(*disk_, temp_ / "gone", kValues).outcome, ModInfoOutcome::Failed);

    const std::string longest = "Other: " + std::string(kMaxShownCharacters, '\xE4');
    PutFile(temp_ / "ModInfo.txt", longest + "\xE4");
    EXPECT_EQ(Write(kValues), ModInfoOutcome::CutValue);
    EXPECT_EQ(Bytes(temp_ / "ModInfo.txt"), longest + "\xE4");
    PutFile(temp_ / "ModInfo.txt", longest);
    EXPECT_EQ(Write(kValues), ModInfoOutcome::Written);

    for (std::size_t step = 1; step <= 3; ++step) { // listing, reading, writing
        FaultyFileSystem files(*disk_);
        files.Arm(step, FaultyFileSystem::Fault::Fail, std::errc::no_space_on_device);
        EXPECT_EQ(WriteModInfo(files, temp_.Path(), {}).outcome, ModInfoOutcome::Failed);
        EXPECT_EQ(Bytes(temp_ / "ModInfo.txt"), kBytes);
    }
}

TEST_F(ModInfoWriter, WhatIsWrittenIsReadAgain) {
    std::mt19937 random(20'260'202);
    const auto text = [&] {
        std::string bytes = "x";
        for (auto size = random() % 40; size > 0; --size)
            if (const char byte = static_cast<char>(random()); byte != '\r')
                bytes.insert(random() % bytes.size(), 1, byte);
        return DecodeSystemText(bytes);
    };
    for (int round = 0; round < 300; ++round) {
        const ModInfoCaptions values{text(), text(), text(), text(), text()};
        ASSERT_EQ(Write(values), ModInfoOutcome::Written);
        ASSERT_EQ(MakeModInfoCaptions(ReadModInfo(*disk_, temp_ / "ModInfo.txt")), values) << round;
    }
}

} // namespace
} // namespace quillbay::test
