#include "library/InstallRecord.h"

#include "library/GivenUpBackup.h"
#include "support/FaultyFileSystem.h"
#include "support/InstallLab.h"

#include <random>

/// What the record is for: time that passes between the commands.
namespace quillbay {
namespace {

namespace fs = std::filesystem;

/// Fields that a hasty format would break, and all states.
InstallRecord Sample() {
    InstallRecord record;
    record.number = 1'764'000'000;
    record.lastNumber = record.number + 7;
    record.game = "/games/50 % off\nTempest\tII";
    record.finished = 1'764'000'000'123'456'789;
    const FileVersion version{12, FileTime{std::chrono::seconds{-5}}, FingerprintOf("bytes"), record.number,
                              3};
    record.files = {{0, "caf\xE9 %41.txt", RecordedState::Copied, 0, 9, {version}},
                    {56, "a\tb\n.odf", RecordedState::GivenBack, 4, 0, {version, version}},
                    {77, "leaving.odf", RecordedState::Leaving, 4, 0, {version}},
                    {78, "readme.txt", RecordedState::Uncertain, 4, 0, {version}}};
    return record;
}

TEST(InstallRecordTest, GivesBackWhatWasWrittenAndTakesNothingElse) {
    const auto record = Sample();
    const auto text = ToText(record);
    const auto read = ParseInstallRecord(text);
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, record);
    EXPECT_EQ(ToText(*read), text);

    for (std::size_t length = 0; length < text.size(); ++length)
        ASSERT_FALSE(ParseInstallRecord(std::string_view(text).substr(0, length))) << length;
    std::mt19937 random(7);
    for (int round = 0; round < 2'000; ++round) {
        auto torn = text;
        torn[random() % torn.size()] ^= static_cast<char>(1 + random() % 255);
        ASSERT_FALSE(ParseInstallRecord(torn)) << torn;
    }
}

/// With the right last line, which a fingerprint of the rest makes.
std::string Sealed(std::string text) { return text + "end " + ToHex(FingerprintOf(text)) + "\n"; }

TEST(InstallRecordTest, TakesNoRecordOfALaterVersionAndNoNameThatLeadsOut) {
    const std::string head = "Quillbay record 1\nnumber 5 5\ngame /g\nfinished 0\n";
    const std::string hash(32, '0');
    EXPECT_TRUE(ParseInstallRecord(Sealed(head)));
    EXPECT_TRUE(ParseInstallRecord(Sealed(head + "+odf\\a.odf\t0\t0\t1\t1\t" + hash + "\t5\t0\n")));
    for (const std::string& bad :
         {std::string("Quillbay record 2\nnumber 5 5\ngame /g\nfinished 0\n"), head + "+odf\\a.odf\t0\t0\n",
          head + "+odf\\../a.odf\t0\t0\t1\t1\t" + hash + "\t5\t0\n",
          head + "+odf\\..\t0\t0\t1\t1\t" + hash + "\t5\t0\n",
          head + "+unknown\\a.odf\t0\t0\t1\t1\t" + hash + "\t5\t0\n",
          head + "*a\t0\t0\t1\t1\t" + hash + "\t5\t0\n", head + "+a%4\t0\t0\t1\t1\t" + hash + "\t5\t0\n",
          head + "\n"})
        EXPECT_FALSE(ParseInstallRecord(Sealed(bad))) << bad;
}

class BetweenCommandsTest : public testing::Test {
protected:
    /// Every file below a folder of kept files, without the date.
    Contents Kept(const std::string& mod) const {
        Contents kept;
        for (const auto& [path, bytes] : lab.Read("mods/" + mod + "/Changed"))
            kept[path.substr(path.find('/') + 1)] = bytes;
        return kept;
    }
    InstallLab lab;
};

TEST_F(BetweenCommandsTest, AnUpdatedModGivesBackWhatItHadAndOverlapsEndAsTheyBegan) {
    lab.Make({"game/odf/both.odf", "mods/Alpha/odf/both.odf", "mods/Alpha/odf/first.odf",
              "mods/Beta/odf/both.odf"});
    const auto before = lab.State("game");
    lab.Install("Alpha");
    EXPECT_EQ(lab.Install("Beta").replaced, (std::map<std::string, std::size_t>{}));
    lab.Put("mods/Alpha/odf/both.odf", "Alpha 2");
    lab.Remove("mods/Alpha/odf/first.odf");
    lab.Make({"mods/Alpha/odf/second.odf"});
    const auto again = lab.Install("Alpha");
    EXPECT_EQ(again.givenBack.deleted, 1u);
    EXPECT_EQ(again.replaced, (std::map<std::string, std::size_t>{{"Beta", 1}}));
    EXPECT_EQ(lab.Read("game"),
              (Contents{{"odf/both.odf", "Alpha 2"}, {"odf/second.odf", "mods/Alpha/odf/second.odf"}}));

    lab.Put("mods/Alpha/odf/both.odf", "Alpha 3, never installed");
    EXPECT_FALSE(lab.Uninstall("Alpha").BackupStays());
    EXPECT_FALSE(lab.Uninstall("Beta").BackupStays());
    EXPECT_EQ(Differences(before, lab.State("game")), "");
    EXPECT_FALSE(fs::exists(lab.Native("mods/Alpha/Changed")));
}

TEST_F(BetweenCommandsTest, WhatAnInterruptedUninstallationHasGivenBackIsTheModsNoMore) {
    lab.Make({"game/odf/second.odf", "mods/M/odf/second.odf", "mods/M/odf/new.odf"});
    for (const char* path : {"game/odf/equal.odf", "mods/M/odf/equal.odf"})
        lab.Put(path, "equal");
    const auto before = lab.State("game");
    FaultyFileSystem files(lab.Files());
    files.hook = [](auto operation, auto path, auto) {
        const bool is = operation == "RenameOver" && path.ends_with("second.odf");
        return std::make_error_code(is ? std::errc::io_error : std::errc());
    };
    for (const bool isInstalledAgain : {false, true}) {
        lab.Install("M");
        EXPECT_EQ(lab.Uninstall(files, "M").notRestored.size(), 1u);
        EXPECT_EQ(lab.Saved("M"), (Contents{{"odf/second.odf", "game/odf/second.odf"}}));
        EXPECT_EQ(isInstalledAgain ? lab.Install("M").saved : 0u, isInstalledAgain ? 1u : 0u);
        EXPECT_EQ(lab.Uninstall("M").restored, isInstalledAgain ? 2u : 1u);
        EXPECT_FALSE(lab.Installed("M"));
        EXPECT_EQ(Differences(before, lab.State("game")), "");
    }
}

TEST_F(BetweenCommandsTest, WhatSomebodyElseMadeOfTheGameIsKept) {
    lab.Make({"game/odf/patched.odf", "game/readme.txt", "mods/M/odf/patched.odf", "mods/M/odf/new.odf",
              "mods/M/readme.txt"});
    const auto before = lab.State("game");
    lab.Install("M");
    // With the size and the time of the mod's own file.
    const auto edited = lab.Native("game/odf/patched.odf");
    const auto time = fs::last_write_time(edited);
    lab.Put("game/odf/patched.odf", "mods/M/odf/PATCHED.odf");
    fs::last_write_time(edited, time);
    lab.Put("game/odf/new.odf", "made by the player");
    EXPECT_EQ(lab.Install("M").kept.size(), 1u);
    EXPECT_EQ(Kept("M"), (Contents{{"odf/patched.odf", "mods/M/odf/PATCHED.odf"}}));
    EXPECT_EQ(lab.Saved("M").at("odf/new.odf"), "made by the player");

    lab.Put("game/readme.txt", "a patch");
    const auto result = lab.Uninstall("M");
    EXPECT_EQ(result.kept.size(), 1u);
    EXPECT_EQ(Kept("M").at("readme.txt"), "a patch");
    EXPECT_EQ(lab.SharedFiles(), "");
    auto after = lab.State("game");
    EXPECT_EQ(after["odf/new.odf"].bytes, "made by the player");
    after.erase("odf/new.odf");
    EXPECT_EQ(Differences(before, after), "");

    // Of a mod that is not installed, too.
    lab.Put("game/odf/patched.odf", "of no mod");
    FaultyFileSystem files(lab.Files());
    files.hook = [](auto operation, auto path, auto) {
        const bool is = operation == "MakeFolder" && path.ends_with("Changed");
        return std::make_error_code(is ? std::errc::no_space_on_device : std::errc());
    };
    EXPECT_EQ(lab.Uninstall(files, "M").notDeleted.size(), 3u) << "what cannot be kept stays";
    lab.Uninstall("M");
    EXPECT_EQ(lab.Read("game"), Contents());
    std::string kept;
    for (const auto& [path, bytes] : lab.Read("mods/M/Changed"))
        kept += bytes + "|";
    for (const char* bytes : {"of no mod|", "game/readme.txt|", "made by the player|"})
        EXPECT_NE(kept.find(bytes), std::string::npos) << bytes;
}

TEST_F(BetweenCommandsTest, WhatComesBackWithTheBytesOfAVersionThatWasGivenBackIsNotTheMods) {
    for (const char* version : {"1", "", "2"}) {
        if (*version)
            lab.Put("mods/Alpha/odf/a.odf", version);
        else
            lab.Remove("mods/Alpha/odf/a.odf");
        lab.Install("Alpha");
    }
    lab.Put("game/odf/a.odf", "1"); // of the player's own
    lab.Make({"mods/Beta/odf/a.odf"});
    lab.Install("Beta");
    lab.Uninstall("Beta");
    lab.Uninstall("Alpha");
    EXPECT_EQ(lab.Read("game"), (Contents{{"odf/a.odf", "1"}}));
}

TEST_F(BetweenCommandsTest, ABackupOfAnotherComputerAndAnotherGameLoseNothing) {
    lab.Make({"game/a.txt", "game/own.txt", "mods/Foreign/a.txt", "mods/Foreign/own.txt", "other/a.txt",
              "mods/M/a.txt"});
    // As its author zipped it.
    lab.Put("mods/Foreign/Backup/a.txt", "the author's game");
    EXPECT_EQ(lab.Install("Foreign").kept.size(), 1u);
    EXPECT_FALSE(lab.Uninstall("Foreign").BackupStays());
    EXPECT_EQ(lab.Read("game"), (Contents{{"a.txt", "the author's game"}, {"own.txt", "game/own.txt"}}));
    EXPECT_EQ(Kept("Foreign"), (Contents{{"a.txt", "game/a.txt"}}));

    lab.Install("M");
    auto job = lab.Job("M");
    job.gameDirectory = lab.Job("M").gameDirectory.substr(0, job.gameDirectory.size() - 4) + "other";
    const auto plan = PlanUninstall(lab.Files(), job);
    EXPECT_TRUE(plan.IsOfAnotherGame());
    EXPECT_EQ(RunUninstall(lab.Files(), plan, {}).kept.size(), 1u);
    EXPECT_EQ(Kept("M"), (Contents{{"a.txt", "other/a.txt"}}));
}

TEST_F(BetweenCommandsTest, ABackupThatCannotBeMovedEndsByItsRecordAndARunOfFailuresInstallsNothing) {
    lab.Make({"game/a.txt", "mods/M/a.txt", "mods/M/b.txt"});
    const auto before = lab.State("game");
    FaultyFileSystem files(lab.Files());
    bool refusesCopies = false;
    files.hook = [&](auto operation, auto path, auto to) {
        return std::make_error_code(
            operation == "Rename" && to.ends_with(kTempBackup)         ? std::errc::cross_device_link
            : operation == "RemoveTree" && path.ends_with(kBackupName) ? std::errc::device_or_resource_busy
            : operation.ends_with("Copy") && refusesCopies             ? std::errc::no_space_on_device
                                                                       : std::errc());
    };
    lab.Install("M");
    EXPECT_TRUE(lab.Uninstall(files, "M").backupNotRemoved);
    EXPECT_EQ(Differences(before, lab.State("game")), "");
    lab.Put("game/a.txt", "mods/M/a.txt"); // what it installed once, which is nobody's business now
    lab.Uninstall("M");
    EXPECT_FALSE(lab.Installed("M"));
    EXPECT_EQ(lab.Read("game").at("a.txt"), "mods/M/a.txt");

    refusesCopies = true;
    EXPECT_EQ(lab.Install(files, "M").outcome, InstallOutcome::NothingCopied);
    EXPECT_TRUE(lab.Install("M").outcome == InstallOutcome::Done && lab.Installed("M"));

    // What was in use is swept when the list is made anew.
    EXPECT_TRUE(lab.Uninstall(files, "M").backupNotRemoved);
    const auto rows = ScanModLibrary(lab.Files(), lab.Job("M").modLibrary);
    SweepGivenUpBackups(files, lab.Job("M").modLibrary, rows);
    EXPECT_TRUE(lab.Installed("M"));
    SweepGivenUpBackups(lab.Files(), lab.Job("M").modLibrary, rows);
    EXPECT_FALSE(lab.Installed("M"));
    lab.Install("M");
    SweepGivenUpBackups(lab.Files(), lab.Job("M").modLibrary, rows);
    EXPECT_TRUE(lab.Installed("M")) << "a Backup that is needed stays";
}

} // namespace
} // namespace quillbay
