#include "catalogue/CatalogueTime.h"
#include "catalogue/FileCatalogue.h"
#include "catalogue/FileList.h"
#include "catalogue/FinderActions.h"
#include "catalogue/GameScan.h"
#include "platform/PathText.h"
#include "support/FaultyFileSystem.h"
#include "support/TempFolder.h"

namespace quillbay::test {
namespace {

using Paths = std::vector<std::string>;

class FileListTest : public DiskTest {
protected:
    const std::string game_ = temp_ / "game";
    const std::string program_ = temp_ / "program";

    FileListTest() { PutFolder(program_); }

    void Put(std::string_view name, std::string_view bytes, std::int64_t seconds) {
        const std::string path = Join(game_, name);
        PutFile(path, bytes);
        EXPECT_FALSE(disk_->SetModified(path, FileTime(std::chrono::seconds(seconds))));
    }
    bool Load(std::string_view list) const {
        PutFile(Join(program_, "FileList.txt"), list);
        return bool(FileCatalogue::LoadFileList(*disk_, program_));
    }
    std::string List() const { return FileBytes(Join(program_, "FileList.txt")); }
    /// What a scan with this catalogue must find.
    void ExpectFound(std::string_view list, const Paths& newFiles, const Paths& modifiedFiles) const {
        FoundFiles found;
        GameScan scan(*disk_, game_, FileCatalogue(list), found);
        while (scan.Step()) {
        }
        std::ranges::sort(found.newFiles);
        std::ranges::sort(found.modifiedFiles);
        EXPECT_EQ(found.newFiles, newFiles);
        EXPECT_EQ(found.modifiedFiles, modifiedFiles);
    }
};

TEST_F(FileListTest, RoundTripOfAnOddGame) {
    const std::string longName = "odf\\" + std::string(31, 'n');
    const std::string green = "odf\\ships\\gr\xC3\xBCn.odf";
    Put(R"(odf\ships\scout.odf)", "12345", 1'000'000'000);
    Put(green, "1", -5);
    Put("odf\\ships\\\xE6\x97\xA5\xE6\x9C\xAC.odf", "1", 5'000'000'000);
    Put(longName, "12", 1);
    Put(longName + ".longer", "1", 2);
    Put(" lead.txt", "1", 3);
    Put("a;b.txt", "1", 4);
    Put("folder = x", "1", 5);
    Put("huge.bin", "", 7);
    std::filesystem::resize_file(DiskPath(Join(game_, "huge.bin")), 5'368'709'121);
    PutFile(Join(game_, "unknown/file.txt"), "1");
    EXPECT_EQ(RecompileFileList(*disk_, game_, program_).outcome, RecompileOutcome::Done);

    const std::string list = List();
    EXPECT_TRUE(list.starts_with("\r\nfolder = AdmiralsLog\\\r\n\r\n\r\nfolder = animations\\\r\n\r\n"));
    EXPECT_NE(list.find("\r\n\r\nfolder = 'rootdir'\r\n\r\n"), std::string::npos);
    EXPECT_NE(list.find("\r\nhuge.bin;5368709121;"), std::string::npos);
    EXPECT_EQ(CountRecords(list).records, 8U);

    // The two names that a record cannot hold count as new, whatever is done.
    ExpectFound(list, {"a;b.txt", "folder = x"}, {});
    Put(longName, "12", 2);
    Put(R"(odf\ships\scout.odf)", "123456", 1'000'000'000);
    Put("Brand.new", "1", 1);
    ASSERT_FALSE(disk_->Rename(Join(game_, green), Join(game_, "odf\\ships\\GR\xC3\x9CN.ODF")));
    ASSERT_FALSE(disk_->RemoveFile(Join(game_, "huge.bin")));
    ExpectFound(list, {"Brand.new", "a;b.txt", "folder = x"}, {longName, R"(odf\ships\scout.odf)"});
}

TEST_F(FileListTest, ReaderTakesGoodLinesAndPassesOverBadOnes) {
    const FileCatalogue catalogue(
        "early;1;1/2/2003\r\nfolder = odf\\\r\n"
        "good;007;01/02/2003 04:05:06 pm;more\r\n"
        ";1;1/2/2003\r\nnosize\r\nempty;;1/2/2003\r\nword;x;1/2/2003\r\nrest;4x;1/2/2003\r\n"
        "notime;1\r\nbadtime;1;13/1/2003\r\nGOOD;8;1/2/2003\r\n   \r\n"
        "folder = ODF\\\r\nlost;1;1/2/2003\r\n"
        "folder = 'rootdir'\rroot; 12 ;1/2/2003\r"
        "folder = odf\\\r\nagain;1;1/2/2003 \r\n Folder = x;1;1/2/2003");
    const std::size_t odf = PositionOfFolder("odf\\");
    for (const char* name : {"good", "again", " Folder = x"})
        EXPECT_TRUE(catalogue.Find(odf, name)) << name;
    for (const char* name : {"early", "nosize", "empty", "word", "rest", "notime", "badtime", "lost", "root"})
        EXPECT_FALSE(catalogue.Find(odf, name)) << name;
    EXPECT_TRUE(catalogue.Find(kKnownFolderCount, "ROOT"));
    EXPECT_EQ(catalogue.Find(odf, "good")->size, 7U) << "the first record counts";
    EXPECT_EQ(catalogue.Find(odf, "good")->modified, ParseCatalogueTime("1/2/2003 16:05:06"));
    EXPECT_EQ(CountRecords("a;20000000000000000000\r\nb;4096x\r\nc;x5").bytes, 2e19 + 4096);

    // A list that names no folder would make every file new.
    for (const char* refused : {"\nfolder = odf\\\na;1;1/2/2003\n", "folder = odf\\\na;1;1/2/2003\n", "x"})
        EXPECT_FALSE(Load(refused)) << refused;
    for (const char* read : {"", "\r\nfolder = odf\\\r\n\r\n"})
        EXPECT_TRUE(Load(read)) << read;
}

TEST_F(FileListTest, RecompileWithoutAGameOrAFolderKeepsTheOldFile) {
    Put(R"(odf\scout.odf)", "1", 1);
    const std::string path = Join(program_, "FileList.txt");
    PutFile(path, "old");
    for (const std::string& gone : {std::string(), temp_ / "nowhere", path})
        EXPECT_EQ(RecompileFileList(*disk_, gone, program_).outcome, RecompileOutcome::NoGame) << gone;
    EXPECT_EQ(List(), "old");
    // A folder that is gone when its turn comes is one without files.
    FaultyFileSystem faulty(*disk_);
    faulty.Arm(3, FaultyFileSystem::Fault::Fail, std::errc::no_such_file_or_directory);
    EXPECT_EQ(RecompileFileList(faulty, game_, program_).outcome, RecompileOutcome::Done);
    EXPECT_NE(List(), "old");
}

namespace fs = std::filesystem;
using Names = std::vector<std::string>;
const Names kNames{"odf\\ships\\a.odf", "Textures\\Rgb\\b.tga", "c.txt"};

class FinderActions : public DiskTest {
protected:
    FinderActions() { Reset(); }
    /// A game in which every file holds its name, and no destination.
    void Reset() const {
        fs::remove_all(DiskPath(temp_ / "mod"));
        for (const std::string& name : kNames)
            PutFile(temp_ / ("game\\" + name), name);
    }
    bool Exists(const std::string& path) const { return fs::exists(DiskPath(temp_ / path)); }
    bool Has(const std::string& folder, const std::string& name) const {
        return Exists(folder + name) && FileBytes(temp_ / (folder + name)) == name;
    }
    FileActionResult Run(FileSystem& files, FileAction action, std::string_view to) const {
        return RunFileAction(files,
                             PlanFileAction(files, action, temp_ / "game", temp_ / to, kNames, nullptr),
                             [](std::size_t, std::size_t) {});
    }
};

TEST_F(FinderActions, UseTheSpellingThatIsThereAndTidyUp) {
    for (const FileAction action : {FileAction::Move, FileAction::Copy}) {
        Reset();
        PutFile(temp_ / "mod/ODF/Ships/A.odf", "old");
        PutFolder(temp_ / "mod/C.TXT");
        PutFolder(temp_ / "mod/bitmaps/ms");
        const bool moves = action == FileAction::Move;
        const FileActionResult result = Run(*disk_, action, "mod\\");
        EXPECT_EQ(result.failed, Names{"c.txt"});
        EXPECT_EQ(result.done, moves ? 1U : 2U) << "a move counts no file that stays";
        EXPECT_EQ(FileBytes(temp_ / "mod/ODF/Ships/A.odf"), moves ? "old" : kNames[0]);
        EXPECT_EQ(std::distance(fs::directory_iterator(DiskPath(temp_ / "mod/ODF/Ships")), {}), 1);
        EXPECT_TRUE(Has("game\\", kNames[0]) && Has("mod\\", kNames[1]));
        EXPECT_EQ(Has("game\\", kNames[1]), !moves);
        EXPECT_FALSE(Exists("mod/bitmaps"));
    }
}

TEST_F(FinderActions, LoseNothingWhateverFails) {
    using Fault = FaultyFileSystem::Fault;
    FaultyFileSystem other(*disk_); // as if the destination were on another volume
    other.hook = [](auto operation, auto path, auto) {
        EXPECT_NE(operation, "Copy") << path << " leaves its place before its copy is on the disk";
        return std::make_error_code(operation == "Rename" ? std::errc::cross_device_link : std::errc());
    };
    FaultyFileSystem same(*disk_);
    const auto check = [&](FaultyFileSystem& files, FileAction action) {
        Reset();
        Run(files, action, "mod");
        const auto meet = [&](std::size_t number, Fault fault) {
            Reset();
            files.Arm(number, fault);
            const auto result = Run(files, action, "mod");
            for (const std::string& name : kNames) {
                const bool inGame = Has("game\\", name), inMod = Has("mod\\", name);
                EXPECT_TRUE(inGame || (inMod && action == FileAction::Move));
                if (fault != Fault::Fail || result.refusal) continue;
                const bool failed = std::ranges::count(result.failed, name) > 0;
                EXPECT_TRUE(failed ? inGame : inMod && inGame == (action == FileAction::Copy));
            }
        };
        SweepFaults(std::string(files.Trace()), {Fault::Fail, Fault::EndTempHalf, Fault::EndAfter}, meet);
    };
    check(same, FileAction::Copy);
    same.Arm(0, Fault::None);
    check(same, FileAction::Move);
    check(other, FileAction::Move);
}

TEST_F(FinderActions, LeaveTheGameAloneAsItsOwnDestination) {
    std::error_code noLinks;
    fs::create_directory_symlink(DiskPath(temp_ / "game"), DiskPath(temp_ / "link"), noLinks);
    for (const char* to : {"game", "GAME\\", noLinks ? "game/" : "link"})
        for (const FileAction action : {FileAction::Copy, FileAction::Move})
            EXPECT_EQ(Run(*disk_, action, to).refusal.value().cause,
                      FileActionRefusal::Cause::DestinationIsGame)
                << to;
    for (const std::string& name : kNames)
        EXPECT_TRUE(Has("game\\", name)) << name;
}

} // namespace
} // namespace quillbay::test
