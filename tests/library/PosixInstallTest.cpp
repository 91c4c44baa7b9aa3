#include "support/InstallLab.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace quillbay {
namespace {

namespace fs = std::filesystem;

TEST(PosixInstallTest, ALinkInTheGameIsSavedAndRestoredAsALink) {
    InstallLab lab;
    lab.Put("elsewhere/target.odf", "must not be written through");
    lab.Put("mods/M/odf/linked.odf", "must not be written through");
    lab.Put("mods/M/odf/dangling.odf", "mod");
    lab.Put("mods/Later/odf/linked.odf", "later");
    fs::create_directories(lab.Native("game/odf"));
    fs::create_symlink("../../elsewhere/target.odf", lab.Native("game/odf/linked.odf"));
    fs::create_symlink("nowhere", lab.Native("game/odf/dangling.odf"));
    const auto before = lab.State("game");
    const auto elsewhere = lab.State("elsewhere");

    EXPECT_EQ(lab.Install("M").saved, 2u);
    EXPECT_FALSE(fs::is_symlink(lab.Native("game/odf/linked.odf")));
    EXPECT_EQ(lab.Install("Later").saved, 1u);
    EXPECT_FALSE(lab.Uninstall("M").BackupStays());
    EXPECT_FALSE(lab.Uninstall("Later").BackupStays());
    EXPECT_EQ(Differences(before, lab.State("game")), "");
    EXPECT_EQ(Differences(elsewhere, lab.State("elsewhere")), "");
}

TEST(PosixInstallTest, FilesOfAModAreReadThroughLinks) {
    InstallLab lab;
    lab.Put("elsewhere/ships/a.odf", "shared source");
    fs::create_directories(lab.Native("mods/M/odf"));
    fs::create_directory_symlink(lab.Native("elsewhere/ships"), lab.Native("mods/M/odf/ships"));
    fs::create_symlink(lab.Native("elsewhere/ships/a.odf"), lab.Native("mods/M/b.odf"));
    const auto elsewhere = lab.State("elsewhere");
    EXPECT_EQ(lab.Install("M").installed, 2u);
    const auto game = lab.State("game");
    EXPECT_EQ(game.at("odf/ships/a.odf").bytes, "shared source");
    EXPECT_FALSE(game.at("b.odf").isLink);
    EXPECT_EQ(game.at("b.odf").bytes, "shared source");
    EXPECT_EQ(lab.Uninstall("M").deleted, 2u);
    EXPECT_TRUE(lab.State("game").empty());
    EXPECT_EQ(Differences(elsewhere, lab.State("elsewhere")), "");
}

TEST(PosixInstallTest, SpellingsThatDifferInCaseOnlyAreOneFile) {
    InstallLab lab;
    lab.Put("game/ODF/ships/Cruiser.odf", "game");
    lab.Put("mods/M/odf/ships/cruiser.odf", "first spelling");
    lab.Put("mods/M/ODF/SHIPS/CRUISER.ODF", "other folder");
    lab.Put("mods/M/ODF/SHIPS/only.odf", "only there");
    const auto before = lab.State("game");
    EXPECT_EQ(lab.Install("M").installed, 2u);
    const auto game = lab.State("game");
    EXPECT_EQ(game.size(), 2u);
    EXPECT_EQ(game.at("ODF/ships/Cruiser.odf").bytes, "other folder");
    EXPECT_EQ(game.at("ODF/ships/only.odf").bytes, "only there");

    // What the player respelled goes back to the game's own spelling.
    fs::rename(lab.Native("game/ODF/ships/Cruiser.odf"), lab.Native("game/ODF/ships/cruiser.ODF"));
    EXPECT_FALSE(lab.Uninstall("M").BackupStays());
    EXPECT_EQ(Differences(before, lab.State("game")), "");
}

TEST(PosixInstallTest, NamesThatAreNotUtf8AndNamesWithSeparatorsDoNoHarm) {
    InstallLab lab;
    lab.Put("game/odf/plain.odf", "game");
    fs::create_directories(lab.Native("mods/M/odf"));
    std::ofstream(lab.Native("mods/M/odf") / "caf\xE9.odf") << "mod";
    std::ofstream(lab.Native("mods/M/odf") / "..\\..\\escape.odf") << "mod";
    const auto before = lab.State("game");
    EXPECT_EQ(lab.Install("M").installed, 1u);
    EXPECT_TRUE(fs::exists(lab.Native("game/odf") / "caf\xE9.odf"));
    EXPECT_EQ(lab.Uninstall("M").deleted, 1u);
    EXPECT_EQ(Differences(before, lab.State("game")), "");
}

} // namespace
} // namespace quillbay
