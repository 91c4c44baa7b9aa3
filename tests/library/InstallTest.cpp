#include "platform/FileSystemWrapper.h"
#include "support/InstallLab.h"
#include "support/ListingFileSystem.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace quillbay {
namespace {

std::set<std::string> Paths(const TreeState& state) {
    std::set<std::string> paths;
    for (const auto& [path, file] : state)
        paths.insert(path);
    return paths;
}

TEST(InstallTest, CopiesWhatBelongsIntoTheGameAndSavesWhatItReplaces) {
    InstallLab lab;
    lab.Put("game/Odf/Ships/Cruiser.odf", "game cruiser");
    lab.Put("game/readme.txt", "game readme");
    lab.Put("mods/M/odf/ships/cruiser.ODF", "mod cruiser");
    lab.Put("mods/M/odf/ships/modinfo.txt", "installed: another name");
    lab.Put("mods/M/odf/ModInfo.txt", "not installed");
    lab.Put("mods/M/ModInfo.txt", "not installed");
    lab.Put("mods/M/readme.txt", "mod readme");
    lab.Put("mods/M/Docs/manual.txt", "not installed: no game folder");
    lab.Put("mods/M/Sod/new.sod", "mod sod");
    std::filesystem::create_directories(lab.Native("game/bitmaps/main"));

    const auto result = lab.Install("M");
    EXPECT_EQ(result.outcome, InstallOutcome::Done);
    EXPECT_EQ(result.installed, 4u);
    EXPECT_EQ(result.saved, 2u);
    const auto game = lab.State("game");
    EXPECT_EQ(Paths(game), (std::set<std::string>{"Odf/Ships/Cruiser.odf", "Odf/Ships/modinfo.txt",
                                                  "Sod/new.sod", "readme.txt"}));
    EXPECT_EQ(game.at("Odf/Ships/Cruiser.odf").bytes, "mod cruiser");
    EXPECT_EQ(game.at("readme.txt").bytes, "mod readme");
    const auto backup = lab.State("mods/M/Backup");
    EXPECT_EQ(Paths(backup), (std::set<std::string>{"odf/ships/Cruiser.odf", "readme.txt"}));
    EXPECT_EQ(backup.at("odf/ships/Cruiser.odf").bytes, "game cruiser");
    EXPECT_FALSE(std::filesystem::exists(lab.Native("game/bitmaps")));
}

TEST(InstallTest, WithoutABackupNothingIsInstalled) {
    InstallLab lab;
    lab.Put("game/readme.txt", "game");
    lab.Put("mods/M/readme.txt", "mod");
    lab.Put("mods/M/Backup", "a file where the folder should be");
    const auto before = lab.State("game");
    const auto result = lab.Install("M");
    EXPECT_EQ(result.outcome, InstallOutcome::NoBackup);
    EXPECT_TRUE(result.error);
    EXPECT_EQ(Differences(before, lab.State("game")), "");
    EXPECT_FALSE(std::filesystem::exists(lab.Native("mods/M/~quillbay.bak")));

    EXPECT_EQ(lab.Install("Gone").outcome, InstallOutcome::Unreadable);
    EXPECT_TRUE(lab.Uninstall("Gone").failure);
    EXPECT_EQ(Differences(before, lab.State("game")), "");
}

/// Neither saves nor copies anything to or from a path that ends in `part`.
class Refusing : public FileSystemWrapper {
public:
    Refusing(FileSystem& base, std::string part, bool comparesToo = false)
        : FileSystemWrapper(base), part_(std::move(part)), comparesToo_(comparesToo) {}

    std::error_code HardLink(std::string_view from, std::string_view to, bool replace) override {
        return from.ends_with(part_) ? Refusal() : FileSystemWrapper::HardLink(from, to, replace);
    }
    std::error_code Copy(std::string_view from, std::string_view to, CopyOptions options) override {
        return from.ends_with(part_) ? Refusal() : FileSystemWrapper::Copy(from, to, options);
    }
    Result<bool> SameContents(std::string_view file, std::string_view other) const override {
        if (comparesToo_ && file.ends_with(part_)) return Refusal();
        return FileSystemWrapper::SameContents(file, other);
    }

private:
    static std::error_code Refusal() { return std::make_error_code(std::errc::io_error); }
    std::string part_;
    bool comparesToo_;
};

TEST(InstallTest, WhatCannotBeSavedIsNotOverwritten) {
    InstallLab lab;
    lab.Put("game/odf/locked.odf", "game locked");
    lab.Put("game/odf/free.odf", "game free");
    lab.Put("mods/M/odf/locked.odf", "mod locked");
    lab.Put("mods/M/odf/free.odf", "mod free");
    const auto before = lab.State("game");

    Refusing unreadable(lab.Files(), "game\\odf\\locked.odf", true);
    const auto refused = lab.Install(unreadable, "M");
    EXPECT_EQ(refused.outcome, InstallOutcome::UnsafeFile);
    EXPECT_FALSE(lab.Installed("M"));
    EXPECT_EQ(Differences(before, lab.State("game")), "");

    Refusing unsavable(lab.Files(), "locked.odf");
    const auto result = lab.Install(unsavable, "M");
    EXPECT_EQ(result.outcome, InstallOutcome::Done);
    EXPECT_EQ(result.notSaved.size(), 1u);
    EXPECT_EQ(lab.State("game").at("odf/locked.odf").bytes, "game locked");
    EXPECT_EQ(lab.State("game").at("odf/free.odf").bytes, "mod free");
    EXPECT_EQ(lab.Uninstall("M").notOurs.size(), 1u);
    EXPECT_EQ(Differences(before, lab.State("game")), "");
}

TEST(InstallTest, AFileThatIsNotReplacedKeepsNoSavedCopy) {
    InstallLab lab;
    lab.Put("game/odf/a.odf", "game a");
    lab.Put("mods/M/odf/a.odf", "mod a, which cannot be read");
    Refusing unreadable(lab.Files(), "M\\odf\\a.odf");
    const auto result = lab.Install(unreadable, "M");
    EXPECT_EQ(result.notCopied.size(), 1u);
    EXPECT_EQ(result.saved, 0u);
    lab.Put("game/odf/a.odf", "what the player made of it");
    EXPECT_EQ(lab.Uninstall("M").notOurs.size(), 1u);
    EXPECT_EQ(lab.State("game").at("odf/a.odf").bytes, "what the player made of it");
}

TEST(InstallTest, AFolderInTheWayBlocksOneFileOnly) {
    InstallLab lab;
    lab.Put("game/odf/a.odf/inside.txt", "kept");
    lab.Put("game/odf/b.odf", "game b");
    lab.Put("mods/M/odf/a.odf", "mod a");
    lab.Put("mods/M/odf/b.odf", "mod b");
    const auto before = lab.State("game");
    const auto result = lab.Install("M");
    EXPECT_EQ(result.notCopied.size(), 1u);
    EXPECT_EQ(result.installed, 1u);
    EXPECT_FALSE(lab.Uninstall("M").BackupStays());
    EXPECT_EQ(Differences(before, lab.State("game")), "");
}

TEST(InstallTest, ASecondInstallationKeepsSavedCopiesAndSavesWhatIsTheGames) {
    InstallLab lab;
    lab.Put("game/odf/a.odf", "game a");
    lab.Put("game/odf/later.odf", "game later");
    lab.Put("mods/M/odf/a.odf", "mod a");
    lab.Put("mods/Other/odf/theirs.odf", "other's");
    lab.Install("M");
    lab.Install("Other");
    const auto installed = lab.BackupTime("M");

    lab.Put("mods/M/odf/a.odf", "mod a, second version");
    lab.Put("mods/M/odf/later.odf", "mod later");
    lab.Put("mods/M/odf/theirs.odf", "mod theirs");
    lab.Put("mods/M/root.txt", "mod root");
    lab.Put("game/root.txt", "game root");
    const auto result = lab.Install("M");
    EXPECT_EQ(result.saved, 2u);
    const auto backup = lab.State("mods/M/Backup");
    EXPECT_EQ(Paths(backup), (std::set<std::string>{"odf/a.odf", "odf/later.odf", "root.txt"}));
    EXPECT_EQ(backup.at("odf/a.odf").bytes, "game a");
    EXPECT_EQ(lab.State("game").at("odf/a.odf").bytes, "mod a, second version");
    EXPECT_EQ(lab.BackupTime("M"), installed);
}

TEST(InstallTest, EachFolderIsListedOnce) {
    InstallLab lab;
    for (int i = 0; i < 30; ++i) {
        const auto name = "odf/ships/" + std::to_string(i) + ".odf";
        if (i % 2 == 0) lab.Put("game/" + name, "game");
        lab.Put("mods/M/" + name, "mod");
    }
    class Counting : public test::ListingFileSystem {
    public:
        using ListingFileSystem::ListingFileSystem;
        Result<FileInfo> Stat(std::string_view path) const override {
            ++stats;
            return Base().Stat(path);
        }
        mutable int stats = 0;
    } counting(lab.Files());
    lab.Install(counting, "M");
    lab.Uninstall(counting, "M");
    // Once for the installation and once for the uninstallation.
    for (const auto& [folder, times] : counting.listed)
        EXPECT_LE(times, 2) << folder;
    EXPECT_LE(counting.stats, 3);
}

TEST(UninstallTest, AModThatWasNeverInstalledIsDeletedFromTheGame) {
    InstallLab lab;
    lab.Put("game/odf/a.odf", "game a");
    lab.Put("game/odf/ModInfo.txt", "not touched");
    lab.Put("mods/M/odf/a.odf", "mod a");
    lab.Put("mods/M/odf/ModInfo.txt", "mod info");
    EXPECT_EQ(lab.Uninstall("M").deleted, 1u);
    EXPECT_EQ(Paths(lab.State("game")), (std::set<std::string>{"odf/ModInfo.txt"}));
}

TEST(UninstallTest, ABackupThatMustStayLetsASecondUninstallationTakeNothingAway) {
    InstallLab lab;
    lab.Put("game/odf/equal.odf", "equal in game and mod");
    lab.Put("game/odf/other.odf", "game other");
    lab.Put("game/odf/left.odf", "game left");
    lab.Put("mods/M/odf/equal.odf", "equal in game and mod");
    lab.Put("mods/M/odf/other.odf", "mod other");
    lab.Put("mods/M/odf/left.odf", "mod left");
    const auto before = lab.State("game");
    lab.Install("M");
    lab.Remove("mods/M/odf/left.odf");
    lab.Put("mods/M/Backup/notes/mine.txt", "the player's");
    const auto installed = lab.BackupTime("M");

    const auto first = lab.Uninstall("M");
    EXPECT_TRUE(first.BackupStays());
    EXPECT_EQ(first.restored, 2u);
    const std::set<std::string> staying = {"notes/mine.txt", "odf/equal.odf", "odf/left.odf"};
    EXPECT_EQ(Paths(lab.State("mods/M/Backup")), staying);
    EXPECT_EQ(lab.BackupTime("M"), installed);

    EXPECT_TRUE(lab.Uninstall("M").BackupStays());
    EXPECT_EQ(Paths(lab.State("mods/M/Backup")), staying);
    EXPECT_EQ(lab.SharedFiles(), "");
    auto expected = before;
    expected.at("odf/left.odf") = lab.State("game").at("odf/left.odf"); // no longer the mod's business
    EXPECT_EQ(Differences(expected, lab.State("game")), "");
}

TEST(UninstallTest, BackupInAnySpellingIsTheBackup) {
    InstallLab lab;
    lab.Put("game/odf/a.odf", "game a");
    lab.Put("mods/M/odf/a.odf", "mod a");
    const auto before = lab.State("game");
    lab.Install("M");
    std::filesystem::rename(lab.Native("mods/M/Backup"), lab.Native("mods/M/backup"));
    EXPECT_EQ(lab.Install("M").saved, 0u);
    EXPECT_FALSE(lab.Uninstall("M").BackupStays());
    EXPECT_FALSE(lab.Installed("M"));
    EXPECT_EQ(Differences(before, lab.State("game")), "");
}

} // namespace
} // namespace quillbay
