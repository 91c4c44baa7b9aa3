#include "platform/FileSystem.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <gtest/gtest.h>

// What every file system has to do, on each system the same.
namespace quillbay {

namespace {

using test::FileBytes;
using test::PutFile;
using test::PutFolder;

const FileTime kOldTime{std::chrono::seconds(930000001)};
constexpr CopyOptions kReplace{.replace = true};

class FileSystemContractTest : public testing::Test {
protected:
    /// The names in a folder, sorted.
    std::vector<std::string> Names(std::string_view folder) {
        std::vector<std::string> names;
        for (const auto& entry : fs_.List(folder, Detail::Names).ValueOr({}))
            names.push_back(entry.name);
        std::sort(names.begin(), names.end());
        return names;
    }
    FileInfo Info(std::string_view path) { return fs_.Stat(path).ValueOr({}); }
    bool IsThere(std::string_view path) { return static_cast<bool>(fs_.Stat(path)); }

    test::TempFolder temp_;
    std::unique_ptr<FileSystem> owner_ = MakeFileSystem();
    FileSystem& fs_ = *owner_;
};

using Strings = std::vector<std::string>;

TEST_F(FileSystemContractTest, ListsNamesKindsSizesAndTimes) {
    PutFile(temp_ / "Mods\\Some file.TXT", "12345");
    PutFolder(temp_ / "Mods\\Größe \xF0\x9F\x9A\x80");
    ASSERT_FALSE(fs_.SetModified(temp_ / "Mods\\Some file.TXT", kOldTime));
    EXPECT_EQ(Names(temp_ / "Mods"), (Strings{"Größe \xF0\x9F\x9A\x80", "Some file.TXT"}));

    const auto entries = fs_.List(temp_ / "Mods\\", Detail::Full).ValueOr({});
    ASSERT_EQ(entries.size(), 2U);
    const auto& file = entries[entries[0].kind == EntryKind::File ? 0 : 1];
    const auto& folder = entries[entries[0].kind == EntryKind::File ? 1 : 0];
    EXPECT_EQ(file.name, "Some file.TXT");
    EXPECT_TRUE(file.IsPlainFile());
    EXPECT_FALSE(file.isLink);
    EXPECT_FALSE(file.readOnly);
    EXPECT_EQ(file.size, 5U);
    EXPECT_EQ(file.modified, kOldTime);
    EXPECT_EQ(folder.kind, EntryKind::Folder);
    EXPECT_FALSE(folder.IsPlainFile());

    const auto info = Info(temp_ / "Mods/Some file.TXT\\");
    EXPECT_EQ(info.name, "Some file.TXT");
    EXPECT_EQ(info.kind, EntryKind::File);
    EXPECT_EQ(info.size, 5U);
    EXPECT_EQ(info.modified, kOldTime);
    EXPECT_EQ(info.links, 1U);
    EXPECT_EQ(fs_.List(temp_ / "Mods\\Some file.TXT", Detail::Names).Error(), std::errc::not_a_directory);
}

TEST_F(FileSystemContractTest, LookUpsIgnoreLetterCase) {
    PutFile(temp_ / "odf\\Ships\\Bär.odf", "ship");
    const std::string other = temp_ / "ODF\\ships\\BÄR.ODF";
    EXPECT_EQ(Info(other).name, "Bär.odf");
    EXPECT_EQ(fs_.Read(other, 0, 10).ValueOr({}), "ship");
    EXPECT_EQ(Names(temp_ / "Odf\\SHIPS"), Strings{"Bär.odf"});
    EXPECT_EQ(fs_.TreeSize(temp_ / "ODF").ValueOr(0), 4U);
    EXPECT_EQ(fs_.SameContents(other, temp_ / "odf/Ships/Bär.odf").ValueOr(false), true);
    EXPECT_FALSE(fs_.SetModified(other, kOldTime));
    EXPECT_EQ(Info(other).modified, kOldTime);
    EXPECT_FALSE(fs_.SetReadOnly(other, true));
    EXPECT_TRUE(Info(temp_ / "odf/Ships/Bär.odf").readOnly);
    EXPECT_FALSE(fs_.SetReadOnly(other, false));

    // One name each for folders and files that exist in another spelling; a new name goes into the folder
    // that is there.
    EXPECT_FALSE(fs_.MakeFolder(temp_ / "ODF"));
    EXPECT_FALSE(fs_.MakeFolder(temp_ / "ODF\\SHIPS\\New"));
    EXPECT_FALSE(fs_.WriteFile(other, "written"));
    EXPECT_FALSE(fs_.Copy(other, temp_ / "ODF\\SHIPS\\Copy.odf", {}));
    EXPECT_FALSE(fs_.HardLink(other, temp_ / "ODF\\SHIPS\\Link.odf", false));
    EXPECT_FALSE(fs_.Rename(temp_ / "ODF\\SHIPS\\COPY.odf", temp_ / "ODF\\SHIPS\\Renamed.odf"));
    EXPECT_EQ(Names(temp_.Path()), Strings{"odf"});
    EXPECT_EQ(Names(temp_ / "odf\\Ships"), (Strings{"Bär.odf", "Link.odf", "New", "Renamed.odf"}));
    EXPECT_EQ(FileBytes(temp_ / "odf\\Ships\\Renamed.odf"), "written");

    EXPECT_FALSE(fs_.RemoveFile(temp_ / "ODF\\ships\\LINK.ODF"));
    EXPECT_FALSE(fs_.RemoveEmptyFolder(temp_ / "ODF\\ships\\NEW"));
    EXPECT_EQ(Names(temp_ / "odf\\Ships"), (Strings{"Bär.odf", "Renamed.odf"}));
    EXPECT_FALSE(fs_.RemoveTree(temp_ / "Odf"));
    EXPECT_EQ(Names(temp_.Path()), Strings{});
}

TEST_F(FileSystemContractTest, RealPathIsOneForAllNamesOfAFolder) {
    PutFolder(temp_ / "Mods\\Übung");
    const auto real = fs_.RealPath(temp_ / "Mods\\Übung");
    ASSERT_TRUE(real);
    EXPECT_EQ(fs_.RealPath(temp_ / "mods/ÜBUNG\\").ValueOr({}), *real);
    EXPECT_EQ(fs_.RealPath(temp_ / "mods\\..\\Mods\\übung\\.").ValueOr({}), *real);
    EXPECT_TRUE(real->ends_with("Übung"));
    EXPECT_EQ(fs_.RealPath(temp_ / "Mods\\None").Error(), std::errc::no_such_file_or_directory);
}

TEST_F(FileSystemContractTest, WhatIsMissingIsReportedByEveryOperation) {
    const auto missing = std::errc::no_such_file_or_directory;
    PutFile(temp_ / "file", "x");
    for (const std::string& path : {temp_ / "none", temp_ / "none\\deeper"}) {
        EXPECT_EQ(fs_.List(path, Detail::Full).Error(), missing);
        EXPECT_EQ(fs_.Stat(path).Error(), missing);
        EXPECT_EQ(fs_.Read(path, 0, 1).Error(), missing);
        EXPECT_EQ(fs_.ReadLink(path).Error(), missing);
        EXPECT_EQ(fs_.SameContents(path, temp_ / "file").Error(), missing);
        EXPECT_EQ(fs_.SameContents(temp_ / "file", path).Error(), missing);
        EXPECT_EQ(fs_.TreeSize(path).Error(), missing);
        EXPECT_EQ(fs_.RemoveEmptyFolder(path), missing);
        EXPECT_EQ(fs_.RemoveFile(path), missing);
        EXPECT_EQ(fs_.RemoveTree(path), missing);
        EXPECT_EQ(fs_.Copy(path, temp_ / "new", {}), missing);
        EXPECT_EQ(fs_.HardLink(path, temp_ / "new", false), missing);
        EXPECT_EQ(fs_.Rename(path, temp_ / "new"), missing);
        EXPECT_EQ(fs_.SetReadOnly(path, true), missing);
        EXPECT_EQ(fs_.SetModified(path, kOldTime), missing);
    }
    const std::string homeless = temp_ / "none\\new";
    EXPECT_EQ(fs_.MakeFolder(homeless), missing);
    EXPECT_EQ(fs_.WriteFile(homeless, "x"), missing);
    EXPECT_EQ(fs_.Copy(temp_ / "file", homeless, kReplace), missing);
    EXPECT_EQ(fs_.HardLink(temp_ / "file", homeless, true), missing);
    EXPECT_EQ(fs_.Rename(temp_ / "file", homeless), missing);
    EXPECT_EQ(Names(temp_.Path()), Strings{"file"});
}

TEST_F(FileSystemContractTest, TextsThatAreNoPathAreRefused) {
    PutFile(temp_ / "file", "x");
    const std::string file = temp_ / "file";
    const auto refused = std::errc::invalid_argument;
    for (const std::string& path : {std::string(), file + '\0' + "more"}) {
        EXPECT_EQ(fs_.List(path, Detail::Names).Error(), refused);
        EXPECT_EQ(fs_.Stat(path).Error(), refused);
        EXPECT_EQ(fs_.Read(path, 0, 1).Error(), refused);
        EXPECT_EQ(fs_.TreeSize(path).Error(), refused);
        EXPECT_EQ(fs_.RealPath(path).Error(), refused);
        EXPECT_EQ(fs_.MakeFolder(path), refused);
        EXPECT_EQ(fs_.RemoveEmptyFolder(path), refused);
        EXPECT_EQ(fs_.RemoveFile(path), refused);
        EXPECT_EQ(fs_.RemoveTree(path), refused);
        EXPECT_EQ(fs_.Copy(file, path, kReplace), refused);
        EXPECT_EQ(fs_.Rename(file, path), refused);
        EXPECT_EQ(fs_.WriteFile(path, ""), refused);
    }
    // The temporary name of the operations themselves is no destination.
    EXPECT_EQ(fs_.Copy(file, temp_ / std::string(kTempNew), kReplace), refused);
    EXPECT_EQ(fs_.WriteFile(temp_ / std::string(kTempNew), ""), refused);
    EXPECT_EQ(Names(temp_.Path()), Strings{"file"});
}

TEST_F(FileSystemContractTest, ReadsAnyPartOfAFile) {
    PutFile(temp_ / "file", std::string("ab\0\r\ncd", 7));
    EXPECT_EQ(fs_.Read(temp_ / "file", 0, 100).ValueOr({}), std::string("ab\0\r\ncd", 7));
    EXPECT_EQ(fs_.Read(temp_ / "file", 5, 1).ValueOr({}), "c");
    EXPECT_EQ(fs_.Read(temp_ / "file", 7, 5).ValueOr("none"), "");
    EXPECT_EQ(fs_.Read(temp_ / "file", UINT64_MAX, SIZE_MAX).ValueOr("none"), "");
    EXPECT_EQ(fs_.Read(temp_ / "file", 6, SIZE_MAX).ValueOr({}), "d");
    EXPECT_TRUE(fs_.Read(temp_.Path(), 0, 1).Error());
    EXPECT_EQ(fs_.ReadLink(temp_ / "file").Error(), std::errc::invalid_argument);
}

TEST_F(FileSystemContractTest, ComparesContents) {
    std::string bytes(700'001, 'x');
    PutFile(temp_ / "a", bytes);
    PutFile(temp_ / "same", bytes);
    bytes.back() = 'y';
    PutFile(temp_ / "lastDiffers", bytes);
    PutFile(temp_ / "longer", bytes + "z");
    PutFile(temp_ / "empty", "");
    PutFile(temp_ / "empty2", "");
    EXPECT_EQ(fs_.SameContents(temp_ / "a", temp_ / "same").ValueOr(false), true);
    EXPECT_EQ(fs_.SameContents(temp_ / "a", temp_ / "a").ValueOr(false), true);
    EXPECT_EQ(fs_.SameContents(temp_ / "a", temp_ / "lastDiffers").ValueOr(true), false);
    EXPECT_EQ(fs_.SameContents(temp_ / "lastDiffers", temp_ / "longer").ValueOr(true), false);
    EXPECT_EQ(fs_.SameContents(temp_ / "empty", temp_ / "empty2").ValueOr(false), true);
    EXPECT_TRUE(fs_.SameContents(temp_ / "a", temp_.Path()).Error());
}

TEST_F(FileSystemContractTest, TreeSizeCountsEveryNameOfAFile) {
    PutFile(temp_ / "t\\a", "123");
    PutFile(temp_ / "t\\b\\.hidden", "4567");
    PutFolder(temp_ / "t\\empty\\deeper");
    EXPECT_EQ(fs_.TreeSize(temp_ / "t").ValueOr(0), 7U);
    ASSERT_FALSE(fs_.HardLink(temp_ / "t\\a", temp_ / "t\\b\\again", false));
    EXPECT_EQ(fs_.TreeSize(temp_ / "t\\").ValueOr(0), 10U);
    EXPECT_EQ(fs_.TreeSize(temp_ / "t\\a").Error(), std::errc::not_a_directory);
}

TEST_F(FileSystemContractTest, MakesAndRemovesFolders) {
    PutFile(temp_ / "file", "x");
    EXPECT_FALSE(fs_.MakeFolder(temp_ / "new\\"));
    EXPECT_FALSE(fs_.MakeFolder(temp_ / "new"));
    EXPECT_EQ(fs_.MakeFolder(temp_ / "file"), std::errc::file_exists);
    PutFile(temp_ / "new\\file", "x");
    EXPECT_EQ(fs_.RemoveEmptyFolder(temp_ / "new"), std::errc::directory_not_empty);
    EXPECT_EQ(fs_.RemoveEmptyFolder(temp_ / "file"), std::errc::not_a_directory);
    EXPECT_EQ(fs_.RemoveTree(temp_ / "file"), std::errc::not_a_directory);
    EXPECT_EQ(fs_.RemoveTree(temp_ / "new\\."), std::errc::invalid_argument);
    EXPECT_TRUE(fs_.RemoveFile(temp_ / "new"));
    EXPECT_EQ(FileBytes(temp_ / "new\\file"), "x");
    EXPECT_FALSE(fs_.RemoveFile(temp_ / "new\\file"));
    EXPECT_FALSE(fs_.RemoveEmptyFolder(temp_ / "new"));
    EXPECT_EQ(Names(temp_.Path()), Strings{"file"});
}

TEST_F(FileSystemContractTest, CopyKeepsBytesTimesAndProtection) {
    const std::string large(1'500'000, '\xAB');
    for (const std::string& bytes : {large, std::string()}) {
        PutFile(temp_ / "source", bytes);
        ASSERT_FALSE(fs_.SetModified(temp_ / "source", kOldTime));
        ASSERT_FALSE(fs_.SetReadOnly(temp_ / "source", true));
        EXPECT_FALSE(fs_.Copy(temp_ / "source", temp_ / "copy", {.replace = true, .flush = true}));
        EXPECT_EQ(FileBytes(temp_ / "copy"), bytes);
        EXPECT_EQ(Info(temp_ / "copy").modified, kOldTime);
        EXPECT_TRUE(Info(temp_ / "copy").readOnly);
        EXPECT_FALSE(fs_.Copy(temp_ / "source", temp_ / "copy", {.replace = true, .makeWritable = true}));
        EXPECT_EQ(FileBytes(temp_ / "copy"), bytes);
        EXPECT_EQ(Info(temp_ / "copy").modified, kOldTime);
        EXPECT_FALSE(Info(temp_ / "copy").readOnly);
        ASSERT_FALSE(fs_.SetReadOnly(temp_ / "source", false));
    }
    EXPECT_EQ(Names(temp_.Path()), (Strings{"copy", "source"}));
}

TEST_F(FileSystemContractTest, CopyReplacesOnlyWhereItMay) {
    PutFile(temp_ / "source", "new");
    PutFile(temp_ / "target", "old");
    PutFolder(temp_ / "folder");
    EXPECT_EQ(fs_.Copy(temp_ / "source", temp_ / "target", {}), std::errc::file_exists);
    EXPECT_EQ(FileBytes(temp_ / "target"), "old");
    EXPECT_EQ(fs_.Copy(temp_ / "source", temp_ / "folder", {}), std::errc::file_exists);
    EXPECT_EQ(fs_.Copy(temp_ / "source", temp_ / "folder", kReplace), std::errc::is_a_directory);
    EXPECT_EQ(fs_.Copy(temp_ / "folder", temp_ / "target", kReplace), std::errc::is_a_directory);
    EXPECT_EQ(fs_.HardLink(temp_ / "source", temp_ / "target", false), std::errc::file_exists);
    EXPECT_EQ(fs_.HardLink(temp_ / "source", temp_ / "folder", true), std::errc::is_a_directory);
    EXPECT_EQ(fs_.WriteFile(temp_ / "folder", "new"), std::errc::is_a_directory);
    EXPECT_EQ(FileBytes(temp_ / "target"), "old");
    // Nothing of the failed attempts is left, and the name is free again.
    EXPECT_EQ(Names(temp_.Path()), (Strings{"folder", "source", "target"}));

    ASSERT_FALSE(fs_.SetReadOnly(temp_ / "target", true));
    EXPECT_FALSE(fs_.Copy(temp_ / "source", temp_ / "target", kReplace));
    EXPECT_EQ(FileBytes(temp_ / "target"), "new");
    EXPECT_FALSE(Info(temp_ / "target").readOnly);
    EXPECT_EQ(Names(temp_.Path()), (Strings{"folder", "source", "target"}));
}

TEST_F(FileSystemContractTest, HardLinksAreNamesOfOneFile) {
    PutFile(temp_ / "a", "one");
    PutFile(temp_ / "other", "two");
    ASSERT_FALSE(fs_.HardLink(temp_ / "a", temp_ / "b", false));
    EXPECT_EQ(Info(temp_ / "a").links, 2U);
    ASSERT_FALSE(fs_.HardLink(temp_ / "a", temp_ / "other", true));
    EXPECT_EQ(FileBytes(temp_ / "other"), "one");
    EXPECT_EQ(Info(temp_ / "a").links, 3U);
    ASSERT_FALSE(fs_.HardLink(temp_ / "a", temp_ / "b", true));
    EXPECT_EQ(Info(temp_ / "a").links, 3U);

    // Replacing one name leaves the others with the old bytes; a copy onto itself ends the sharing.
    PutFile(temp_ / "new", "new");
    ASSERT_FALSE(fs_.Copy(temp_ / "new", temp_ / "b", kReplace));
    ASSERT_FALSE(fs_.WriteFile(temp_ / "new", "written"));
    ASSERT_FALSE(fs_.Copy(temp_ / "a", temp_ / "a", kReplace));
    ASSERT_FALSE(fs_.Copy(temp_ / "a", temp_ / "other", kReplace));
    EXPECT_EQ(FileBytes(temp_ / "a"), "one");
    EXPECT_EQ(FileBytes(temp_ / "b"), "new");
    EXPECT_EQ(FileBytes(temp_ / "other"), "one");
    for (const auto* name : {"a", "b", "other"})
        EXPECT_EQ(Info(temp_ / name).links, 1U);
    EXPECT_EQ(Names(temp_.Path()), (Strings{"a", "b", "new", "other"}));
}

TEST_F(FileSystemContractTest, LeftoversOfAnInterruptedOperationAreSwept) {
    PutFile(temp_ / "source", "new");
    PutFile(temp_ / "target", "old");
    const std::string leftover = temp_ / std::string(kTempNew);
    const auto leave = [&] {
        PutFile(leftover, "half");
        ASSERT_FALSE(fs_.SetReadOnly(leftover, true));
    };
    leave();
    EXPECT_FALSE(fs_.Copy(temp_ / "source", temp_ / "copy", {}));
    EXPECT_EQ(Names(temp_.Path()), (Strings{"copy", "source", "target"}));
    leave();
    EXPECT_FALSE(fs_.HardLink(temp_ / "source", temp_ / "target", true));
    EXPECT_EQ(Names(temp_.Path()), (Strings{"copy", "source", "target"}));
    leave();
    EXPECT_FALSE(fs_.WriteFile(temp_ / "target", "written"));
    EXPECT_EQ(Names(temp_.Path()), (Strings{"copy", "source", "target"}));
    EXPECT_EQ(FileBytes(temp_ / "copy"), "new");
    EXPECT_EQ(FileBytes(temp_ / "target"), "written");
    EXPECT_EQ(FileBytes(temp_ / "source"), "new");
}

TEST_F(FileSystemContractTest, RenamesInsideAVolume) {
    PutFile(temp_ / "a", "a");
    PutFile(temp_ / "b", "b");
    PutFile(temp_ / "Folder\\inside", "x");
    EXPECT_EQ(fs_.Rename(temp_ / "a", temp_ / "b"), std::errc::file_exists);
    EXPECT_EQ(fs_.Rename(temp_ / "a", temp_ / "Folder"), std::errc::file_exists);
    EXPECT_EQ(fs_.Rename(temp_ / "Folder", temp_ / "b"), std::errc::file_exists);
    EXPECT_FALSE(fs_.Rename(temp_ / "a", temp_ / "a"));
    EXPECT_FALSE(fs_.Rename(temp_ / "b", temp_ / "Folder\\c"));
    EXPECT_FALSE(fs_.Rename(temp_ / "a", temp_ / "A"));
    EXPECT_FALSE(fs_.Rename(temp_ / "Folder", temp_ / "folder"));
    EXPECT_EQ(Names(temp_.Path()), (Strings{"A", "folder"}));
    EXPECT_EQ(Names(temp_ / "folder"), (Strings{"c", "inside"}));
    EXPECT_TRUE(fs_.Rename(temp_ / "folder", temp_ / "folder\\deeper"));
    EXPECT_EQ(FileBytes(temp_ / "folder\\c"), "b");
}

TEST_F(FileSystemContractTest, WriteFileReplacesTheWholeFile) {
    const std::string longText(300'000, 'l');
    EXPECT_FALSE(fs_.WriteFile(temp_ / "file", longText));
    EXPECT_EQ(FileBytes(temp_ / "file"), longText);
    EXPECT_FALSE(fs_.WriteFile(temp_ / "FILE", std::string("a\0\n", 3)));
    EXPECT_EQ(FileBytes(temp_ / "file"), std::string("a\0\n", 3));
    EXPECT_FALSE(fs_.WriteFile(temp_ / "file", ""));
    EXPECT_EQ(FileBytes(temp_ / "file"), "");
    EXPECT_EQ(Names(temp_.Path()), Strings{"file"});
}

TEST_F(FileSystemContractTest, RemovesReadOnlyFilesAlsoInsideTrees) {
    PutFile(temp_ / "single", "x");
    PutFile(temp_ / "tree\\a\\b\\protected", "x");
    PutFile(temp_ / "tree\\a\\.hidden", "x");
    ASSERT_FALSE(fs_.SetReadOnly(temp_ / "single", true));
    ASSERT_FALSE(fs_.SetReadOnly(temp_ / "tree\\a\\b\\protected", true));
    EXPECT_TRUE(Info(temp_ / "single").readOnly);
    EXPECT_FALSE(fs_.RemoveFile(temp_ / "single"));
    EXPECT_FALSE(fs_.RemoveTree(temp_ / "tree"));
    EXPECT_EQ(Names(temp_.Path()), Strings{});
}

TEST_F(FileSystemContractTest, PathsMayBeLong) {
    std::string folder = temp_ / "long";
    ASSERT_FALSE(fs_.MakeFolder(folder));
    for (int i = 0; i < 12; ++i) {
        folder += "\\A folder whose name has forty letters, ä";
        ASSERT_FALSE(fs_.MakeFolder(folder));
    }
    ASSERT_GT(folder.size(), 400U);
    ASSERT_FALSE(fs_.WriteFile(folder + "\\file", "far down"));
    ASSERT_FALSE(fs_.Copy(folder + "\\FILE", folder + "\\copy", kReplace));
    ASSERT_FALSE(fs_.HardLink(folder + "\\file", folder + "\\link", false));
    ASSERT_FALSE(fs_.Rename(folder + "\\copy", folder + "\\renamed"));
    EXPECT_EQ(Names(folder), (Strings{"file", "link", "renamed"}));
    EXPECT_EQ(fs_.Read(folder + "\\renamed", 4, 99).ValueOr({}), "down");
    EXPECT_EQ(Info(folder + "\\file").links, 2U);
    EXPECT_EQ(fs_.SameContents(folder + "\\file", folder + "\\renamed").ValueOr(false), true);
    EXPECT_EQ(fs_.TreeSize(temp_ / "long").ValueOr(0), 24U);
    EXPECT_TRUE(fs_.RealPath(folder));
    EXPECT_FALSE(fs_.SetModified(folder, kOldTime));
    EXPECT_EQ(Info(folder).modified, kOldTime);
    EXPECT_FALSE(fs_.RemoveFile(folder + "\\link"));
    EXPECT_FALSE(fs_.RemoveTree(temp_ / "LONG"));
    EXPECT_FALSE(IsThere(temp_ / "long"));
}

} // namespace

} // namespace quillbay
