#include "support/FaultyFileSystem.h"
#include "support/InstallLab.h"
#include "support/ListingFileSystem.h"

namespace quillbay::test {
namespace {

class InstallTest : public testing::Test {
protected:
    InstallLab lab;
};

TEST_F(InstallTest, CopiesWhatBelongsIntoTheGameAndSavesWhatItReplaces) {
    lab.Make({"game/Odf/Ships/Cruiser.odf", "game/Odf/ModInfo.txt", "game/readme.txt",
              "mods/M/odf/ships/cruiser.ODF", "mods/M/odf/ships/modinfo.txt", "mods/M/odf/ModInfo.txt",
              "mods/M/ModInfo.txt", "mods/M/readme.txt", "mods/M/Docs/manual.txt", "mods/M/Sod/new.sod"});
    create_directories(lab.Native("game/bitmaps/main"));
    ListingFileSystem files(lab.Files());
    const auto result = lab.Install(files, "M");
    EXPECT_EQ(result.outcome, InstallOutcome::Done);
    EXPECT_EQ(result.installed, 4u);
    EXPECT_EQ(result.saved, 2u);
    EXPECT_EQ(lab.Read("game"), (Contents{{"Odf/Ships/Cruiser.odf", "mods/M/odf/ships/cruiser.ODF"},
                                          {"Odf/Ships/modinfo.txt", "mods/M/odf/ships/modinfo.txt"},
                                          {"Odf/ModInfo.txt", "game/Odf/ModInfo.txt"},
                                          {"Sod/new.sod", "mods/M/Sod/new.sod"},
                                          {"readme.txt", "mods/M/readme.txt"}}));
    EXPECT_EQ(lab.Saved("M"), (Contents{{"odf/ships/Cruiser.odf", "game/Odf/Ships/Cruiser.odf"},
                                        {"readme.txt", "game/readme.txt"}}));
    EXPECT_FALSE(exists(lab.Native("game/bitmaps")));

    // As if it had never been installed.
    lab.Remove("mods/M/Backup");
    EXPECT_EQ(lab.Uninstall(files, "M").deleted, 4u);
    EXPECT_EQ(lab.Read("game"), (Contents{{"Odf/ModInfo.txt", "game/Odf/ModInfo.txt"}}));
    for (const auto& [folder, times] : files.listed)
        EXPECT_LE(times, 2) << folder << ", once for each job";
    EXPECT_LE(files.stats, 3 + 4) << "one for each file that was taken away";

    EXPECT_EQ(lab.Install("Gone").outcome, InstallOutcome::Unreadable);
    EXPECT_TRUE(lab.Uninstall("Gone").failure);
}

TEST_F(InstallTest, ALibraryInTheGamesFolderIsNoPartOfTheGame) {
    lab.Make({"game/odf/a.odf", "game/Quillbay/mods/M/odf/a.odf"});
    const auto before = lab.State("game");
    ModJob job = lab.Job("M");
    job.modLibrary = job.gameDirectory + "\\Quillbay\\mods";
    EXPECT_EQ(RunInstall(lab.Files(), PlanInstall(lab.Files(), job), {}).installed, 1u);
    EXPECT_EQ(lab.Read("game").at("odf/a.odf"), "game/Quillbay/mods/M/odf/a.odf");
    EXPECT_EQ(RunUninstall(lab.Files(), PlanUninstall(lab.Files(), job), {}).restored, 1u);
    EXPECT_EQ(Differences(before, lab.State("game")), "");
}

TEST_F(InstallTest, WhatCannotBeSavedOrCopiedStaysAsItIsAndKeepsNoSavedCopy) {
    lab.Make({"game/odf/free.odf", "game/odf/locked.odf", "game/odf/torn.odf", "game/odf/way.odf/inside.txt",
              "mods/M/odf/free.odf", "mods/M/odf/locked.odf", "mods/M/odf/torn.odf", "mods/M/odf/way.odf"});
    auto expected = lab.Read("game");
    FaultyFileSystem files(lab.Files());
    bool comparesToo = true; // neither linked, nor copied, nor compared
    files.hook = [&](auto operation, auto path, auto) {
        const bool is = operation == "HardLink" || operation.ends_with("Copy") ||
                        (operation == "SameContents" && comparesToo);
        const bool refused =
            is && (path.ends_with("game\\odf\\locked.odf") || path.ends_with("M\\odf\\torn.odf"));
        return std::make_error_code(refused ? std::errc::io_error : std::errc());
    };
    EXPECT_EQ(lab.Install(files, "M").outcome, InstallOutcome::UnsafeFile);
    EXPECT_FALSE(lab.Installed("M"));
    EXPECT_EQ(lab.Read("game"), expected);

    comparesToo = false;
    const auto result = lab.Install(files, "M");
    EXPECT_EQ(result.outcome, InstallOutcome::Done);
    EXPECT_EQ(result.notSaved.size(), 1u);
    EXPECT_EQ(result.notCopied.size(), 2u);
    EXPECT_EQ(result.installed, 1u);
    EXPECT_EQ(result.saved, 1u);
    expected["odf/free.odf"] = "mods/M/odf/free.odf";
    EXPECT_EQ(lab.Read("game"), expected);

    lab.Put("game/odf/torn.odf", "what the player made of it");
    const auto undone = lab.Uninstall("M");
    EXPECT_FALSE(undone.BackupStays());
    expected["odf/free.odf"] = "game/odf/free.odf";
    expected["odf/torn.odf"] = "what the player made of it";
    EXPECT_EQ(lab.Read("game"), expected);
}

TEST_F(InstallTest, ASecondInstallationKeepsSavedCopiesAndSavesWhatIsTheGames) {
    lab.Make({"game/odf/a.odf", "game/odf/later.odf", "game/root.txt", "mods/M/odf/a.odf",
              "mods/Other/odf/theirs.odf"});
    lab.SetReadOnly("game/root.txt");
    const auto before = lab.State("game");
    lab.Install("M");
    lab.Install("Other");
    const auto number = lab.Number("M");
    rename(lab.Native("mods/M/Backup"), lab.Native("mods/M/backup")); // in any spelling it is the Backup

    lab.Put("mods/M/odf/a.odf", "second version");
    lab.Make({"mods/M/odf/later.odf", "mods/M/odf/theirs.odf"});
    create_hard_link(lab.Native("game/root.txt"), lab.Native("mods/M/root.txt")); // of one attribute
    EXPECT_EQ(lab.Install("M").saved, 2u);
    EXPECT_EQ(lab.Saved("M"), (Contents{{"odf/a.odf", "game/odf/a.odf"},
                                        {"odf/later.odf", "game/odf/later.odf"},
                                        {"root.txt", "game/root.txt"}}));
    EXPECT_EQ(lab.Read("game").at("odf/a.odf"), "second version");
    EXPECT_EQ(lab.Number("M"), number);
    for (const char* mod : {"M", "Other"}) {
        EXPECT_FALSE(lab.Uninstall(mod).BackupStays()) << mod;
        EXPECT_FALSE(lab.Installed(mod)) << mod;
    }
    EXPECT_EQ(Differences(before, lab.State("game")), "");
}

/// First gets the file that the others have, too, when it is installed already.
TEST_F(InstallTest, AModThatCameUnderALaterOneInheritsWhatThatHasSaved) {
    const std::vector<std::string> kStories[] = {
        {"+First", "+Later", "update", "+First", "+Last", "!Later", "-Later", "-Last", "-First"},
        {"+First", "+Later", "+Last", "update", "+First", "!Last", "-Last", "-Later", "-First"},
    };
    for (const auto& story : kStories) {
        InstallLab game;
        game.Make({"game/a.txt", "mods/First/b.txt", "mods/Later/a.txt", "mods/Last/a.txt"});
        const auto before = game.State("game");
        for (const auto& step : story) {
            const auto mod = step.substr(1);
            if (step == "update") game.Make({"mods/First/a.txt"});
            if (step[0] == '+') game.Install(mod);
            if (step[0] == '-') {
                EXPECT_FALSE(game.Uninstall(mod).BackupStays()) << step;
            }
            if (step[0] != '!') continue;
            // What cannot be handed to the heir is not given up.
            FaultyFileSystem files(game.Files());
            files.hook = [](auto operation, auto, auto to) {
                const bool is = operation == "FlushedCopy" && to.find("First") != to.npos;
                return std::make_error_code(is ? std::errc::no_space_on_device : std::errc());
            };
            const auto untouched = game.State("game");
            EXPECT_TRUE(game.Uninstall(files, mod).failure);
            EXPECT_EQ(Differences(untouched, game.State("game")), "");
        }
        EXPECT_EQ(Differences(before, game.State("game")), "") << story[2];
    }
}

TEST_F(InstallTest, WithoutItsRecordNothingIsInstalled) {
    lab.Make({"game/a.txt", "mods/M/a.txt"});
    const auto before = lab.State("game");
    FaultyFileSystem files(lab.Files());
    files.hook = [](auto operation, auto, auto) {
        return std::make_error_code(operation == "WriteFile" ? std::errc::io_error : std::errc());
    };
    EXPECT_EQ(lab.Install(files, "M").outcome, InstallOutcome::NoBackup);
    EXPECT_FALSE(lab.Installed("M"));
    EXPECT_EQ(Differences(before, lab.State("game")), "");
}

TEST_F(InstallTest, WhatComesBackWhileItsCopyStaysIsFlushed) {
    lab.Make({"game/a.txt", "mods/M/a.txt", "mods/M/b.txt"});
    lab.Install("M");
    lab.Remove("mods/M/a.txt");
    FaultyFileSystem files(lab.Files());
    int flushed = 0;
    files.hook = [&](auto operation, auto path, auto) {
        if (path.ends_with("Backup\\a.txt")) flushed += operation == "FlushedCopy";
        return std::error_code();
    };
    EXPECT_EQ(lab.Install(files, "M").givenBack.restored, 1u);
    EXPECT_EQ(flushed, 1);
}

TEST_F(InstallTest, WhatCannotBeToldFromTheModsFileStaysInTheGame) {
    lab.Make({"mods/M/a.txt"});
    lab.Install("M");
    lab.Put("game/a.txt", "the player's"); // of the same size
    FaultyFileSystem files(lab.Files());
    files.hook = [](auto operation, auto path, auto) {
        const bool is = operation == "FingerprintFile" && path.ends_with("game\\a.txt");
        return std::make_error_code(is ? std::errc::io_error : std::errc());
    };
    EXPECT_EQ(lab.Uninstall(files, "M").notDeleted.size(), 1u);
    EXPECT_EQ(lab.Read("game"), (Contents{{"a.txt", "the player's"}}));
}

TEST_F(InstallTest, WhatAModHasGivenBackIsItsOwnNoMore) {
    lab.Make({"mods/M/a.txt", "mods/M/b.txt"});
    lab.Install("M");
    lab.Remove("mods/M/a.txt");
    lab.Install("M");
    lab.Put("game/a.txt", "mods/M/a.txt");
    lab.Uninstall("M");
    EXPECT_EQ(lab.Read("game"), (Contents{{"a.txt", "mods/M/a.txt"}}));

    // Nor is what another mod has replaced without saving it.
    lab.Make({"mods/Later/c.txt"});
    lab.Install("M");
    lab.Install("Later");
    lab.Make({"mods/M/c.txt"});
    lab.Install("M");
    lab.Uninstall("M");
    lab.Put("game/c.txt", "mods/Later/c.txt");
    lab.Uninstall("Later");
    EXPECT_TRUE(lab.Read("game").contains("c.txt"));
}

TEST_F(InstallTest, WhatCannotBeReadOfAnotherModIsNotTakenForNothing) {
    lab.Make({"game/odf/a.odf", "mods/First/odf/a.odf", "mods/Later/odf/new.odf", "mods/Later/odf/a.odf"});
    const auto pristine = lab.State("game");
    lab.Install("First");
    lab.Install("Later");
    FaultyFileSystem files(lab.Files());
    std::pair<std::string, std::string> failing; ///< the operation, and the end of the path
    files.hook = [&](auto operation, auto path, auto) {
        const bool is = operation == failing.first && path.ends_with(failing.second);
        return std::make_error_code(is ? std::errc::permission_denied : std::errc());
    };
    const auto before = lab.State("game");
    const auto expectStop = [&](const char* operation, const char* path, const char* mod, bool installs) {
        failing = {operation, path};
        EXPECT_TRUE(installs ? lab.Install(files, mod).outcome != InstallOutcome::Done
                             : bool(lab.Uninstall(files, mod).failure))
            << path;
        EXPECT_EQ(Differences(before, lab.State("game")), "") << path;
    };
    expectStop("List", "First\\Backup\\odf", "Later", false);
    expectStop("List", "Later\\Backup\\odf", "First", false);
    expectStop("Read", "First\\Backup\\~quillbay.record", "Later", false);

    // As of a mod that an earlier version has installed.
    lab.Remove("mods/Later/Backup/~quillbay.record");
    const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    EXPECT_FALSE(
        files.SetModified(lab.Job("Later").FolderInLibrary() + "\\Backup", now + std::chrono::hours(1)));
    lab.Make({"mods/First/odf/new.odf"});
    expectStop("Stat", "Later\\Backup", "First", true);
    expectStop("List", "Later\\odf", "First", true);
    failing = {};
    EXPECT_EQ(lab.Install(files, "First").saved, 0u);
    for (const char* mod : {"First", "Later"})
        EXPECT_FALSE(lab.Uninstall(mod).BackupStays()) << mod;
    EXPECT_EQ(Differences(pristine, lab.State("game")), "");
}

TEST_F(InstallTest, ABackupThatMustStayLetsASecondUninstallationTakeNothingAway) {
    for (const char* path : {"game/odf/equal.odf", "mods/M/odf/equal.odf"})
        lab.Put(path, "equal");
    lab.Make({"game/odf/left.odf", "game/odf/other.odf", "mods/M/odf/left.odf", "mods/M/odf/other.odf"});
    const auto expected = lab.State("game");
    lab.Install("M");
    lab.Remove("mods/M/odf/left.odf"); // the record knows it still
    lab.Put("mods/M/Backup/notes/mine.txt", "the player's");
    const auto number = lab.Number("M");
    for (const std::size_t restored : {3u, 1u}) {
        const auto result = lab.Uninstall("M");
        EXPECT_TRUE(result.BackupStays());
        EXPECT_EQ(result.restored, restored);
        EXPECT_EQ(lab.Saved("M"), (Contents{{"notes/mine.txt", "the player's"}, {"odf/equal.odf", "equal"}}));
        EXPECT_EQ(lab.Number("M"), number);
        EXPECT_EQ(lab.SharedFiles(), "");
        EXPECT_EQ(Differences(expected, lab.State("game")), "");
    }
}

} // namespace
} // namespace quillbay::test
