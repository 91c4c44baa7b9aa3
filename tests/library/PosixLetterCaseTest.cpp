#include "library/InstalledMods.h"
#include "library/ModRows.h"
#include "modinfo/ModDetails.h"
#include "support/DiskTest.h"

#include <gtest/gtest.h>

namespace quillbay::test {
namespace {

class PosixLetterCaseTest : public DiskTest {};

TEST_F(PosixLetterCaseTest, TheExactSpellingWins) {
    for (const char* folder : {"Mods\\Old", "mods\\New\\ADDON\\no", "mods\\New\\Addon\\yes"}) {
        PutFolder(temp_ / folder);
    }
    EXPECT_FALSE(PrepareModsFolder(*disk_, temp_.Path()));
    EXPECT_EQ(disk_->Stat(temp_ / "Mods").ValueOr({}).name, "Mods");
    const std::vector<ModRow> rows = ScanModLibrary(*disk_, ModsFolder(temp_.Path()));
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[1].path.text, "New\\Addon\\yes");

    PutFile(temp_ / "mods\\New\\modinfo.txt", "Author: no");
    PutFile(temp_ / "mods\\New\\MODINFO.TXT", "Author: no");
    PutFile(temp_ / "mods\\New\\ModInfo.txt", "Author: yes");
    EXPECT_EQ(ReadModDetails(*disk_, temp_ / "mods\\New").captions.author, "yes");
}

TEST_F(PosixLetterCaseTest, AFileHidesNoBackupFolder) {
    PutFile(temp_ / "mod\\Backup", "a file");
    EXPECT_FALSE(IsInstalled(*disk_, temp_ / "mod"));
    PutFolder(temp_ / "mod\\bACKUP");
    EXPECT_TRUE(IsInstalled(*disk_, temp_ / "mod"));
    EXPECT_FALSE(HasExactBackup(*disk_, temp_ / "mod"));
}

} // namespace
} // namespace quillbay::test
