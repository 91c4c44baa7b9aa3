#include "library/InstalledMods.h"
#include "library/KnownFolders.h"
#include "library/ModRows.h"
#include "modinfo/ModDetails.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace quillbay {
namespace {

std::size_t PositionOf(std::string_view folder) {
    const auto at = std::find(GameFolders.begin(), GameFolders.end(), folder);
    return static_cast<std::size_t>(at - GameFolders.begin());
}

TEST(LetterCase, FoldersThatDifferInCaseOnlyShareAPositionAtEveryLevel) {
    TempFolder temp;
    for (const char* folder : {"ODF\\Ships", "odf\\SHIPS", "odf\\ships", "Odf"})
        temp.MakeFolders(folder);
    const KnownFolders known = ListKnownFolders(temp.Files(), temp.Path(), Detail::Names);

    const auto& odf = known[PositionOf(R"(odf\)")];
    ASSERT_EQ(odf.size(), 3U);
    EXPECT_EQ(odf[0].path, temp.Path("odf"));
    const auto& ships = known[PositionOf(R"(odf\ships\)")];
    ASSERT_EQ(ships.size(), 3U);
    EXPECT_EQ(ships[0].path, temp.Path("odf\\ships"));
    EXPECT_EQ(ships[1].path, temp.Path("odf\\SHIPS"));
    EXPECT_EQ(ships[2].path, temp.Path("ODF\\Ships"));
}

TEST(LetterCase, TheExactSpellingWins) {
    TempFolder temp;
    for (const char* folder : {"Mods\\Old", "mods\\New\\ADDON\\no", "mods\\New\\Addon\\yes"}) {
        temp.MakeFolders(folder);
    }
    EXPECT_FALSE(PrepareModsFolder(temp.Files(), temp.Path()));
    EXPECT_EQ(temp.Files().Stat(temp.Path("Mods")).ValueOr({}).name, "Mods");
    const std::vector<ModRow> rows = ScanModLibrary(temp.Files(), ModsFolder(temp.Path()));
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[1].path.text, "New\\Addon\\yes");

    temp.WriteFile("mods\\New\\modinfo.txt", "Author: no");
    temp.WriteFile("mods\\New\\MODINFO.TXT", "Author: no");
    temp.WriteFile("mods\\New\\ModInfo.txt", "Author: yes");
    EXPECT_EQ(ReadModDetails(temp.Files(), temp.Path("mods\\New")).captions.author, "yes");
}

TEST(LetterCase, AFileHidesNoBackupFolder) {
    TempFolder temp;
    temp.WriteFile("mod\\Backup", "a file");
    EXPECT_FALSE(IsInstalled(temp.Files(), temp.Path("mod")));
    temp.MakeFolders("mod\\bACKUP");
    EXPECT_TRUE(IsInstalled(temp.Files(), temp.Path("mod")));
    EXPECT_FALSE(HasExactBackup(temp.Files(), temp.Path("mod")));
}

} // namespace
} // namespace quillbay
