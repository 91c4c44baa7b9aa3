#include "library/InstalledMods.h"

#include "library/ModJob.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace quillbay {
namespace {

TEST(InstalledMods, OnlyTheExactNameIsListedButAnyCaseCounts) {
    TempFolder temp;
    for (const char* folder : {"A\\Backup", "A\\Addon\\X\\Backup", "B\\backup", "C", "Backup"}) {
        temp.MakeFolders(folder);
    }
    temp.WriteFile("C\\Backup", "a file");
    const FileSystem& files = temp.Files();

    EXPECT_TRUE(IsInstalled(files, temp.Path("A")));
    EXPECT_TRUE(IsInstalled(files, temp.Path("B")));
    EXPECT_FALSE(IsInstalled(files, temp.Path("C")));
    EXPECT_FALSE(IsInstalled(files, temp.Path("missing")));
    EXPECT_FALSE(IsInstalled(files, ""));

    const std::vector<ModRow> rows = {{"    none", {}}, {"A", {"A"}}, {"    X", {"A\\Addon\\X"}},
                                      {"B", {"B"}},     {"C", {"C"}}, {"gone", {"gone"}}};
    const std::vector<ModRow> expected = {rows[1], rows[2]};
    EXPECT_EQ(FilterInstalled(files, temp.Path(), rows), expected);
    EXPECT_EQ(FindBackup(*files.List(temp.Path("B"), Detail::Names)), "backup");
    EXPECT_FALSE(FindBackup(*files.List(temp.Path("C"), Detail::Names)));
}

TEST(ModJob, AnEmptyModPathNamesNoFolder) {
    EXPECT_EQ((ModJob{"g", "C:\\mods", {"A\\Addon\\X"}}.ModFolder()), "C:\\mods\\A\\Addon\\X");
    EXPECT_EQ((ModJob{"g", "C:\\mods", {}}.ModFolder()), "");
}

TEST(CheckGameDirectory, RefusesMissingFoldersAndTheLibraryItself) {
    TempFolder temp;
    for (const char* folder : {"game\\mods\\A\\odf", "game\\mods2", "other"})
        temp.MakeFolders(folder);
    temp.WriteFile("file", "x");
    const std::string mods = temp.Path("game\\mods");
    const auto check = [&](const std::string& game) { return CheckGameDirectory(temp.Files(), game, mods); };

    EXPECT_EQ(check(""), GameDirectoryState::Missing);
    EXPECT_EQ(check("(Tempest II directory not found)"), GameDirectoryState::Missing);
    EXPECT_EQ(check(temp.Path("gone")), GameDirectoryState::Missing);
    EXPECT_EQ(check(temp.Path("file")), GameDirectoryState::Missing);
    EXPECT_EQ(check(mods), GameDirectoryState::InsideMods);
    EXPECT_EQ(check(temp.Path("game\\MODS\\a\\odf\\")), GameDirectoryState::InsideMods);
    EXPECT_EQ(check(temp.Path("other\\..\\game\\mods\\A")), GameDirectoryState::InsideMods);
    EXPECT_EQ(check(temp.Path("game\\mods2")), GameDirectoryState::Usable);
    EXPECT_EQ(check(temp.Path("game")), GameDirectoryState::Usable);
    EXPECT_EQ(CheckGameDirectory(temp.Files(), temp.Path("other"), temp.Path("gone")),
              GameDirectoryState::Usable);
}

} // namespace
} // namespace quillbay
