#include "platform/DosPath.h"
#include "platform/ProgramLocation.h"
#include "platform/ShellOpener.h"
#include "platform/SingleInstance.h"
#include "platform/SoundPlayer.h"
#include "platform/windows/WideText.h"
#include "support/DiskTest.h"

#include <random>
#include <windows.h>

namespace quillbay::test {
namespace {

TEST(WindowsTextTest, LosesNoUnitOfAName) {
    std::mt19937 random(20260402);
    for (int round = 0; round < 2000; ++round) {
        std::wstring name(random() % 12, L'\0');
        for (wchar_t& unit : name)
            unit = static_cast<wchar_t>(random() % 2 ? 0xD700 + random() % 0xA00 : random() % 0x10000);
        ASSERT_EQ(WidenText(NarrowText(name)), name);
    }
    EXPECT_EQ(NarrowText(L"\xD83D\xDE00 \xD83D"), "\U0001F600 \xED\xA0\xBD");
    // No two names that are not UTF-8 lead to one.
    EXPECT_NE(WidenText("\xFF"), WidenText("\xFE"));
}

class WindowsDosPathTest : public DiskTest {};

TEST_F(WindowsDosPathTest, GivesShortNamesThatLeadToTheSameFolder) {
    PutFile(temp_ / "A long name\u00E4\\with blanks\\file", "x");
    const std::string path = ShortPath(temp_ / "A long name\u00E4\\with blanks").ValueOr({});
    EXPECT_EQ(path.find_first_of(" \xC3?"), std::string::npos) << path;
    EXPECT_EQ(path.substr(1, 2), ":\\");
    EXPECT_EQ(FileBytes(path + "\\file"), "x");
    EXPECT_EQ(ShortPath(temp_ / "missing").Error(), std::errc::no_such_file_or_directory);
    EXPECT_EQ(disk_->Stat(path).ValueOr({}).name, "with blanks");
}

TEST_F(WindowsDosPathTest, FindsAFileAnywhereBelow) {
    temp_.Put("a/b/TEMPEST2.exe=x c/tempest2.exe/d/");
    EXPECT_EQ(FindFileInTree(temp_.Path(), "Tempest2.exe"), temp_ / "a\\b\\TEMPEST2.exe");
    for (const char* nowhere : {"c", "missing"})
        EXPECT_EQ(FindFileInTree(temp_ / nowhere, "Tempest2.exe"), "");
}

TEST_F(WindowsDosPathTest, TellsDrives) {
    EXPECT_EQ(SearchRoots("D:\\Games\\Quillbay"), std::vector<std::string>{"D:"});
    EXPECT_EQ(SearchRoots("\\\\server\\share\\folder"), std::vector<std::string>{"\\\\server\\share"});
    EXPECT_EQ(DriveRootText("D:\\Games"), "D:\\");
    EXPECT_EQ(DriveRootText("D:"), "D:\\");
    EXPECT_EQ(NativePath("C:\\Games\\"), "C:\\Games\\");
}

TEST(WindowsProgramTest, KnowsItsOwnFolder) {
    wchar_t file[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, file, MAX_PATH);
    ASSERT_LT(length, static_cast<DWORD>(MAX_PATH));
    const std::string own = DiskPath(FindProgramDirectory()).string();
    EXPECT_NE(own.back(), '\\');
    EXPECT_TRUE(std::filesystem::equivalent(own, std::filesystem::path(file).parent_path()));
}

TEST(WindowsProgramTest, RunsOnce) {
    auto first = SingleInstance::Acquire();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(SingleInstance::Acquire(), nullptr);
    first.reset();
    EXPECT_NE(SingleInstance::Acquire(), nullptr);
}

TEST(WindowsProgramTest, ReportsWhatCannotBeOpenedOrPlayed) {
    const TempFolder folder;
    EXPECT_EQ(MakeShellOpener()->OpenWithShell(folder / "missing.bat", folder.Path()),
              std::errc::no_such_file_or_directory);
    EXPECT_EQ(MakeSoundPlayer()->Play(folder / "missing.wav"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(MakeSoundPlayer()->Play(folder.Path()), std::errc::is_a_directory);
}

} // namespace
} // namespace quillbay::test
