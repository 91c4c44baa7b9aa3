#include "library/InstalledMods.h"

#include "library/ModJob.h"
#include "support/DiskTest.h"

#include <gtest/gtest.h>

namespace quillbay::test {
namespace {

class InstalledModsTest : public DiskTest {};

TEST_F(InstalledModsTest, OnlyTheExactNameIsListedButAnyCaseCounts) {
    for (const char* folder : {"A\\Backup", "B\\backup", "C", "Backup"}) {
        PutFolder(temp_ / folder);
    }
    PutFile(temp_ / "C\\Backup", "a file");

    EXPECT_TRUE(IsInstalled(*disk_, temp_ / "A"));
    EXPECT_TRUE(IsInstalled(*disk_, temp_ / "B"));
    EXPECT_FALSE(IsInstalled(*disk_, temp_ / "C"));
    EXPECT_FALSE(IsInstalled(*disk_, temp_ / "missing"));
    EXPECT_FALSE(IsInstalled(*disk_, ""));
    const std::vector<ModRow> rows = {{"    none", {}}, {"A", {"A"}}, {"B", {"B"}}, {"C", {"C"}}};
    EXPECT_EQ(FilterInstalled(*disk_, temp_.Path(), rows), std::vector{rows[1]});
}

TEST(ModJob, AnEmptyModPathNamesNoFolder) {
    EXPECT_EQ((ModJob{"g", "C:\\mods", {"A\\Addon\\X"}}.ModFolder()), "C:\\mods\\A\\Addon\\X");
    EXPECT_EQ((ModJob{"g", "C:\\mods", {}}.ModFolder()), "");
}

TEST_F(InstalledModsTest, GameDirectoryRefusesMissingFoldersAndTheLibraryItself) {
    for (const char* folder : {"game\\mods\\A\\odf", "game\\mods2", "other"})
        PutFolder(temp_ / folder);
    PutFile(temp_ / "file", "x");
    const std::string mods = temp_ / "game\\mods";
    const auto check = [&](const std::string& game) { return CheckGameDirectory(*disk_, game, mods); };

    EXPECT_EQ(check(temp_ / "file"), GameDirectoryState::Missing);
    EXPECT_EQ(check(mods), GameDirectoryState::InsideMods);
    EXPECT_EQ(check(temp_ / "game\\MODS\\a\\odf\\"), GameDirectoryState::InsideMods);
    EXPECT_EQ(check(temp_ / "other\\..\\game\\mods\\A"), GameDirectoryState::InsideMods);
    EXPECT_EQ(check(temp_ / "game\\mods2"), GameDirectoryState::Usable);
    EXPECT_EQ(check(temp_ / "game"), GameDirectoryState::Usable);
    EXPECT_EQ(CheckGameDirectory(*disk_, temp_ / "other", temp_ / "gone"), GameDirectoryState::Usable);
}

} // namespace
} // namespace quillbay::test
