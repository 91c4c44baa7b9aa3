#include "support/DiskTest.h"

#include <functional>
#include <map>

// What every file system has to do, on each system the same.
namespace quillbay::test {
namespace {

const FileTime kOldTime{std::chrono::seconds(930000001)};
constexpr CopyOptions kReplace{.replace = true};
using Strings = std::vector<std::string>;
using Answers = std::map<std::string, std::error_code>;

class FileSystemContractTest : public DiskTest {
protected:
    /// What the operations on an existing entry say about a path, by their names.
    Answers OnEntry(const std::string& path) {
        return {{"List", disk_->List(path, Detail::Full).Error()},
                {"Stat", disk_->Stat(path).Error()},
                {"Read", disk_->Read(path, 0, 1).Error()},
                {"ReadLink", disk_->ReadLink(path).Error()},
                {"SameContents", disk_->SameContents(path, file_).Error()},
                {"SameContents with", disk_->SameContents(file_, path).Error()},
                {"TreeSize", disk_->TreeSize(path).Error()},
                {"RealPath", disk_->RealPath(path).Error()},
                {"RemoveEmptyFolder", disk_->RemoveEmptyFolder(path)},
                {"RemoveFile", disk_->RemoveFile(path)},
                {"RemoveTree", disk_->RemoveTree(path)},
                {"Copy", disk_->Copy(path, temp_ / "new", {})},
                {"HardLink", disk_->HardLink(path, temp_ / "new", false)},
                {"Rename", disk_->Rename(path, temp_ / "new")},
                {"SetReadOnly", disk_->SetReadOnly(path, true)},
                {"SetModified", disk_->SetModified(path, kOldTime)}};
    }
    /// What those that make a new entry say.
    Answers OnNewName(const std::string& path) {
        return {{"MakeFolder", disk_->MakeFolder(path)},
                {"WriteFile", disk_->WriteFile(path, "x")},
                {"Copy to", disk_->Copy(file_, path, kReplace)},
                {"HardLink to", disk_->HardLink(file_, path, true)},
                {"Rename to", disk_->Rename(file_, path)}};
    }
    static void ExpectAll(const Answers& answers, std::errc expected) {
        for (const auto& [operation, answer] : answers)
            EXPECT_EQ(answer, expected) << operation;
    }

    const std::string file_ = temp_ / "file";
};

TEST_F(FileSystemContractTest, ListsNamesKindsSizesAndTimes) {
    PutFile(temp_ / "Mods\\Some file.TXT", "12345");
    PutFolder(temp_ / "Mods\\Größe 🚀");
    ASSERT_FALSE(disk_->SetModified(temp_ / "Mods\\Some file.TXT", kOldTime));
    EXPECT_EQ(NamesIn("Mods"), (Strings{"Größe 🚀", "Some file.TXT"}));
    for (const DirEntry& entry : disk_->List(temp_ / "Mods\\", Detail::Full).ValueOr({})) {
        const bool isFile = entry.name == "Some file.TXT";
        EXPECT_EQ(entry.kind, isFile ? EntryKind::File : EntryKind::Folder);
        EXPECT_EQ(entry.IsPlainFile(), isFile);
        EXPECT_FALSE(entry.isLink || entry.hidden || entry.readOnly) << entry.name;
        EXPECT_EQ(entry.size, isFile ? 5U : 0U);
        EXPECT_EQ(entry.modified == kOldTime, isFile);
    }
    const FileInfo info = InfoOf("Mods/Some file.TXT\\");
    EXPECT_EQ(info.kind, EntryKind::File);
    EXPECT_EQ(info.size, 5U);
    EXPECT_EQ(info.modified, kOldTime);
    EXPECT_EQ(disk_->List(temp_ / "Mods\\Some file.TXT", Detail::Names).Error(), std::errc::not_a_directory);
}

TEST_F(FileSystemContractTest, LookUpsIgnoreLetterCase) {
    PutFile(temp_ / "odf\\Ships\\Bär.odf", "ship");
    const std::string other = temp_ / "ODF\\ships\\BÄR.ODF";
    const std::string folder = temp_ / "ODF\\SHIPS\\";
    EXPECT_EQ(disk_->Stat(other).ValueOr({}).name, "Bär.odf");
    EXPECT_EQ(disk_->Read(other, 0, 10).ValueOr({}), "ship");
    EXPECT_EQ(NamesIn("Odf\\SHIPS"), Strings{"Bär.odf"});
    EXPECT_EQ(disk_->TreeSize(temp_ / "ODF").ValueOr(0), 4U);
    EXPECT_EQ(disk_->SameContents(other, temp_ / "odf/Ships/Bär.odf").ValueOr(false), true);
    EXPECT_FALSE(disk_->SetModified(other, kOldTime));
    EXPECT_FALSE(disk_->SetReadOnly(other, true));
    EXPECT_EQ(InfoOf("odf/Ships/Bär.odf").modified, kOldTime);
    EXPECT_TRUE(InfoOf("odf/Ships/Bär.odf").readOnly);
    EXPECT_FALSE(disk_->SetReadOnly(other, false));

    // One name each for folders and files that exist in another spelling; a new name goes into the folder
    // that is there.
    EXPECT_FALSE(disk_->MakeFolder(temp_ / "ODF"));
    EXPECT_FALSE(disk_->MakeFolder(folder + "New"));
    EXPECT_FALSE(disk_->WriteFile(other, "written"));
    EXPECT_FALSE(disk_->Copy(other, folder + "Copy.odf", {}));
    EXPECT_FALSE(disk_->HardLink(other, folder + "Link.odf", false));
    EXPECT_FALSE(disk_->Rename(folder + "COPY.odf", folder + "Renamed.odf"));
    EXPECT_EQ(NamesIn(), Strings{"odf"});
    EXPECT_EQ(NamesIn("odf\\Ships"), (Strings{"Bär.odf", "Link.odf", "New", "Renamed.odf"}));
    EXPECT_EQ(BytesOf("odf\\Ships\\Renamed.odf"), "written");
    EXPECT_FALSE(disk_->RemoveFile(folder + "LINK.ODF"));
    EXPECT_FALSE(disk_->RemoveEmptyFolder(folder + "NEW"));
    EXPECT_EQ(NamesIn("odf\\Ships"), (Strings{"Bär.odf", "Renamed.odf"}));
    EXPECT_FALSE(disk_->RemoveTree(temp_ / "Odf"));
    EXPECT_EQ(NamesIn(), Strings{});
}

TEST_F(FileSystemContractTest, RealPathIsOneForAllNamesOfAFolder) {
    PutFolder(temp_ / "Mods\\Übung");
    const auto real = disk_->RealPath(temp_ / "Mods\\Übung").ValueOr({});
    EXPECT_TRUE(real.ends_with("Übung")) << real;
    EXPECT_EQ(disk_->RealPath(temp_ / "mods/ÜBUNG\\").ValueOr({}), real);
    EXPECT_EQ(disk_->RealPath(temp_ / "mods\\..\\Mods\\übung\\.").ValueOr({}), real);
}

TEST_F(FileSystemContractTest, EveryOperationTellsWhatIsMissingAndWhatIsNoPath) {
    PutFile(file_, "x");
    for (const char* missing : {"none", "none\\deeper"}) {
        SCOPED_TRACE(missing);
        ExpectAll(OnEntry(temp_ / missing), std::errc::no_such_file_or_directory);
    }
    ExpectAll(OnNewName(temp_ / "none\\new"), std::errc::no_such_file_or_directory);
    for (const std::string& noPath : {std::string(), file_ + '\0' + "more"}) {
        SCOPED_TRACE(noPath);
        ExpectAll(OnEntry(noPath), std::errc::invalid_argument);
        ExpectAll(OnNewName(noPath), std::errc::invalid_argument);
    }
    // The temporary name of the operations themselves is no destination.
    const std::string own = temp_ / kTempNew;
    EXPECT_EQ(disk_->Copy(file_, own, kReplace), std::errc::invalid_argument);
    EXPECT_EQ(disk_->WriteFile(own, ""), std::errc::invalid_argument);
    EXPECT_EQ(NamesIn(), Strings{"file"});
}

TEST_F(FileSystemContractTest, ReadsAnyPartOfAFile) {
    PutFile(file_, std::string("ab\0\r\ncd", 7));
    EXPECT_EQ(disk_->Read(file_, 0, 100).ValueOr({}), std::string("ab\0\r\ncd", 7));
    EXPECT_EQ(disk_->Read(file_, 5, 1).ValueOr({}), "c");
    EXPECT_EQ(disk_->Read(file_, 6, SIZE_MAX).ValueOr({}), "d");
    EXPECT_EQ(disk_->Read(file_, 7, 5).ValueOr("none"), "");
    EXPECT_EQ(disk_->Read(file_, UINT64_MAX, SIZE_MAX).ValueOr("none"), "");
    EXPECT_TRUE(disk_->Read(temp_.Path(), 0, 1).Error());
    EXPECT_EQ(disk_->ReadLink(file_).Error(), std::errc::invalid_argument);
}

TEST_F(FileSystemContractTest, ComparesContents) {
    const std::string bytes(700'001, 'x');
    const std::string changed = std::string(700'000, 'x') + 'y';
    for (const auto& [name, contents] : {std::pair<const char*, std::string>{"a", bytes},
                                         {"same", bytes},
                                         {"changed", changed},
                                         {"longer", changed + 'z'},
                                         {"empty", ""},
                                         {"empty2", ""}})
        PutFile(temp_ / name, contents);
    for (const auto& [name, other, same] : {std::tuple{"a", "same", true},
                                            {"a", "a", true},
                                            {"a", "changed", false},
                                            {"changed", "longer", false},
                                            {"empty", "empty2", true}})
        EXPECT_EQ(disk_->SameContents(temp_ / name, temp_ / other).ValueOr(!same), same) << name << other;
    EXPECT_TRUE(disk_->SameContents(temp_ / "a", temp_.Path()).Error());
}

TEST_F(FileSystemContractTest, TreeSizeCountsEveryNameOfAFile) {
    PutFile(temp_ / "t\\a", "123");
    PutFile(temp_ / "t\\b\\.hidden", "4567");
    PutFolder(temp_ / "t\\empty\\deeper");
    ASSERT_FALSE(disk_->HardLink(temp_ / "t\\a", temp_ / "t\\b\\again", false));
    EXPECT_EQ(disk_->TreeSize(temp_ / "t\\").ValueOr(0), 10U);
    EXPECT_EQ(disk_->TreeSize(temp_ / "t\\a").Error(), std::errc::not_a_directory);
}

TEST_F(FileSystemContractTest, MakesAndRemovesFolders) {
    PutFile(file_, "x");
    const std::string folder = temp_ / "new";
    EXPECT_FALSE(disk_->MakeFolder(folder + "\\"));
    EXPECT_FALSE(disk_->MakeFolder(folder));
    EXPECT_EQ(disk_->MakeFolder(file_), std::errc::file_exists);
    PutFile(folder + "\\protected", "x");
    ASSERT_FALSE(disk_->SetReadOnly(folder + "\\protected", true));
    EXPECT_EQ(disk_->RemoveEmptyFolder(folder), std::errc::directory_not_empty);
    EXPECT_EQ(disk_->RemoveEmptyFolder(file_), std::errc::not_a_directory);
    EXPECT_EQ(disk_->RemoveTree(file_), std::errc::not_a_directory);
    EXPECT_EQ(disk_->RemoveTree(folder + "\\."), std::errc::invalid_argument);
    EXPECT_TRUE(disk_->RemoveFile(folder));
    EXPECT_EQ(BytesOf("new\\protected"), "x");
    EXPECT_FALSE(disk_->RemoveFile(folder + "\\protected"));
    EXPECT_FALSE(disk_->RemoveEmptyFolder(folder));
    EXPECT_EQ(NamesIn(), Strings{"file"});

    PutFile(temp_ / "tree\\a\\.hidden", "x");
    PutFile(temp_ / "tree\\a\\b\\protected", "x");
    ASSERT_FALSE(disk_->SetReadOnly(temp_ / "tree\\a\\b\\protected", true));
    EXPECT_FALSE(disk_->RemoveTree(temp_ / "tree"));
    EXPECT_EQ(NamesIn(), Strings{"file"});
}

TEST_F(FileSystemContractTest, CopiesAndWritesEveryByte) {
    PutFile(temp_ / "Written", "old");
    for (const std::string& bytes :
         {std::string(1'500'000, '\xAB'), std::string("a\0\r\n", 4), std::string()}) {
        SCOPED_TRACE(bytes.size());
        PutFile(file_, bytes);
        ASSERT_FALSE(disk_->SetModified(file_, kOldTime));
        ASSERT_FALSE(disk_->SetReadOnly(file_, true));
        for (const bool writable : {false, true}) {
            EXPECT_FALSE(disk_->Copy(file_, temp_ / "copy",
                                     {.replace = true, .flush = !writable, .makeWritable = writable}));
            EXPECT_EQ(BytesOf("copy"), bytes);
            EXPECT_EQ(InfoOf("copy").modified, kOldTime);
            EXPECT_EQ(InfoOf("copy").readOnly, !writable);
        }
        ASSERT_FALSE(disk_->SetReadOnly(file_, false));
        EXPECT_FALSE(disk_->WriteFile(temp_ / "WRITTEN", bytes));
        EXPECT_EQ(BytesOf("Written"), bytes);
    }
    EXPECT_EQ(NamesIn(), (Strings{"Written", "copy", "file"}));
}

TEST_F(FileSystemContractTest, ReplacesOnlyWhatItMay) {
    const std::string target = temp_ / "target";
    const std::string folder = temp_ / "folder";
    PutFile(file_, "new");
    PutFile(target, "old");
    PutFolder(folder);
    EXPECT_EQ(disk_->Copy(file_, target, {}), std::errc::file_exists);
    EXPECT_EQ(disk_->Copy(file_, folder, {}), std::errc::file_exists);
    EXPECT_EQ(disk_->Copy(file_, folder, kReplace), std::errc::is_a_directory);
    EXPECT_EQ(disk_->Copy(folder, target, kReplace), std::errc::is_a_directory);
    EXPECT_EQ(disk_->HardLink(file_, target, false), std::errc::file_exists);
    EXPECT_EQ(disk_->HardLink(file_, folder, true), std::errc::is_a_directory);
    EXPECT_EQ(disk_->WriteFile(folder, "new"), std::errc::is_a_directory);
    EXPECT_EQ(BytesOf("target"), "old");
    EXPECT_EQ(NamesIn(), (Strings{"file", "folder", "target"}));

    ASSERT_FALSE(disk_->SetReadOnly(target, true));
    EXPECT_FALSE(disk_->Copy(file_, target, kReplace));
    EXPECT_EQ(BytesOf("target"), "new");
    EXPECT_FALSE(InfoOf("target").readOnly);
    EXPECT_EQ(NamesIn(), (Strings{"file", "folder", "target"}));
}

TEST_F(FileSystemContractTest, HardLinksAreNamesOfOneFile) {
    const std::string other = temp_ / "other";
    const std::string third = temp_ / "third";
    PutFile(file_, "one");
    PutFile(other, "two");
    ASSERT_FALSE(disk_->HardLink(file_, third, false));
    ASSERT_FALSE(disk_->HardLink(file_, other, true));
    ASSERT_FALSE(disk_->HardLink(file_, third, true));
    EXPECT_EQ(InfoOf("file").links, 3U);
    EXPECT_EQ(BytesOf("other"), "one");

    // Replacing one name leaves the others with the old bytes; a copy onto itself ends the sharing.
    PutFile(temp_ / "new", "new");
    ASSERT_FALSE(disk_->Copy(temp_ / "new", third, kReplace));
    ASSERT_FALSE(disk_->WriteFile(temp_ / "new", "written"));
    ASSERT_FALSE(disk_->Copy(file_, file_, kReplace));
    ASSERT_FALSE(disk_->Copy(file_, other, kReplace));
    for (const auto& [name, bytes] : {std::pair{"file", "one"}, {"third", "new"}, {"other", "one"}}) {
        EXPECT_EQ(BytesOf(name), bytes);
        EXPECT_EQ(InfoOf(name).links, 1U) << name;
    }
    EXPECT_EQ(NamesIn(), (Strings{"file", "new", "other", "third"}));
}

TEST_F(FileSystemContractTest, LeftoversOfAnInterruptedOperationAreSwept) {
    PutFile(file_, "new");
    PutFile(temp_ / "target", "old");
    const std::pair<const char*, std::function<std::error_code()>> operations[] = {
        {"Copy", [&] { return disk_->Copy(file_, temp_ / "copy", {}); }},
        {"HardLink", [&] { return disk_->HardLink(file_, temp_ / "target", true); }},
        {"WriteFile", [&] { return disk_->WriteFile(temp_ / "target", "written"); }},
    };
    for (const auto& [name, run] : operations) {
        SCOPED_TRACE(name);
        PutFile(temp_ / kTempNew, "half");
        ASSERT_FALSE(disk_->SetReadOnly(temp_ / kTempNew, true));
        EXPECT_FALSE(run());
        EXPECT_EQ(NamesIn(), (Strings{"copy", "file", "target"}));
    }
    EXPECT_EQ(BytesOf("copy") + BytesOf("file") + BytesOf("target"), "newnewwritten");
}

TEST_F(FileSystemContractTest, RenamesInsideAVolume) {
    const auto rename = [&](const char* from, const char* to) {
        return disk_->Rename(temp_ / from, temp_ / to);
    };
    PutFile(temp_ / "a", "a");
    PutFile(temp_ / "b", "b");
    PutFile(temp_ / "Folder\\inside", "x");
    EXPECT_EQ(rename("a", "b"), std::errc::file_exists);
    EXPECT_EQ(rename("a", "Folder"), std::errc::file_exists);
    EXPECT_EQ(rename("Folder", "b"), std::errc::file_exists);
    EXPECT_FALSE(rename("a", "a"));
    EXPECT_FALSE(rename("b", "Folder\\c"));
    EXPECT_FALSE(rename("a", "A"));
    EXPECT_FALSE(rename("Folder", "folder"));
    EXPECT_TRUE(rename("folder", "folder\\deeper"));
    EXPECT_EQ(NamesIn(), (Strings{"A", "folder"}));
    EXPECT_EQ(NamesIn("folder"), (Strings{"c", "inside"}));
    EXPECT_EQ(BytesOf("folder\\c"), "b");
}

TEST_F(FileSystemContractTest, PathsMayBeLong) {
    std::string folder = temp_ / "long";
    ASSERT_FALSE(disk_->MakeFolder(folder));
    for (int i = 0; i < 12; ++i) {
        folder += "\\A folder whose name has forty letters, ä";
        ASSERT_FALSE(disk_->MakeFolder(folder));
    }
    ASSERT_FALSE(disk_->WriteFile(folder + "\\file", "far down"));
    ASSERT_FALSE(disk_->Copy(folder + "\\FILE", folder + "\\copy", kReplace));
    EXPECT_EQ(disk_->Read(folder + "\\copy", 4, 99).ValueOr({}), "down");
    EXPECT_EQ(disk_->TreeSize(temp_ / "LONG").ValueOr(0), 16U);
    EXPECT_TRUE(disk_->RealPath(folder));
    EXPECT_FALSE(disk_->RemoveTree(temp_ / "long"));
    EXPECT_EQ(NamesIn(), Strings{});
}

} // namespace
} // namespace quillbay::test
