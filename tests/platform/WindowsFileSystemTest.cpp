#include "platform/PassingError.h"
#include "platform/windows/Handle.h"
#include "platform/windows/WinError.h"
#include "support/ImportPatch.h"
#include "support/TempFolder.h"

#include <aclapi.h>
#include <algorithm>
#include <functional>
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
    EXPECT_EQ(disk_->HardLink(temp_ / "second", temp_ / "third", false), std::errc::operation_not_permitted);
    EXPECT_EQ(temp_.Contents(), "first=new new=new second=old");
}

TEST_F(WindowsFileSystemTest, RemovesFoldersWithTheReadOnlyAttribute) {
    PutFileWith("tree\\inner\\file", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    SetAttributes("tree\\inner", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(disk_->RemoveEmptyFolder(temp_ / "tree\\inner"), std::errc::directory_not_empty);
    PutFolder(temp_ / "tree\\empty");
    SetAttributes("tree\\empty", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(disk_->RemoveFile(temp_ / "tree\\empty"), std::errc::is_a_directory);
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

/// Opens a file as another program does that lets others read only, or nothing at all with `share` 0.
Handle HoldOpen(const std::string& path, DWORD share) {
    return Handle(
        CreateFileW(DiskPath(path).c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
}

TEST_F(WindowsFileSystemTest, WaitsForWhatAnotherProgramHoldsForAMoment) {
    const std::string file = temp_ / "file";
    const std::string target = temp_ / "target";
    const auto refusal = [](const auto& result) { return result.Error(); };
    Handle held;
    int pausesLeft = 0;
    std::unique_ptr<FileSystem> patient;
    const struct {
        const char* name;
        std::string held;
        DWORD share;
        std::function<std::error_code()> operation;
    } rows[] = {
        {"copy from", file, 0, [&] { return patient->Copy(file, target, {.replace = true}); }},
        {"copy over", target, FILE_SHARE_READ,
         [&] { return patient->Copy(file, target, {.replace = true}); }},
        {"link over", target, FILE_SHARE_READ, [&] { return patient->HardLink(file, target, true); }},
        {"rename over", target, FILE_SHARE_READ, [&] { return patient->RenameOver(file, target); }},
        {"write", target, FILE_SHARE_READ, [&] { return patient->WriteFile(target, "new"); }},
        {"remove", target, FILE_SHARE_READ, [&] { return patient->RemoveFile(target); }},
        {"rename", target, FILE_SHARE_READ, [&] { return patient->Rename(target, temp_ / "renamed"); }},
        {"read", target, 0, [&] { return refusal(patient->Read(target, 0, 9)); }},
        {"remove tree", temp_ / "tree\\inner", 0, [&] { return patient->RemoveTree(temp_ / "tree"); }},
    };
    for (const auto& row : rows) {
        temp_.Put("file=file target=old tree/inner=x");
        held = HoldOpen(row.held, row.share);
        ASSERT_TRUE(held) << row.name;
        patient = MakeFileSystem([&](auto) {
            if (--pausesLeft == 0) held = Handle();
        });
        pausesLeft = 1000;
        EXPECT_TRUE(IsInUse(row.operation())) << row.name << ": held for good";
        EXPECT_EQ(pausesLeft, 1000 - 7) << row.name;
        pausesLeft = 3;
        EXPECT_FALSE(row.operation()) << row.name << ": held for three pauses";
        EXPECT_EQ(pausesLeft, 0) << row.name;
        Ignore(disk_->RemoveFile(temp_ / "renamed"));
    }
}

TEST_F(WindowsFileSystemTest, TakesAnotherTemporaryNameWhereTheFirstIsHeld) {
    temp_.Put("file=new target=old ~quillbay.new=held");
    const Handle held = HoldOpen(temp_ / kTempNew, 0);
    const auto disk = MakePlainFileSystem();
    const std::string target = temp_ / "target";
    EXPECT_FALSE(disk->Copy(temp_ / "file", target, {.replace = true}));
    EXPECT_EQ(BytesOf("target"), "new");
    EXPECT_FALSE(disk->WriteFile(target, "written"));
    EXPECT_EQ(BytesOf("target"), "written");
    EXPECT_EQ(disk->Copy(temp_ / "file", temp_ / kOtherTempNew, {}), std::errc::invalid_argument);
    EXPECT_FALSE(disk->Stat(temp_ / kOtherTempNew));
}

TEST_F(WindowsFileSystemTest, ErrorsHaveTheSystemsSentencesAndStdsMeanings) {
    const auto inUse = std::errc::device_or_resource_busy;
    const auto denied = std::errc::permission_denied;
    for (const auto& [code, meaning, passes, sentence] :
         {std::tuple{5, denied, true, ""},
          {32, inUse, true, ""},
          {33, inUse, true, ""},
          {1224, inUse, true, ""},
          {19, denied, false, ""},
          {17, std::errc::cross_device_link, false, ""},
          {396, std::errc::operation_not_supported, false, "cloud"},
          {225, std::errc{}, false, "virus"}}) {
        const auto error = WinError(static_cast<unsigned long>(code));
        EXPECT_EQ(error == meaning, meaning != std::errc{}) << code;
        EXPECT_EQ(MayPass(error, FileAccess::Writing), passes) << code;
        EXPECT_NE(error.message().find(sentence), std::string::npos) << error.message();
        EXPECT_FALSE(error.message().ends_with('.'));
        for (const int other : {5, 32, 33, 1224, 19, 17, 396, 225})
            EXPECT_EQ(error.message() == WinError(static_cast<unsigned long>(other)).message(),
                      code == other);
    }
    EXPECT_FALSE(MayPass(WinError(ERROR_ACCESS_DENIED), FileAccess::Reading));
}

TEST_F(WindowsFileSystemTest, LooksUpEachPathOnce) {
    temp_.Put("file=file target=old");
    const std::string file = temp_ / "file";
    const std::string target = temp_ / "target";
    const auto disk = MakePlainFileSystem();
    const auto count = [](const auto& operation) {
        const LookUpCounter counter;
        EXPECT_FALSE(operation());
        return counter.Count();
    };
    const auto failure = [](const auto& result) { return result.Error(); };
    EXPECT_EQ(count([&] { return disk->HardLink(file, temp_ / "new", false); }), 2);
    EXPECT_EQ(count([&] { return disk->HardLink(file, target, true); }), 2);
    EXPECT_EQ(count([&] { return disk->Copy(file, target, {.replace = true, .makeWritable = true}); }), 4);
    EXPECT_EQ(count([&] { return failure(disk->Stat(file)); }), 1);
    EXPECT_EQ(count([&] { return failure(disk->FingerprintFile(file)); }), 1);
    EXPECT_EQ(count([&] { return disk->RemoveFile(file); }), 1);
    EXPECT_EQ(
        count([&] { return failure(disk->MakeFile(file, {})) ? std::error_code() : std::error_code(); }), 2);
}

BOOL WINAPI RefuseFlush(HANDLE) {
    SetLastError(ERROR_INVALID_FUNCTION);
    return FALSE;
}
DWORD WINAPI KnowNoFinalPath(HANDLE, wchar_t*, DWORD, DWORD) {
    SetLastError(ERROR_INVALID_FUNCTION);
    return 0;
}

TEST_F(WindowsFileSystemTest, WorksOnDrivesThatKnowNeitherFlushingNorFinalPaths) {
    temp_.Put("file=new Folder/inside=x target=old");
    const auto real = disk_->RealPath(temp_ / "Folder").ValueOr({});
    const ImportPatch noFlush(nullptr, "FlushFileBuffers", &RefuseFlush);
    const ImportPatch noPath(nullptr, "GetFinalPathNameByHandleW", &KnowNoFinalPath);
    ASSERT_TRUE(noFlush && noPath);
    EXPECT_FALSE(disk_->Copy(temp_ / "file", temp_ / "target", {.replace = true, .flush = true}));
    EXPECT_FALSE(disk_->WriteFile(temp_ / "file", "written"));
    EXPECT_EQ(temp_.Contents(), "Folder/ Folder/inside=x file=written target=new");
    std::string other = temp_ / "FOLDER\\..\\folder";
    other[0] = 'c';
    EXPECT_EQ(disk_->RealPath(other).ValueOr({}), real);
    EXPECT_EQ(InfoOf("FILE").name, "file");
}

TEST_F(WindowsFileSystemTest, AWrittenFileKeepsItsRightsAndAttributes) {
    PutFileWith("file", FILE_ATTRIBUTE_HIDDEN);
    const std::wstring path = DiskPath(temp_ / "file").wstring();
    const auto describe = [&] {
        PACL rights = nullptr;
        PSECURITY_DESCRIPTOR owned = nullptr;
        EXPECT_EQ(GetNamedSecurityInfoW(path.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                        nullptr, &rights, nullptr, &owned),
                  DWORD{ERROR_SUCCESS});
        std::string text(reinterpret_cast<const char*>(rights), rights->AclSize);
        LocalFree(owned);
        return std::pair(GetFileAttributesW(path.c_str()), text);
    };
    const auto inherited = describe();
    EXPLICIT_ACCESSW everybody{};
    BuildExplicitAccessWithNameW(&everybody, const_cast<wchar_t*>(L"EVERYONE"), GENERIC_ALL, SET_ACCESS, 0);
    PACL rights = nullptr;
    ASSERT_EQ(SetEntriesInAclW(1, &everybody, nullptr, &rights), DWORD{ERROR_SUCCESS});
    std::wstring changed = path;
    SetNamedSecurityInfoW(changed.data(), SE_FILE_OBJECT,
                          DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION, nullptr, nullptr,
                          rights, nullptr);
    LocalFree(rights);
    const auto before = describe();
    EXPECT_NE(before, inherited);
    EXPECT_FALSE(disk_->WriteFile(temp_ / "file", "other"));
    EXPECT_EQ(describe(), before);
    EXPECT_EQ(BytesOf("file"), "other");
}

} // namespace
} // namespace quillbay::test
