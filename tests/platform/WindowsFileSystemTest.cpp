#include "support/TempFolder.h"

#include <algorithm>
#include <windows.h>

namespace quillbay::test {
namespace {

class WindowsFileSystemTest : public DiskTest {
protected:
    void PutFileWith(std::string_view name, DWORD attributes, std::string_view bytes = "12345") const {
        PutFile(temp_ / name, bytes);
        SetAttributes(name, attributes);
    }
    void SetAttributes(std::string_view name, DWORD attributes) const {
        ASSERT_TRUE(SetFileAttributesW(DiskPath(temp_ / name).c_str(), attributes));
    }
    /// What the listing says of an entry.
    DirEntry Listed(std::string_view name) const {
        for (const DirEntry& entry : disk_->List(temp_.Path(), Detail::Full).ValueOr({}))
            if (entry.name == name) return entry;
        ADD_FAILURE() << name;
        return {};
    }
};

TEST_F(WindowsFileSystemTest, AttributesAreListedCopiedAndKept) {
    PutFileWith("plain", FILE_ATTRIBUTE_NORMAL);
    PutFileWith("system", FILE_ATTRIBUTE_SYSTEM);
    PutFileWith("both", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(disk_->Copy(temp_ / "both", temp_ / "kept", {.flush = true}));
    EXPECT_FALSE(disk_->Copy(temp_ / "both", temp_ / "Writable", {.flush = true, .makeWritable = true}));
    EXPECT_FALSE(disk_->WriteFile(temp_ / "wriTABLE", "12345"));
    EXPECT_EQ(disk_->WriteFile(temp_ / "kept", "other"), std::errc::permission_denied);
    for (const auto& [name, hidden, readOnly] : {std::tuple{"plain", false, false},
                                                 {"system", true, false},
                                                 {"both", true, true},
                                                 {"kept", true, true},
                                                 {"Writable", true, false}}) {
        EXPECT_EQ(Listed(name).hidden, hidden) << name;
        EXPECT_EQ(InfoOf(name).hidden, hidden) << name;
        EXPECT_EQ(Listed(name).readOnly, readOnly) << name;
        EXPECT_EQ(Listed(name).size, 5U) << name;
    }
    EXPECT_EQ(temp_.Contents(), "Writable=12345 both=12345 kept=12345 plain=12345 system=12345");
}

TEST_F(WindowsFileSystemTest, ReplacingAReadOnlyFileLeavesItsOtherNamesAlone) {
    temp_.Put("first=old new=new");
    ASSERT_FALSE(disk_->HardLink(temp_ / "first", temp_ / "second", false));
    SetAttributes("first", FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(disk_->Copy(temp_ / "new", temp_ / "first", {.replace = true}));
    EXPECT_TRUE(InfoOf("second").readOnly);
    EXPECT_EQ(disk_->HardLink(temp_ / "second", temp_ / "third", false), std::errc::operation_not_supported);
    EXPECT_EQ(temp_.Contents(), "first=new new=new second=old");
}

TEST_F(WindowsFileSystemTest, RemovesFoldersWithTheReadOnlyAttribute) {
    PutFileWith("tree\\inner\\file", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    SetAttributes("tree\\inner", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(disk_->RemoveEmptyFolder(temp_ / "tree\\inner"), std::errc::directory_not_empty);
    EXPECT_FALSE(disk_->RemoveTree(temp_ / "tree"));
    EXPECT_EQ(temp_.Contents(), "");
}

TEST_F(WindowsFileSystemTest, TakesEveryFormOfAPath) {
    PutFile(temp_ / "odf\\ships\\a.odf", "x");
    std::string slashes = temp_ / "odf/ships/a.odf";
    std::ranges::replace(slashes, '\\', '/');
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(DiskPath(temp_ / "odf"));
    const std::string stored = temp_ / "odf\\ships\\a.odf";
    for (const std::string& form :
         {slashes, temp_ / "odf\\\\ships//a.odf", stored + "\\", temp_ / "odf\\.\\none\\..\\ships\\a.odf",
          "\\\\?\\" + stored, stored.substr(2), std::string("ships\\a.odf"),
          std::string("..\\odf/ships\\a.odf")})
        EXPECT_EQ(disk_->Stat(form).ValueOr({}).name, "a.odf") << form;
    std::filesystem::current_path(before);

    // A drive alone is its root, whatever the current folder of that drive is.
    const auto drive = disk_->List("C:", Detail::Names).ValueOr({});
    EXPECT_TRUE(std::ranges::any_of(drive, [](const DirEntry& e) { return e.name == "windows"; }));
    EXPECT_EQ(disk_->Stat("C:\\").ValueOr({}).kind, EntryKind::Folder);
}

TEST_F(WindowsFileSystemTest, RefusesTextsThatWouldNameSomethingElse) {
    PutFile(temp_ / "file", "kept");
    const auto missing = std::errc::no_such_file_or_directory;
    for (const std::string& path : {temp_ / "file:stream", temp_ / "fil?", temp_ / "*"}) {
        EXPECT_EQ(disk_->Stat(path).Error(), missing) << path;
        EXPECT_EQ(disk_->RemoveFile(path), missing) << path;
        EXPECT_EQ(disk_->RemoveTree(path), missing) << path;
        EXPECT_EQ(disk_->WriteFile(path, "other"), missing) << path;
    }
    EXPECT_EQ(temp_.Contents(), "file=kept");
    EXPECT_EQ(disk_->RemoveTree("Y:"), std::errc::invalid_argument);
}

TEST_F(WindowsFileSystemTest, KeepsNamesThatOtherProgramsCannotUse) {
    for (const char* name : {"con", "dot.", "blank "}) {
        EXPECT_FALSE(disk_->WriteFile(temp_ / name, name)) << name;
        EXPECT_EQ(Listed(name).name, name);
        EXPECT_EQ(disk_->Read(temp_ / name, 0, 100).ValueOr({}), name);
        EXPECT_FALSE(disk_->RemoveFile(temp_ / name)) << name;
        EXPECT_EQ(temp_.Contents(), "") << name;
    }
}

} // namespace
} // namespace quillbay::test
