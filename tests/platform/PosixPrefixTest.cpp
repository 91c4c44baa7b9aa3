#include "platform/DosPath.h"
#include "platform/ProgramLocation.h"
#include "platform/Registry.h"
#include "platform/posix/LauncherFiles.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

#include <chrono>
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

TEST(PosixProgramFolderTest, IsMadeForAnInstalledProgramWhoseFolderTheUserCannotWrite) {
    const TempFolder temp;
    const ScopedVariable home("HOME", temp.Path());
    const ScopedVariable relative("XDG_DATA_HOME", "somewhere");
    ProgramPlaces places = FindProgramPlaces();
    EXPECT_EQ(places.user, temp.Path() + "/.local/share/quillbay");
    EXPECT_EQ(places.executable, std::filesystem::read_symlink("/proc/self/exe").parent_path());
    places.executable = temp.Path() + "/program";
    PutFolder(places.executable);
    EXPECT_EQ(MakeProgramDirectory(places), places.executable);
    ASSERT_EQ(::chmod(places.executable.c_str(), 0555) + ::chmod(temp.Path().c_str(), 0777), 0);
    const pid_t child = ::fork();
    if (child == 0) { // for root there is no folder without permission
        const bool isOrdinary = ::geteuid() != 0 || ::setuid(65534) == 0;
        const bool isUsers = MakeProgramDirectory(places) == places.user;
        ::_exit(isOrdinary && isUsers && std::filesystem::is_directory(places.user) ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

/// A home without a prefix of its own; every prefix made in it names a game.
class PosixLauncherPrefixesTest : public testing::Test {
protected:
    /// `age` in hours; `dosPath` as a registry file spells it.
    std::string MakePrefix(const std::string& place, int age = 0,
                           const std::string& dosPath = "C:\\\\t2\\\\") {
        const std::string prefix = place.starts_with('/') ? place : home_ + '/' + place;
        PutFolder(prefix + "/drive_c/T2");
        PutFolder(prefix + "/dosdevices");
        std::filesystem::create_symlink("../drive_c", prefix + "/dosdevices/c:");
        std::filesystem::create_symlink("/", prefix + "/dosdevices/z:");
        PutFile(prefix + "/system.reg",
                "WINE REGISTRY Version 2\n[Software\\\\A] 1\n\"Path\"=\"" + dosPath + "\"\n");
        std::filesystem::last_write_time(prefix + "/system.reg", start_ - std::chrono::hours(age));
        return prefix;
    }
    RegisteredFolder Find() const { return MakeRegistry()->FindRegisteredFolder("Software\\A", "Path"); }

    TempFolder temp_;
    std::string home_ = DiskText(temp_ / "home");
    std::string disk_ = DiskText(temp_ / "disk");
    std::filesystem::file_time_type start_ = std::filesystem::file_time_type::clock::now();
    ScopedVariable variables_[4] = {{"HOME", home_},
                                    {"WINEPREFIX", std::nullopt},
                                    {"XDG_DATA_HOME", "relative"},
                                    {"XDG_CONFIG_HOME", home_ + "/settings"}};
};

TEST_F(PosixLauncherPrefixesTest, TheGameIsFoundInEveryPlaceOfALauncher) {
    const std::string flatpak = ".var/app/org.example.Launcher/";
    const std::string steam = ".local/share/Steam/";
    const std::string oldLibraries = "\"LibraryFolders\" { \"1\" \"" + disk_ + "\" }";
    const std::string newLibraries = "\"libraryfolders\" { \"0\" { \"path\" \"" + disk_ + "\" } }";
    const std::string json = R"({"Game": {"winePrefix": ")" + disk_ + "\"}}";
    const std::string yaml = "game:\n  prefix: " + disk_ + "\n";
    const std::string library = disk_ + "/steamapps/compatdata/7/pfx";
    const struct {
        std::string prefix, file, text;
    } places[] = {
        {steam + "steamapps/compatdata/7/pfx", "", ""},
        {".steam/steam/steamapps/compatdata/7/pfx", "", ""},
        {flatpak + steam + "steamapps/compatdata/7/pfx", "", ""},
        {library, steam + "steamapps/libraryfolders.vdf", oldLibraries},
        {library, ".steam/steam/config/libraryfolders.vdf", newLibraries},
        {library, flatpak + "data/Steam/steamapps/libraryfolders.vdf", newLibraries},
        {"Games/Heroic/Prefixes/Game", "", ""},
        {"Games/Heroic/Prefixes/default/Game/pfx", "", ""},
        {disk_, "settings/heroic/GamesConfig/Game.json", json},
        {disk_ + "/pfx", flatpak + "config/heroic/GamesConfig/Game.json", json},
        {"Games/game", "", ""},
        {disk_, "settings/lutris/games/game-1.yml", yaml},
        {disk_, ".local/share/lutris/games/game-1.yml", yaml},
        {disk_, flatpak + "data/lutris/games/game-1.yml", yaml},
        {"elsewhere", ".local/share/lutris/games/game-1.yml", "prefix: '~/elsewhere'"},
        {".local/share/bottles/bottles/Game", "", ""},
        {flatpak + "data/bottles/bottles/Game", "", ""},
        {".PlayOnLinux/wineprefix/game", "", ""},
        {flatpak + ".PlayOnLinux/wineprefix/game", "", ""},
    };
    for (const auto& [place, file, text] : places) {
        for (const auto& folder : {home_, disk_}) {
            std::filesystem::remove_all(folder);
            PutFolder(folder);
        }
        EXPECT_EQ(Find().path, "") << place;
        if (!file.empty()) PutFile(home_ + '/' + file, text);
        const auto prefix = MakePrefix(place);
        const auto found = Find();
        EXPECT_EQ(found.path, prefix + "/drive_c/t2/") << place << ' ' << file;
        EXPECT_EQ(found.prefix, prefix) << place;
        EXPECT_FALSE(found.otherPrefixes) << place;
        EXPECT_EQ(SearchRoots(temp_.Path()), std::vector{prefix + "/drive_c"}) << place;
    }
}

TEST_F(PosixLauncherPrefixesTest, TheNewestPrefixWithAGameCountsUnlessTheUsersOwnHasOne) {
    const auto older = MakePrefix(".PlayOnLinux/wineprefix/older", 3);
    EXPECT_FALSE(Find().otherPrefixes);
    const auto newer = MakePrefix("Games/newer", 2);
    MakePrefix("Games/gone", 1, "C:\\\\gone");
    MakePrefix("Games/driveless", 1, "Q:\\\\T2");
    // The same prefix by another name is no other one.
    std::filesystem::create_symlink(newer, home_ + "/.PlayOnLinux/wineprefix/again");
    EXPECT_EQ(Find().prefix, newer);
    EXPECT_TRUE(Find().otherPrefixes);
    std::filesystem::remove(older + "/system.reg");
    EXPECT_FALSE(Find().otherPrefixes);

    const auto own = MakePrefix(".wine", 9, "C:\\\\gone");
    EXPECT_EQ(Find().prefix, newer);
    std::filesystem::create_directory(own + "/drive_c/gone");
    EXPECT_EQ(Find().prefix, own);
    EXPECT_FALSE(Find().otherPrefixes);
    const auto roots = SearchRoots(temp_.Path());
    ASSERT_EQ(roots.size(), 4U);
    EXPECT_EQ(roots[0], own + "/drive_c");
    EXPECT_EQ(roots[3], newer + "/drive_c");

    const ScopedVariable chosen("WINEPREFIX", older);
    EXPECT_EQ(Find().path, "");
    EXPECT_EQ(SearchRoots(temp_.Path()), std::vector{older + "/drive_c"});
}

using Texts = std::vector<std::string>;

const std::string kNewForm =
    "\"libraryfolders\"\n{\n\t\"0\"\n\t{\n\t\t\"path\"\t\t\"/home/a/Steam\"\n"
    "\t\t\"label\"\t\t\"/no\"\n\t\t\"apps\"\n\t\t{\n\t\t\t\"12\"\t\t\"/34\"\n\t\t}\n\t}\n"
    "\t\"1\" { \"path\" \"/b \\\"c\\\\d\" }\n}\n";
const std::string kOldForm =
    "\"LibraryFolders\"\r\n{\r\n// \"3\" \"/no\"\r\n\t\"TimeNextStatsReport\"\t\"15\"\r\n"
    "\t\"ContentStatsID\"\t\"-8\"\r\n\t\"1\"\t\"/mnt/Games\"\r\n\t2 /plain\r\n}\r\n";
const std::string kJson = R"({"App" : {"note": "winePrefix", "winePrefix" :"/p\u00e4\ud83d\ude80\/q\"r",
    "other": ["winePrefix", {"winePrefix":null}], "winePrefix":"/two"}})";
const std::string kYaml =
    "game:\n  exe: /no\n  prefix: /a/b c # why\n  prefix_of: /no\n  prefix: 'it''s:\n    long'\n"
    "wine: {}\nprefix: \"/\\xDC \\\"x\\\"\\\n  \\ y\"\nsystem:\n  prefix:\n";

TEST(PosixLauncherFilesTest, GiveTheirFoldersInEveryForm) {
    EXPECT_EQ(SteamLibraries(kNewForm), (Texts{"/home/a/Steam", "/b \"c\\d"}));
    EXPECT_EQ(SteamLibraries(kOldForm), (Texts{"/mnt/Games", "/plain"}));
    EXPECT_EQ(JsonTexts(kJson, "winePrefix"), (Texts{"/pä🚀/q\"r", "/two"}));
    EXPECT_EQ(YamlTexts(kYaml, "prefix"), (Texts{"/a/b c", "it's: long", "/Ü \"x\" y", ""}));
}

} // namespace
} // namespace quillbay::test
