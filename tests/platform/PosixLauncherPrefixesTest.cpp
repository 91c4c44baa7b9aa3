#include "platform/DosPath.h"
#include "platform/Registry.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

#include <chrono>
#include <gtest/gtest.h>

namespace quillbay::test {
namespace {

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

TEST_F(PosixLauncherPrefixesTest, AGameOutsideThePrefixThatNamesItIsReachedThroughItsDrives) {
    const std::string game = disk_ + "/library/T2";
    PutFolder(game);
    std::string dosPath = "Z:" + game;
    std::string escaped = "Z:";
    for (const char c : game)
        escaped += c == '/' ? std::string("\\\\") : std::string(1, c);
    std::ranges::replace(dosPath, '/', '\\');
    // Another prefix holds the folder.
    PutFolder(disk_ + "/library/dosdevices");
    const auto prefix = MakePrefix(".local/share/Steam/steamapps/compatdata/7/pfx", 0, escaped);
    const auto found = Find();
    EXPECT_EQ(found.path, game);
    EXPECT_EQ(ShortPath(found.path, found.prefix).ValueOr({}), dosPath);
    EXPECT_EQ(ShortPath(found.path).Error(), std::errc::no_such_file_or_directory);
}

} // namespace
} // namespace quillbay::test
