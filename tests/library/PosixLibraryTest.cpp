#include "library/FindEntry.h"
#include "library/InstalledMods.h"
#include "library/ModHousekeeping.h"
#include "library/OwnTree.h"
#include "modinfo/ModDetails.h"
#include "support/FaultyFileSystem.h"
#include "support/InstallLab.h"
#include "support/TempFolder.h"

#include <sched.h>
#include <sys/mount.h>

namespace quillbay::test {
namespace {

namespace fs = std::filesystem;

class PosixInstallTest : public testing::Test {
protected:
    /// A symbolic link in the lab, with its folder.
    void Link(const fs::path& target, const char* name) {
        fs::create_directories(lab.Native(name).parent_path());
        fs::create_symlink(target, lab.Native(name));
    }
    InstallLab lab;
};

TEST_F(PosixInstallTest, ALinkInTheGameIsSavedAndRestoredAsALink) {
    lab.Make({"elsewhere/target.odf", "mods/M/odf/dangling.odf", "mods/Later/odf/linked.odf"});
    lab.Put("mods/M/odf/linked.odf", "elsewhere/target.odf");
    Link("../../elsewhere/target.odf", "game/odf/linked.odf");
    Link("nowhere", "game/odf/dangling.odf");
    const auto before = lab.State("game");
    const auto elsewhere = lab.State("elsewhere");

    FaultyFileSystem files(lab.Files());
    for (const bool copies : {false, true}) {
        if (copies) files.hook = FaultyFileSystem::OnTwoDisks;
        EXPECT_EQ(lab.Install(files, "M").saved, 2u);
        EXPECT_FALSE(fs::is_symlink(lab.Native("game/odf/linked.odf")));
        EXPECT_EQ(lab.Install(files, "Later").saved, 1u);
        EXPECT_FALSE(lab.Uninstall(files, "M").BackupStays());
        EXPECT_FALSE(lab.Uninstall(files, "Later").BackupStays());
        EXPECT_EQ(Differences(before, lab.State("game")), "") << copies;
        EXPECT_EQ(Differences(elsewhere, lab.State("elsewhere")), "");
    }
}

TEST_F(PosixInstallTest, FilesOfAModAreReadThroughLinks) {
    const char* const source = "elsewhere/ships/a.odf";
    lab.Make({source});
    Link(lab.Native("elsewhere/ships"), "mods/M/odf/ships");
    Link(lab.Native(source), "mods/M/b.odf");
    const auto elsewhere = lab.State("elsewhere");
    EXPECT_EQ(lab.Install("M").installed, 2u);
    EXPECT_EQ(lab.Read("game"), (Contents{{"odf/ships/a.odf", source}, {"b.odf", source}}));
    EXPECT_EQ(lab.Uninstall("M").deleted, 2u);
    EXPECT_EQ(lab.Read("game"), Contents());
    EXPECT_EQ(Differences(elsewhere, lab.State("elsewhere")), "");
}

TEST_F(PosixInstallTest, SpellingsThatDifferInCaseOnlyAreOneFile) {
    lab.Make({"game/ODF/ships/Cruiser.odf", "mods/M/odf/ships/cruiser.odf", "mods/M/ODF/SHIPS/CRUISER.ODF",
              "mods/M/ODF/SHIPS/only.odf"});
    const auto before = lab.State("game");
    EXPECT_EQ(lab.Install("M").installed, 2u);
    EXPECT_EQ(lab.Read("game"), (Contents{{"ODF/ships/Cruiser.odf", "mods/M/ODF/SHIPS/CRUISER.ODF"},
                                          {"ODF/ships/only.odf", "mods/M/ODF/SHIPS/only.odf"}}));

    // What the player respelled goes back to the game's own spelling.
    fs::rename(lab.Native("game/ODF/ships/Cruiser.odf"), lab.Native("game/ODF/ships/cruiser.ODF"));
    EXPECT_FALSE(lab.Uninstall("M").BackupStays());
    EXPECT_EQ(Differences(before, lab.State("game")), "");
}

TEST_F(PosixInstallTest, NamesThatAreNotUtf8AndNamesWithSeparatorsDoNoHarm) {
    lab.Make({"game/odf/plain.odf", "mods/M/odf/caf\xE9.odf", "mods/M/odf/escape.odf"});
    fs::rename(lab.Native("mods/M/odf/escape.odf"), lab.Native("mods/M/odf") / "..\\..\\escape.odf");
    const auto before = lab.State("game");
    EXPECT_EQ(lab.Install("M").installed, 1u);
    EXPECT_TRUE(fs::exists(lab.Native("game/odf/caf\xE9.odf")));
    EXPECT_EQ(lab.Uninstall("M").deleted, 1u);
    EXPECT_EQ(Differences(before, lab.State("game")), "");
}

TEST_F(PosixInstallTest, NothingIsKeptWhereALinkLeads) {
    lab.Make({"game/a.txt", "mods/M/a.txt"});
    lab.Install("M");
    lab.Put("game/a.txt", "the player's");
    fs::create_directories(lab.Native("elsewhere"));
    Link(lab.Native("elsewhere"), "mods/M/Changed");
    EXPECT_TRUE(lab.Uninstall("M").BackupStays());
    EXPECT_EQ(lab.Read("game"), (Contents{{"a.txt", "the player's"}}));
    EXPECT_EQ(lab.Read("elsewhere"), Contents());
}

TEST_F(PosixInstallTest, WhatLeadsFromModToGameOrBackIsRefused) {
    const struct {
        const char* link;   ///< made in the place of what is there
        const char* target; ///< what it leads to
        Refusal refusal;
    } kWays[] = {
        {"mods/M", "game", Refusal::LeadsIntoGame},
        {"mods/M", "game/odf", Refusal::LeadsIntoGame},
        {"mods/M/odf", "game/odf", Refusal::LeadsIntoGame},
        {"mods/M/a.txt", "game/a.txt", Refusal::LeadsIntoGame},
        {"game/odf", "mods/M/odf", Refusal::LeadsIntoGame},
        {"game/a.txt", "mods/M/a.txt", Refusal::LeadsIntoGame},
        {"mods/M/Backup", "elsewhere", Refusal::BackupIsLink},
        {"mods/M/odf", "elsewhere", Refusal::None},
    };
    for (const auto& [link, target, refusal] : kWays) {
        SCOPED_TRACE(std::string(link) + " to " + target);
        for (const char* folder : {"game", "mods", "elsewhere"})
            lab.Remove(folder);
        lab.Make({"game/a.txt", "game/odf/b.odf", "mods/M/a.txt", "mods/M/odf/b.odf", "elsewhere/c.odf"});
        lab.Remove(link);
        Link(lab.Native(target), link);
        const auto before = lab.State("");
        EXPECT_EQ(lab.Install("M").refusal, refusal);
        EXPECT_EQ(lab.Uninstall("M").refusal, refusal);
        if (refusal != Refusal::None) {
            EXPECT_EQ(Differences(before, lab.State("")), "");
        }
    }
}

TEST_F(PosixInstallTest, AnotherNameOfTheModsFileIsNotItsInstalledCopy) {
    lab.Make({"mods/M/odf/a.odf", "mods/M/b.txt"});
    lab.Install("M");
    fs::remove(lab.Native("game/odf/a.odf"));
    fs::create_hard_link(lab.Native("mods/M/odf/a.odf"), lab.Native("game/odf/a.odf"));
    const auto result = lab.Uninstall("M");
    EXPECT_EQ(result.deleted, 1u);
    EXPECT_EQ(result.notOurs.size(), 1u);
    EXPECT_EQ(lab.Read("game"), (Contents{{"odf/a.odf", "mods/M/odf/a.odf"}}));
    EXPECT_FALSE(lab.Installed("M"));
    EXPECT_EQ(lab.Uninstall("M").notOurs.size(), 1u);
}

class PosixLibraryTest : public DiskTest {};

TEST_F(PosixLibraryTest, TheExactSpellingWins) {
    for (const char* folder : {"Mods\\Old", "mods\\New\\ADDON\\no", "mods\\New\\Addon\\yes"})
        PutFolder(temp_ / folder);
    EXPECT_FALSE(PrepareLibraryFolder(*disk_, temp_.Path()));
    EXPECT_EQ(disk_->Stat(temp_ / "Mods").ValueOr({}).name, "Mods");
    const std::vector<ModRow> rows = ScanModLibrary(*disk_, LibraryFolder(temp_.Path()));
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[1].path.text, "New\\Addon\\yes");

    for (const std::string name : {"modinfo.txt", "MODINFO.TXT", "ModInfo.txt"})
        PutFile(temp_ / "mods\\New" + "\\" + name, "Author: " + name);
    EXPECT_EQ(ReadModDetails(*disk_, temp_ / "mods\\New").captions.author, "ModInfo.txt");

    PutFile(temp_ / "mods\\Backup", "a file, which hides no folder");
    EXPECT_FALSE(IsInstalled(*disk_, temp_ / "mods"));
    PutFolder(temp_ / "mods\\bACKUP");
    EXPECT_TRUE(IsInstalled(*disk_, temp_ / "mods"));
    EXPECT_FALSE(HasExactBackup(*disk_, temp_ / "mods"));
}

/// Shows a folder a second time at the place of another one, for this process alone. Only root may do that.
class BindMount {
public:
    BindMount(std::string_view folder, std::string_view place) : place_(DiskText(place)) {
        isMounted_ = ::unshare(CLONE_NEWNS) == 0 &&
                     ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                     ::mount(DiskText(folder).c_str(), place_.c_str(), nullptr, MS_BIND, nullptr) == 0;
    }
    BindMount(const BindMount&) = delete;
    BindMount& operator=(const BindMount&) = delete;
    ~BindMount() {
        if (isMounted_) ::umount2(place_.c_str(), MNT_DETACH);
    }

    explicit operator bool() const { return isMounted_; }

private:
    std::string place_;
    bool isMounted_ = false;
};

/// A mod into which a part of the game is linked.
class PosixModRemovalTest : public DiskTest {
protected:
    PosixModRemovalTest() {
        PutFile(temp_ / "game\\odf\\ships\\a.odf", "game's own");
        PutFolder(temp_ / "game\\odf\\weapons");
        PutFile(temp_ / "mods\\M\\Sod\\mod.sod", "mod");
        for (const auto& [target, name] : {std::pair{"game/odf", "M/ODF"}, {"game", "Linked"}})
            fs::create_symlink(DiskPath(temp_ / target), DiskPath(temp_ / "mods") / name);
    }
    ~PosixModRemovalTest() override {
        EXPECT_EQ(FileBytes(temp_ / "game\\odf\\ships\\a.odf"), "game's own");
        EXPECT_EQ(disk_->List(temp_ / "game\\odf", Detail::Names)->size(), 2U);
    }
};

TEST_F(PosixModRemovalTest, NeverLeavesTheModAndLeavesStubbornFilesToTheTree) {
    FaultyFileSystem files(*disk_);
    files.hook = [](auto operation, auto path, auto) {
        const bool is = operation == "RemoveFile" && path.ends_with(".sod");
        return std::make_error_code(is ? std::errc::io_error : std::errc());
    };
    const auto expectOne = [](std::size_t done, std::size_t total) { EXPECT_EQ(done + total, 2U); };
    for (const char* mod : {"mods\\M", "mods\\Linked"})
        EXPECT_FALSE(RemoveModFolder(files, temp_ / mod, expectOne).error);
    EXPECT_TRUE(disk_->List(temp_ / "mods", Detail::Names)->empty());
}

TEST_F(PosixModRemovalTest, SubfoldersComeAndGoInsideTheModOnly) {
    PutFile(temp_ / "mods\\M\\bitmaps", "a file in the way");
    const SubfolderResult result = MakeSubfolders(*disk_, temp_ / "mods\\M");
    EXPECT_EQ(result.failed, temp_ / "mods\\M\\bitmaps\\");
    EXPECT_TRUE(disk_->Stat(temp_ / "mods\\M\\Textures\\Rgb"));
    EXPECT_EQ(RemoveSubfolders(*disk_, temp_ / "mods\\M"), result.made);
    EXPECT_EQ(disk_->List(temp_ / "mods\\M", Detail::Names)->size(), 3U);
}

TEST_F(PosixModRemovalTest, WhatIsMountedIsNoPartOfATreeAndIsNamed) {
    const auto all = disk_->List("/", Detail::Names);
    const auto own = OwnTree(*disk_).List("/", Detail::Names);
    EXPECT_TRUE(FindEntry(*all, "proc", EntryKind::Folder));
    EXPECT_FALSE(FindEntry(*own, "proc", EntryKind::Folder));
    EXPECT_TRUE(FindEntry(*own, "etc", EntryKind::Folder));

    // "x" is entered by descriptor, "Sod" by its path; each holds the game.
    for (const char* place : {"mods\\M\\x\\y", "mods\\M\\Sod", "mods\\M"}) {
        PutFolder(temp_ / place);
        const BindMount mount(temp_ / "game", temp_ / place);
        if (!mount) break; // only root may
        EXPECT_TRUE(InfoOf(place).isMount);
        const auto result = RemoveModFolder(*disk_, temp_ / "mods\\M", [](auto, auto) {});
        EXPECT_EQ(result.error, std::errc::cross_device_link);
        EXPECT_TRUE(result.isMount);
        EXPECT_EQ(result.stays, temp_ / place);
        EXPECT_EQ(disk_->RemoveTree(temp_ / place), std::errc::cross_device_link);
        EXPECT_EQ(BytesOf(std::string(place) + "\\odf\\ships\\a.odf"), "game's own");
    }
    EXPECT_EQ(RemoveModFolder(*disk_, temp_ / "mods\\M", [](auto, auto) {}).stays, temp_ / "mods\\M");
    EXPECT_EQ(disk_->List(temp_ / "mods", Detail::Names)->size(), 1U) << "the link to the game";
}

} // namespace
} // namespace quillbay::test
