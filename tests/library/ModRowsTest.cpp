#include "library/ModRows.h"

#include "support/DiskTest.h"
#include "support/ListingFileSystem.h"

#include <gtest/gtest.h>

namespace quillbay::test {
namespace {

class ModRowsTest : public DiskTest {};

TEST(ResolveModPath, AddonsBelongToTheNearestModAbove) {
    const std::vector<std::pair<std::string, std::string>> rows = {{"    Lost", ""},
                                                                   {"A", "A"},
                                                                   {"    X", "A\\Addon\\X"},
                                                                   {"    Y", "A\\Addon\\Y"},
                                                                   {"   B", "   B"},
                                                                   {"      Z", "   B\\Addon\\  Z"},
                                                                   {"    ", ""},
                                                                   {"", ""},
                                                                   {"(No mods found.)", ""},
                                                                   {"    X", ""}};
    for (std::size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(ResolveModPath([&](std::size_t at) { return rows.at(at).first; }, i).text, rows[i].second);
}

TEST_F(ModRowsTest, ScanListsModsSortedWithTheirAddonsReversed) {
    for (const char* folder :
         {"b", "A\\Addon\\X", "A\\Addon\\Y", "A\\Backup", "C\\aDDon\\Z", "~quillbay.new",
          "A\\Addon\\~quillbay.bak", "    blank\\Addon\\Hidden", ".dot", "(No mods found.)"}) {
        PutFolder(temp_ / folder);
    }
    PutFile(temp_ / "readme.txt", "no mod");
    PutFile(temp_ / "A\\Addon\\file.txt", "no addon");
    PutFile(temp_ / "b\\Addon", "a file");
    const ListingFileSystem files(*disk_);

    const std::vector<ModRow> rows = ScanModLibrary(files, temp_.Path());

    const std::vector<ModRow> expected = {
        {"    blank", {}},          {"(No mods found.)", {}},   {".dot", {".dot"}}, {"A", {"A"}},
        {"    Y", {"A\\Addon\\Y"}}, {"    X", {"A\\Addon\\X"}}, {"b", {"b"}},       {"C", {"C"}},
        {"    Z", {"C\\Addon\\Z"}}};
    ASSERT_EQ(rows, expected);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(ResolveModPath([&](std::size_t at) { return rows.at(at).text; }, i), rows[i].path) << i;
    }
    for (const auto& [folder, times] : files.listed)
        EXPECT_EQ(times, 1) << folder;
}

TEST_F(ModRowsTest, AFileOfThatNameStaysAndHasNoRows) {
    PutFile(temp_ / "Mods", "data");
    EXPECT_FALSE(PrepareModsFolder(*disk_, temp_.Path()));
    EXPECT_EQ(FileBytes(temp_ / "Mods"), "data");
    EXPECT_TRUE(ScanModLibrary(*disk_, temp_ / "Mods").empty());
}

TEST_F(ModRowsTest, PrepareFolderMakesTheFolderOrGivesItItsLowerCaseName) {
    EXPECT_TRUE(PrepareModsFolder(*disk_, temp_.Path()));
    EXPECT_FALSE(PrepareModsFolder(*disk_, temp_.Path()));
    ASSERT_FALSE(disk_->Rename(temp_ / "mods", temp_ / "MODS"));
    PutFolder(temp_ / "MODS\\A");
    EXPECT_FALSE(PrepareModsFolder(*disk_, temp_.Path()));
    EXPECT_EQ(disk_->Stat(temp_ / "mods").ValueOr({}).name, "mods");
    EXPECT_EQ(ScanModLibrary(*disk_, ModsFolder(temp_.Path())).size(), 1U);
}

} // namespace
} // namespace quillbay::test
