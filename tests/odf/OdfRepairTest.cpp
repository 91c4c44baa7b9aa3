#include "odf/OdfRepair.h"

#include "odf/OdfFile.h"
#include "support/DiskTest.h"
#include "support/FaultyFileSystem.h"

#include <random>
#include <regex>

namespace quillbay {
namespace {

TEST(OdfRepair, EveryByteSurvivesButLineEnds) {
    EXPECT_EQ(OdfBytesToText("a\nb\rc\r\n"), "a\u2028b\r\nc");
    EXPECT_EQ(OdfTextToBytes("a\u2028b\r\nc\u2603").unencodable, "\u2603");

    std::mt19937 random(20'260'108);
    for (int round = 0; round < 3'000; ++round) {
        std::string bytes;
        for (auto count = random() % 40; count > 0; --count)
            bytes += random() % 3 == 0 ? "\r\n\r/ "[random() % 5] : static_cast<char>(random());
        std::string expected = std::regex_replace(bytes, std::regex("\r\n?"), "\r\n");
        if (!expected.ends_with("\r\n")) expected += "\r\n";
        ASSERT_EQ(OdfTextToBytes(OdfBytesToText(bytes)).bytes, expected);
    }
}

TEST(OdfRepair, RemovesCommentLinesAndBlankLinesOnly) {
    EXPECT_EQ(RemoveUnusedLines("// a\r\nb // c\r   \r\n //d\r\t\r\n\r\ne"), "b // c\r\n //d\r\n\t\r\ne\r\n");
    EXPECT_EQ(RemoveUnusedLines("// a\r\n  \r\n"), "");
    EXPECT_EQ(RemoveUnusedLines("a\rb"), std::nullopt);
    EXPECT_EQ(RemoveUnusedLines("// a\nrace = \"x\"\r\n"), std::nullopt);
}

class ReplaceOdfTest : public test::DiskTest {};

TEST_F(ReplaceOdfTest, IsWholeOrNotAtAll) {
    const std::string path = temp_ / "a.odf";
    test::PutFile(path, "old");
    ASSERT_FALSE(disk_->SetReadOnly(path, true));
    FaultyFileSystem files(*disk_);
    files.Arm(2, FaultyFileSystem::Fault::Fail, std::errc::no_space_on_device);
    EXPECT_EQ(ReplaceOdf(files, path, "new"), std::errc::no_space_on_device);
    EXPECT_EQ(test::FileBytes(path), "old");
    EXPECT_TRUE(disk_->Stat(path)->readOnly);
    EXPECT_FALSE(ReplaceOdf(*disk_, path, "new"));
    EXPECT_EQ(test::FileBytes(path), "new");
    EXPECT_FALSE(disk_->Stat(path)->readOnly);
}

TEST_F(ReplaceOdfTest, LeavesTheAttributeThatASecondNameShares) {
    const std::string path = temp_ / "a.odf";
    const std::string saved = temp_ / "saved.odf";
    test::PutFile(path, "old");
    ASSERT_FALSE(disk_->HardLink(path, saved, false));
    ASSERT_FALSE(disk_->SetReadOnly(path, true));
    FaultyFileSystem files(*disk_);
    files.Arm(2, FaultyFileSystem::Fault::Fail, std::errc::permission_denied); // as Windows does
    EXPECT_EQ(ReplaceOdf(files, path, "new"), std::errc::permission_denied);
    EXPECT_TRUE(disk_->Stat(saved)->readOnly);
}

} // namespace
} // namespace quillbay
