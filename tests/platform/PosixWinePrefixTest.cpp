#include "platform/DosPath.h"
#include "platform/Registry.h"
#include "platform/posix/ProgramFolder.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillbay::test {
namespace {

/// A prefix with drives C: (its own), D: (a folder elsewhere) and Z: (everything).
class PosixWinePrefixTest : public testing::Test {
protected:
    PosixWinePrefixTest() {
        for (const char* folder : {"prefix\\drive_c\\Games", "prefix\\dosdevices", "disk\\T2"})
            PutFolder(temp_ / folder);
        for (const auto& [drive, text] :
             {std::pair{"c:", std::string("../drive_c")}, {"d:", disk_}, {"e:", "gone"}, {"z:", "/"}})
            std::filesystem::create_symlink(text, prefix_ + "/dosdevices/" + drive);
    }

    TempFolder temp_;
    std::string prefix_ = DiskText(temp_ / "prefix");
    std::string disk_ = DiskText(temp_ / "disk");
    ScopedVariable variable_{"WINEPREFIX", prefix_};
};

TEST_F(PosixWinePrefixTest, DosPathsLeadToTheirDrives) {
    EXPECT_EQ(NativePath("C:\\Games\\T2\\"), prefix_ + "/drive_c/Games/T2/");
    EXPECT_EQ(NativePath("d:/T2"), disk_ + "/T2");
    EXPECT_EQ(NativePath("C:"), prefix_ + "/drive_c");
    EXPECT_EQ(NativePath("Z:\\usr"), "/usr");
    EXPECT_EQ(NativePath("Z:"), "/");
    for (const auto* text : {"E:\\gone", "Q:\\none", "C:relative", "/usr", "", "\\\\host\\share"})
        EXPECT_EQ(NativePath(text), text);
    const ScopedVariable home("HOME", prefix_);
    const ScopedVariable none("WINEPREFIX", std::nullopt);
    EXPECT_EQ(NativePath("C:\\Games"), "C:\\Games");
    std::filesystem::create_symlink(prefix_, prefix_ + "/.wine");
    EXPECT_EQ(NativePath("C:\\Games"), prefix_ + "/drive_c/Games");
}

TEST_F(PosixWinePrefixTest, FoldersHaveADosPathInThePrefixThatHoldsThem) {
    std::string zForm = "Z:" + temp_.Path();
    std::ranges::replace(zForm, '/', '\\');
    for (const auto& [folder, path] : {std::pair{temp_ / "prefix\\drive_c\\GAMES", std::string("C:\\Games")},
                                       {temp_ / "prefix\\drive_c", "C:\\"},
                                       {temp_ / "disk\\T2", "D:\\T2"},
                                       {temp_.Path(), zForm}})
        EXPECT_EQ(ShortPath(folder).ValueOr({}), path);
    EXPECT_EQ(ShortPath(temp_ / "none").Error(), std::errc::no_such_file_or_directory);

    // Another prefix is found by what lies in it; the drives of the user's own do not count there.
    const ScopedVariable other("WINEPREFIX", disk_);
    EXPECT_EQ(ShortPath(temp_ / "prefix\\drive_c\\Games").ValueOr({}), "C:\\Games");
    EXPECT_EQ(ShortPath(temp_ / "disk\\T2").Error(), std::errc::no_such_file_or_directory);
}

TEST_F(PosixWinePrefixTest, TheSearchEndsAtTheProgramsDriveAndFollowsNoLinks) {
    const std::string root = prefix_ + "/drive_c";
    EXPECT_EQ(SearchRoots(temp_ / "prefix\\drive_c\\Games"), std::vector{root});
    EXPECT_EQ(SearchRoots(temp_ / "disk\\T2"), (std::vector{root, disk_}));
    EXPECT_EQ(SearchRoots(temp_.Path()), std::vector{root});
    EXPECT_EQ(DriveRootText("/anywhere"), "C:\\");

    PutFile(temp_ / "disk\\T2\\Tempest2.exe", "x");
    PutFile(temp_ / "prefix\\drive_c\\a\\b\\tempest2.EXE", "x");
    PutFolder(temp_ / "prefix\\drive_c\\Games\\Tempest2.exe");
    EXPECT_EQ(FindFileInTree(root, "Tempest2.exe"), root + "/a/b/tempest2.EXE");
    for (const auto& nowhere : {prefix_ + "/dosdevices", prefix_ + "/none", std::string()})
        EXPECT_EQ(FindFileInTree(nowhere, "Tempest2.exe"), "");
}

TEST_F(PosixWinePrefixTest, TheRegistryIsThatOfThePrefix) {
    const auto registry = MakeRegistry();
    const std::string file = prefix_ + "/system.reg";
    const auto read = [&] { return registry->ReadRegistryString("Software\\A", "Path", "fallback"); };
    EXPECT_EQ(read(), "fallback");
    // Larger than one piece of reading.
    PutFile(file, "WINE REGISTRY Version 2\n" + std::string(500'000, '\n') +
                      "[Software\\\\Wow6432Node\\\\A] 1\n\"Path\"=\"C:\\\\T2\\\\\"\n");
    EXPECT_EQ(read(), "C:\\T2\\");
    EXPECT_EQ(registry->ReadRegistryString("Software\\B", "Path"), "");
    std::filesystem::remove(file);
    PutFolder(file);
    EXPECT_EQ(read(), "fallback");
}

TEST(PosixProgramFolderTest, AnInstalledProgramKeepsItsModsInTheUsersFolder) {
    const TempFolder temp;
    const ScopedVariable data("XDG_DATA_HOME", temp.Path() + "/new/data");
    EXPECT_EQ(ChooseProgramFolder(temp.Path()), temp.Path());
    EXPECT_EQ(ChooseProgramFolder(temp.Path() + "/unwritable"), temp.Path() + "/new/data/quillbay");
    EXPECT_TRUE(std::filesystem::is_directory(temp.Path() + "/new/data/quillbay"));
    const ScopedVariable home("HOME", temp.Path());
    const ScopedVariable relative("XDG_DATA_HOME", "somewhere");
    EXPECT_EQ(ChooseProgramFolder(temp.Path() + "/unwritable"), temp.Path() + "/.local/share/quillbay");
}

TEST(PosixProgramFolderTest, ModsBesideTheProgramCountsForWhoMayWriteToIt) {
    const TempFolder temp;
    const ScopedVariable data("XDG_DATA_HOME", temp.Path() + "/data");
    const std::string program = temp.Path() + "/program";
    const std::string mods = program + "/mods";
    PutFolder(mods);
    ASSERT_EQ(::chmod(program.c_str(), 0555) + ::chmod(mods.c_str(), 0755), 0);
    EXPECT_EQ(ChooseProgramFolder(program), program);
    ASSERT_EQ(::chmod(mods.c_str(), 0555), 0);
    const pid_t child = ::fork();
    if (child == 0) { // for root there is no folder without permission
        const bool isOrdinary = ::geteuid() != 0 || ::setuid(65534) == 0;
        ::_exit(isOrdinary && ChooseProgramFolder(program) == temp.Path() + "/data/quillbay" ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace quillbay::test
