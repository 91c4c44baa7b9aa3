#include "platform/DosPath.h"
#include "platform/ProgramLocation.h"
#include "platform/Registry.h"
#include "platform/ShellOpener.h"
#include "platform/SingleInstance.h"
#include "platform/SoundPlayer.h"
#include "platform/windows/CodePageCodec.h"
#include "platform/windows/WideText.h"
#include "support/ImportPatch.h"
#include "support/TempFolder.h"

#include <random>
#include <shellapi.h>
#include <string_view>
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
    const ProgramPlaces places = FindProgramPlaces();
    EXPECT_TRUE(places.user.ends_with("\\AppData\\Local\\Quillbay"));
    EXPECT_FALSE(places.isForPrograms || places.isEmptiedBySystem);
    const std::string own = DiskPath(places.executable).string();
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

std::wstring Seen;

BOOL WINAPI KnowNoProgram(SHELLEXECUTEINFOW* how) {
    Seen += how->lpVerb + std::wstring(L" ");
    SetLastError(ERROR_NO_ASSOCIATION);
    return how->lpVerb == std::wstring(L"openas");
}
HANDLE WINAPI TakeMutex(SECURITY_ATTRIBUTES*, BOOL, const wchar_t* name) {
    Seen = name;
    SetLastError(ERROR_SUCCESS);
    return nullptr;
}

TEST(WindowsProgramTest, LetsTheUserChooseAProgramForAnUnknownType) {
    const ImportPatch patch(nullptr, "ShellExecuteExW", &KnowNoProgram);
    EXPECT_FALSE(MakeShellOpener()->OpenWithShell("C:\\readme.unknown", ""));
    EXPECT_EQ(Seen, L"open openas ");
}

TEST(WindowsProgramTest, TellsUsersOfOneNameApart) {
    const ImportPatch patch(nullptr, "CreateMutexW", &TakeMutex);
    EXPECT_TRUE(SingleInstance::Acquire());
    EXPECT_TRUE(Seen.starts_with(L"Global\\quillbay.S-1-")) << NarrowText(Seen);
}

constexpr unsigned kWestern = 1252, kJapanese = 932, kTraditionalChinese = 950, kUtf8 = 65001;

TEST(WindowsCodePageTest, ReadsAndWritesTheCharactersOfACodePage) {
    for (const auto& [codePage, bytes, text] : {std::tuple{kWestern, "\x80 \xE4", "\u20AC \u00E4"},
                                                {kJapanese, "\x83\x41.odf", "\u30A2.odf"},
                                                {kUtf8, "\u30A2\U0001F600", "\u30A2\U0001F600"},
                                                // Bytes that are no characters.
                                                {kJapanese, "a\x83", "a\uF783"},
                                                {kUtf8, "a\xFF\xC3\xA4", "a\uF7FF\u00E4"}}) {
        EXPECT_EQ(CodePageCodec(codePage).Decode(bytes), text) << codePage;
        EXPECT_EQ(CodePageCodec(codePage).Encode(text).bytes, bytes) << codePage;
    }
}

TEST(WindowsCodePageTest, NamesTheFirstCharacterItCannotWrite) {
    // Full-width A and the Greek letters have look-alikes in the code page, which must not be taken.
    for (const auto& [codePage, text, character] : {std::tuple{kWestern, "a\uFF21\u03A3", "\uFF21"},
                                                    {kWestern, "\u0394?", "\u0394"},
                                                    {kWestern, "\U0001F600", "\U0001F600"},
                                                    {kWestern, "\xFFx", "\xFF"},
                                                    {kUtf8, "\xED\xA0\x80", "\xED\xA0\x80"}})
        EXPECT_EQ(CodePageCodec(codePage).Encode(text).unencodable, character);
}

TEST(WindowsCodePageTest, EveryByteComesBack) {
    std::mt19937 random(20260401);
    for (const unsigned codePage : {GetACP(), kWestern, kJapanese, kTraditionalChinese, kUtf8}) {
        // What stands for a byte itself, then pairs (some characters are there twice), then rubbish.
        std::vector<std::string> texts = {"\uF741"};
        for (unsigned pair = 0x8000; pair <= 0xFFFF; ++pair)
            texts.push_back({static_cast<char>(pair >> 8), static_cast<char>(pair)});
        for (int round = 0; round < 300; ++round)
            for (char& byte : texts.emplace_back(random() % 40, '\0'))
                byte = static_cast<char>(round % 2 ? random() : random() | 0x80);
        for (const std::string& bytes : texts) {
            const EncodedText again = CodePageCodec(codePage).Encode(CodePageCodec(codePage).Decode(bytes));
            ASSERT_FALSE(again.unencodable) << codePage;
            ASSERT_EQ(again.bytes, bytes) << codePage;
        }
    }
}

class WindowsRegistryTest : public testing::Test {
protected:
    WindowsRegistryTest() { RemoveKeys(); }
    ~WindowsRegistryTest() override { RemoveKeys(); }

    static void RemoveKeys() {
        for (const REGSAM view : {KEY_WOW64_64KEY, KEY_WOW64_32KEY})
            for (const wchar_t* key : {L"Software\\Quillbay Tests\\Reader", L"Software\\Quillbay Tests"})
                RegDeleteKeyExW(HKEY_LOCAL_MACHINE, key, view, 0);
    }

    static void Put(REGSAM view, const wchar_t* name, DWORD type, std::wstring_view data) {
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Quillbay Tests\\Reader", 0, nullptr, 0,
                                  KEY_SET_VALUE | view, nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        EXPECT_EQ(RegSetValueExW(key, name, 0, type, reinterpret_cast<const BYTE*>(data.data()),
                                 static_cast<DWORD>(data.size() * sizeof(wchar_t))),
                  ERROR_SUCCESS);
        RegCloseKey(key);
    }

    static std::string Read(std::string_view name) {
        return MakeRegistry()->ReadRegistryString("SOFTWARE\\Quillbay TESTS\\Reader", name, "none");
    }
};

TEST_F(WindowsRegistryTest, ReadsPlainStringsOfBothViewsTheWiderFirst) {
    EXPECT_EQ(Read("INSTALLPATH"), "none");
    const std::wstring nul(L"C:\\G\u00E4mes\0rest\0", 13);
    const std::wstring longText(5000, L'x');
    for (const auto& [view, type, data, expected] :
         {std::tuple{KEY_WOW64_32KEY, REG_SZ, std::wstring_view(L"C:\\Old\\"), std::string("C:\\Old\\")},
          {KEY_WOW64_64KEY, REG_DWORD, std::wstring_view(L"ab"), "C:\\Old\\"},
          {KEY_WOW64_64KEY, REG_EXPAND_SZ, std::wstring_view(L"%windir%"), "C:\\Old\\"},
          {KEY_WOW64_64KEY, REG_SZ, std::wstring_view(nul), "C:\\G\u00E4mes"},
          {KEY_WOW64_64KEY, REG_SZ, std::wstring_view(L"without NUL"), "without NUL"},
          {KEY_WOW64_64KEY, REG_SZ, std::wstring_view(), ""},
          {KEY_WOW64_64KEY, REG_SZ, std::wstring_view(longText), std::string(5000, 'x')}}) {
        Put(static_cast<REGSAM>(view), L"InstallPath", static_cast<DWORD>(type), data);
        EXPECT_EQ(Read("INSTALLPATH"), expected);
    }
}

} // namespace
} // namespace quillbay::test
