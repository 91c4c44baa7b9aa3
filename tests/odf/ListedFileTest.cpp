#include "odf/ListedFile.h"

#include "support/DiskTest.h"
#include "support/FaultyFileSystem.h"

namespace quillbay::test {
namespace {

class ListedFileTest : public DiskTest {};

TEST_F(ListedFileTest, PastesWithoutOverwritingAndLeavesNothingWhenItFails) {
    PutFile(temp_ / "from\\scout.odf", "new");
    PutFile(temp_ / "taken\\SCOUT.odf", "old");
    PutFile(temp_ / "also\\other.odf", "x");
    const ListedFile file{temp_ / "from\\scout.odf", "scout.odf"};
    const auto paste = [&](FileSystem& files, const std::vector<std::string>& folders) {
        return PasteFile(files, file, folders);
    };
    EXPECT_EQ(paste(*disk_, {temp_ / "also", temp_ / "taken"}), std::errc::file_exists);
    EXPECT_EQ(paste(*disk_, {temp_ / "from"}), std::errc::file_exists);
    EXPECT_TRUE(paste(*disk_, {temp_ / "gone"}));
    EXPECT_TRUE(paste(*disk_, {}));
    EXPECT_EQ(FileBytes(temp_ / "taken\\SCOUT.odf"), "old");

    FaultyFileSystem faulty(*disk_);
    faulty.Arm(3, FaultyFileSystem::Fault::Fail, std::errc::no_space_on_device);
    EXPECT_EQ(paste(faulty, {temp_ / "also"}), std::errc::no_space_on_device);
    EXPECT_EQ(ListFiles(*disk_, {temp_ / "also", temp_ / "gone"}).size(), 1U);
    EXPECT_FALSE(paste(*disk_, {temp_ / "also"}));
    EXPECT_EQ(FileBytes(temp_ / "also\\scout.odf"), "new");
}

TEST_F(ListedFileTest, AFileOfAnotherLetterCaseIsAnother) {
    PutFile(temp_ / "Scout.odf", "x");
    const ListedFile other{temp_ / "scout.odf", "scout.odf"};
    const ListedFile file{temp_ / "Scout.odf", "Scout.odf"};
    EXPECT_FALSE(IsStillThere(*disk_, other));
    PutFolder(temp_ / "to");
    EXPECT_EQ(PasteFile(*disk_, other, {temp_ / "to"}), std::errc::no_such_file_or_directory);
    EXPECT_FALSE(RemoveListedFile(*disk_, other));
    EXPECT_TRUE(IsStillThere(*disk_, file));
    EXPECT_FALSE(RemoveListedFile(*disk_, file));
    EXPECT_FALSE(IsStillThere(*disk_, file));
    EXPECT_FALSE(RemoveListedFile(*disk_, file));
}

} // namespace
} // namespace quillbay::test
