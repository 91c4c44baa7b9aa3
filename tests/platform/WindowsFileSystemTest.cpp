#include "platform/FileSystem.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <windows.h>

namespace quillbay::test {
namespace {

std::wstring Native(const std::string& path) { return DiskPath(path).wstring(); }

void SetAttributes(const std::string& path, DWORD attributes) {
    ASSERT_TRUE(SetFileAttributesW(Native(path).c_str(), attributes));
}

class WindowsFileSystemTest : public testing::Test {
protected:
    DirEntry Listed(std::string_view name) {
        const auto entries = fs_->List(folder_.Path(), Detail::Full);
        if (!entries) return {};
        const auto found =
            std::find_if(entries->begin(), entries->end(), [&](const DirEntry& e) { return e.name == name; });
        return found == entries->end() ? DirEntry{} : *found;
    }
    std::size_t EntryCount() { return fs_->List(folder_.Path(), Detail::Names).ValueOr({}).size(); }

    TempFolder folder_;
    std::unique_ptr<FileSystem> fs_ = MakeFileSystem();
};

TEST_F(WindowsFileSystemTest, ListsHiddenAndSystemFilesAsHidden) {
    for (const char* name : {"plain", ".dot", "hidden", "system", "readonly"})
        PutFile(folder_ / name, "12345");
    SetAttributes(folder_ / "hidden", FILE_ATTRIBUTE_HIDDEN);
    SetAttributes(folder_ / "system", FILE_ATTRIBUTE_SYSTEM);
    SetAttributes(folder_ / "readonly", FILE_ATTRIBUTE_READONLY);

    EXPECT_TRUE(Listed("plain").IsPlainFile());
    EXPECT_TRUE(Listed("hidden").hidden);
    EXPECT_TRUE(Listed("system").hidden);
    EXPECT_FALSE(Listed("readonly").hidden);
    EXPECT_TRUE(Listed("readonly").readOnly);
    EXPECT_FALSE(Listed("plain").readOnly);
    EXPECT_EQ(Listed("hidden").size, 5u);
    EXPECT_TRUE(fs_->Stat(folder_ / "hidden").ValueOr({}).hidden);
}

TEST_F(WindowsFileSystemTest, CopiesAttributesAndFlushesReadOnlyCopies) {
    const std::string from = folder_ / "from";
    PutFile(from, "bytes");
    SetAttributes(from, FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY);

    EXPECT_FALSE(fs_->Copy(from, folder_ / "kept", {.flush = true}));
    EXPECT_TRUE(Listed("kept").hidden);
    EXPECT_TRUE(Listed("kept").readOnly);
    EXPECT_FALSE(fs_->Copy(from, folder_ / "writable", {.flush = true, .makeWritable = true}));
    EXPECT_TRUE(Listed("writable").hidden);
    EXPECT_FALSE(Listed("writable").readOnly);
    EXPECT_TRUE(Listed("from").readOnly);
}

TEST_F(WindowsFileSystemTest, ReplacesReadOnlyFilesAndLeavesTheirOtherNamesAlone) {
    PutFile(folder_ / "new", "new");
    for (const char* name : {"single", "first"})
        PutFile(folder_ / name, "old");
    ASSERT_FALSE(fs_->HardLink(folder_ / "first", folder_ / "second", false));
    SetAttributes(folder_ / "single", FILE_ATTRIBUTE_READONLY);
    SetAttributes(folder_ / "first", FILE_ATTRIBUTE_READONLY);

    EXPECT_FALSE(fs_->Copy(folder_ / "new", folder_ / "single", {.replace = true}));
    EXPECT_EQ(FileBytes(folder_ / "single"), "new");
    EXPECT_FALSE(Listed("single").readOnly);
    EXPECT_FALSE(fs_->Copy(folder_ / "new", folder_ / "first", {.replace = true}));
    EXPECT_EQ(FileBytes(folder_ / "first"), "new");
    EXPECT_EQ(FileBytes(folder_ / "second"), "old");
    EXPECT_TRUE(fs_->Stat(folder_ / "second").ValueOr({}).readOnly);
    EXPECT_EQ(EntryCount(), 4u);
}

TEST_F(WindowsFileSystemTest, RefusesASecondNameForAReadOnlyFile) {
    PutFile(folder_ / "file", "x");
    SetAttributes(folder_ / "file", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(fs_->HardLink(folder_ / "file", folder_ / "second", false), std::errc::operation_not_supported);
    EXPECT_EQ(EntryCount(), 1u);
}

TEST_F(WindowsFileSystemTest, RewritesAFileUnderItsStoredNameAndAttributes) {
    const std::string stored = folder_ / "ModInfo.TXT";
    PutFile(stored, "old");
    SetAttributes(stored, FILE_ATTRIBUTE_HIDDEN);
    EXPECT_FALSE(fs_->WriteFile(folder_ / "modinfo.txt", "new"));
    EXPECT_TRUE(Listed("ModInfo.TXT").hidden);
    EXPECT_EQ(FileBytes(stored), "new");

    SetAttributes(stored, FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(fs_->WriteFile(stored, "newer"), std::errc::permission_denied);
    EXPECT_EQ(FileBytes(stored), "new");
    EXPECT_EQ(EntryCount(), 1u);
}

TEST_F(WindowsFileSystemTest, RemovesFoldersWithTheReadOnlyAttribute) {
    PutFile(folder_ / "tree\\inner\\file", "x");
    SetAttributes(folder_ / "tree\\inner\\file", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    SetAttributes(folder_ / "tree\\inner", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(fs_->RemoveEmptyFolder(folder_ / "tree\\inner"), std::errc::directory_not_empty);
    EXPECT_FALSE(fs_->RemoveTree(folder_ / "tree"));
    EXPECT_EQ(EntryCount(), 0u);
}

TEST_F(WindowsFileSystemTest, TakesEveryFormOfAPath) {
    PutFile(folder_ / "odf\\ships\\a.odf", "x");
    std::string slashes = folder_ / "odf/ships/a.odf";
    std::replace(slashes.begin(), slashes.end(), '\\', '/');
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(DiskPath(folder_ / "odf"));
    const std::string stored = folder_ / "odf\\ships\\a.odf";
    for (const std::string& form :
         {slashes, folder_ / "odf\\\\ships//a.odf", stored + "\\", folder_ / "odf\\.\\none\\..\\ships\\a.odf",
          "\\\\?\\" + stored, stored.substr(2), std::string("ships\\a.odf"),
          std::string("..\\odf/ships\\a.odf")})
        EXPECT_EQ(fs_->Stat(form).ValueOr({}).name, "a.odf") << form;
    std::filesystem::current_path(before);

    // A drive alone is its root, whatever the current folder of that drive is.
    const auto drive = fs_->List("C:", Detail::Names);
    ASSERT_TRUE(drive);
    EXPECT_TRUE(
        std::any_of(drive->begin(), drive->end(), [](const DirEntry& e) { return e.name == "windows"; }));
    EXPECT_EQ(fs_->Stat("C:\\").ValueOr({}).kind, EntryKind::Folder);
    EXPECT_EQ(fs_->Stat("C:\\Windows").ValueOr({}).name, "windows");
}

TEST_F(WindowsFileSystemTest, RefusesTextsThatWouldNameSomethingElse) {
    PutFile(folder_ / "file", "kept");
    for (const std::string& path : {folder_ / "file:stream", folder_ / "fil?", folder_ / "*"}) {
        EXPECT_EQ(fs_->Stat(path).Error(), std::errc::no_such_file_or_directory) << path;
        EXPECT_EQ(fs_->RemoveFile(path), std::errc::no_such_file_or_directory) << path;
        EXPECT_EQ(fs_->RemoveTree(path), std::errc::no_such_file_or_directory) << path;
        EXPECT_EQ(fs_->WriteFile(path, "other"), std::errc::no_such_file_or_directory) << path;
    }
    EXPECT_EQ(FileBytes(folder_ / "file"), "kept");
    EXPECT_EQ(EntryCount(), 1u);
    EXPECT_EQ(fs_->RemoveTree("Y:"), std::errc::invalid_argument);
}

TEST_F(WindowsFileSystemTest, KeepsNamesThatOtherProgramsCannotUse) {
    for (const char* name : {"con", "dot.", "blank "}) {
        EXPECT_FALSE(fs_->WriteFile(folder_ / name, name)) << name;
        EXPECT_EQ(Listed(name).name, name);
        EXPECT_EQ(fs_->Read(folder_ / name, 0, 100).ValueOr({}), name);
    }
    EXPECT_EQ(EntryCount(), 3u);
    for (const char* name : {"con", "dot.", "blank "})
        EXPECT_FALSE(fs_->RemoveFile(folder_ / name)) << name;
    EXPECT_EQ(EntryCount(), 0u);
}

} // namespace
} // namespace quillbay::test
