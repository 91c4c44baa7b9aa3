#include "library/InstalledMods.h"
#include "library/KnownFolders.h"
#include "library/ModRows.h"
#include "modinfo/ModDetails.h"
#include "support/DiskTest.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace quillbay::test {
namespace {

class PosixLetterCaseTest : public DiskTest {};

std::size_t PositionOf(std::string_view folder) {
    const auto at = std::find(GameFolders.begin(), GameFolders.end(), folder);
    return static_cast<std::size_t>(at - GameFolders.begin());
}

TEST_F(PosixLetterCaseTest, FoldersThatDifferInCaseOnlyShareAPositionAtEveryLevel) {
    for (const char* folder : {"ODF\\Ships", "odf\\SHIPS", "odf\\ships", "Odf"})
        PutFolder(temp_ / folder);
    const KnownFolders known = ListKnownFolders(*disk_, temp_.Path(), Detail::Names);

    const auto& odf = known[PositionOf(R"(odf\)")];
    ASSERT_EQ(odf.size(), 3U);
    EXPECT_EQ(odf[0].path, temp_ / "odf");
    const auto& ships = known[PositionOf(R"(odf\ships\)")];
    ASSERT_EQ(ships.size(), 3U);
    EXPECT_EQ(ships[0].path, temp_ / "odf\\ships");
    EXPECT_EQ(ships[1].path, temp_ / "odf\\SHIPS");
    EXPECT_EQ(ships[2].path, temp_ / "ODF\\Ships");
}

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
