#include "platform/PatientFileSystem.h"
#include "support/FaultyFileSystem.h"
#include "support/TempFolder.h"

#include <functional>
#include <utility>

// What every file system has to do, on each system the same.
namespace quillbay::test {
namespace {

const FileTime kOldTime{std::chrono::seconds(930000001)};
constexpr CopyOptions kReplace{.replace = true};

class FileSystemContractTest : public DiskTest {
protected:
    /// What every operation says about `path`, as an existing entry or as the name of a new one.
    void ExpectAll(const std::string& path, std::errc expected) {
        const std::pair<const char*, std::error_code> answers[] = {
            {"List", disk_->List(path, Detail::Full).Error()},
            {"Stat", disk_->Stat(path).Error()},
            {"Read", disk_->Read(path, 0, 1).Error()},
            {"ReadLink", disk_->ReadLink(path).Error()},
            {"SameContents", disk_->SameContents(path, file_).Error()},
            {"SameContents with", disk_->SameContents(file_, path).Error()},
            {"FingerprintFile", disk_->FingerprintFile(path).Error()},
            {"TreeSize", disk_->TreeSize(path).Error()},
            {"RealPath", disk_->RealPath(path).Error()},
            {"SpaceAt", disk_->SpaceAt(path).Error()},
            {"RemoveEmptyFolder", disk_->RemoveEmptyFolder(path)},
            {"RemoveFile", disk_->RemoveFile(path)},
            {"RemoveTree", disk_->RemoveTree(path)},
            {"Copy", disk_->Copy(path, temp_ / "new", {})},
            {"HardLink", disk_->HardLink(path, temp_ / "new", false)},
            {"Rename", disk_->Rename(path, temp_ / "new")},
            {"RenameOver", disk_->RenameOver(path, temp_ / "new")},
            {"SetReadOnly", disk_->SetReadOnly(path, true)},
            {"SetModified", disk_->SetModified(path, kOldTime)},
            {"TryToWrite", disk_->TryToWrite(path)},
            {"MakeFolder", disk_->MakeFolder(path)},
            {"WriteFile", disk_->WriteFile(path, "x")},
            {"MakeFile", disk_->MakeFile(path, {}).Error()},
            {"Copy to", disk_->Copy(file_, path, kReplace)},
            {"HardLink to", disk_->HardLink(file_, path, true)},
            {"Rename to", disk_->Rename(file_, path)},
            {"RenameOver to", disk_->RenameOver(file_, path)},
        };
        for (const auto& [operation, answer] : answers)
            EXPECT_EQ(answer, expected) << operation << ' ' << path;
    }

    const std::string file_ = temp_ / "file";
};

TEST_F(FileSystemContractTest, LookUpsIgnoreLetterCase) {
    PutFile(temp_ / "odf\\Ships\\Bär.odf", "ship");
    const std::string other = temp_ / "ODF\\ships\\BÄR.ODF";
    const std::string folder = temp_ / "ODF\\SHIPS\\";
    EXPECT_EQ(disk_->Stat(other).ValueOr({}).name, "Bär.odf");
    EXPECT_EQ(disk_->Read(other, 0, 10).ValueOr({}), "ship");
    EXPECT_EQ(disk_->List(folder, Detail::Names).ValueOr({}).size(), 1U);
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
    EXPECT_FALSE(disk_->WriteFile(other, "new"));
    EXPECT_FALSE(disk_->Copy(other, folder + "Copy.odf", {}));
    EXPECT_FALSE(disk_->HardLink(other, folder + "Link.odf", false));
    EXPECT_FALSE(disk_->Rename(folder + "COPY.odf", folder + "Renamed.odf"));
    EXPECT_EQ(temp_.Contents(), "odf/ odf/Ships/ odf/Ships/Bär.odf=new odf/Ships/Link.odf=new "
                                "odf/Ships/New/ odf/Ships/Renamed.odf=new");
    EXPECT_EQ(disk_->TreeSize(temp_ / "ODF").ValueOr(0), 9U) << "every name of a file counts";
    EXPECT_FALSE(disk_->RemoveFile(folder + "LINK.ODF"));
    EXPECT_FALSE(disk_->RemoveEmptyFolder(folder + "NEW"));
    EXPECT_EQ(temp_.Contents(), "odf/ odf/Ships/ odf/Ships/Bär.odf=new odf/Ships/Renamed.odf=new");
    EXPECT_FALSE(disk_->RemoveTree(temp_ / "Odf"));
    EXPECT_EQ(temp_.Contents(), "");
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
    const auto refused = std::errc::invalid_argument;
    ExpectAll(temp_ / "none\\deeper", std::errc::no_such_file_or_directory);
    ExpectAll("", refused);
    ExpectAll(file_ + '\0' + "more", refused);
    // The temporary name of the operations themselves is no destination.
    EXPECT_EQ(disk_->Copy(file_, temp_ / kTempNew, kReplace), refused);
    EXPECT_EQ(disk_->WriteFile(temp_ / kTempNew, ""), refused);
    EXPECT_EQ(disk_->MakeFile(temp_ / kTempNew, {}).Error(), refused);
    EXPECT_EQ(temp_.Contents(), "file=x");
}

TEST_F(FileSystemContractTest, MakesAndRemovesFoldersAndProtectedFiles) {
    temp_.Put("file=x full/protected=x tree/a/.hidden=x tree/a/b/protected=x");
    for (const char* name : {"full\\protected", "tree\\a\\b\\protected"})
        ASSERT_FALSE(disk_->SetReadOnly(temp_ / name, true));
    const std::string full = temp_ / "full";
    EXPECT_EQ(disk_->MakeFolder(file_), std::errc::file_exists);
    EXPECT_EQ(disk_->RemoveEmptyFolder(file_), std::errc::not_a_directory);
    EXPECT_EQ(disk_->RemoveTree(file_), std::errc::not_a_directory);
    EXPECT_EQ(disk_->RemoveTree(temp_ / "none"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(disk_->TreeSize(file_).Error(), std::errc::not_a_directory);
    EXPECT_EQ(disk_->ReadLink(file_).Error(), std::errc::invalid_argument);
    EXPECT_FALSE(disk_->MakeFolder(full + "\\"));
    EXPECT_FALSE(disk_->TryToWrite(full));
    EXPECT_EQ(disk_->RemoveEmptyFolder(full), std::errc::directory_not_empty);
    EXPECT_EQ(disk_->RemoveTree(full + "\\."), std::errc::invalid_argument);
    EXPECT_TRUE(disk_->RemoveFile(full));
    EXPECT_TRUE(disk_->Read(full, 0, 1).Error());
    EXPECT_TRUE(disk_->SameContents(file_, full).Error());
    EXPECT_EQ(disk_->FingerprintFile(full).Error(), std::errc::is_a_directory);
    EXPECT_FALSE(disk_->RemoveTree(temp_ / "tree"));
    EXPECT_EQ(temp_.Contents(), "file=x full/ full/protected=x");
    EXPECT_FALSE(disk_->RemoveFile(full + "\\protected"));
    EXPECT_FALSE(disk_->RemoveEmptyFolder(full));
    EXPECT_EQ(temp_.Contents(), "file=x");
}

TEST_F(FileSystemContractTest, CopiesWritesReadsAndComparesEveryByte) {
    temp_.Put("Written=old");
    const std::string copy = temp_ / "copy";
    const auto isSame = [&](const std::string& other) { return disk_->SameContents(file_, other); };
    for (const std::string& bytes :
         {std::string(1'500'000, '\xAB'), std::string("a\0\r\n", 4), std::string()}) {
        SCOPED_TRACE(bytes.size());
        PutFile(file_, bytes);
        ASSERT_FALSE(disk_->SetModified(file_, kOldTime));
        ASSERT_FALSE(disk_->SetReadOnly(file_, true));
        for (const bool writable : {false, true}) {
            EXPECT_FALSE(
                disk_->Copy(file_, copy, {.replace = true, .flush = !writable, .makeWritable = writable}));
            EXPECT_EQ(BytesOf("copy"), bytes);
            EXPECT_EQ(InfoOf("copy").modified, kOldTime);
            EXPECT_EQ(InfoOf("copy").readOnly, !writable);
        }
        ASSERT_FALSE(disk_->SetReadOnly(file_, false));
        EXPECT_EQ(disk_->Read(file_, 0, SIZE_MAX).ValueOr("none"), bytes);
        EXPECT_EQ(disk_->FingerprintFile(file_).ValueOr({}), FingerprintOf(bytes));
        EXPECT_EQ(disk_->Read(file_, UINT64_MAX, SIZE_MAX).ValueOr("none"), "");
        for (const std::string& same : {file_, copy})
            EXPECT_EQ(isSame(same).ValueOr(false), true);
        for (const std::string& changed : {bytes + 'x', bytes.substr(0, bytes.size() / 2) + 'x'}) {
            EXPECT_FALSE(disk_->WriteFile(temp_ / "WRITTEN", changed));
            EXPECT_EQ(BytesOf("Written"), changed);
            EXPECT_EQ(isSame(temp_ / "Written").ValueOr(true), false);
        }
        if (!bytes.empty()) PutFile(copy, bytes.substr(1) + 'x');
        EXPECT_EQ(isSame(copy).ValueOr(!bytes.empty()), bytes.empty()) << "the last byte";
    }
    EXPECT_EQ(temp_.Contents(), "Written=x copy= file=");
}

TEST_F(FileSystemContractTest, MakesAFilePieceByPiece) {
    temp_.Put("Folder/Taken=old");
    const std::string folder = temp_ / "FOLDER\\";
    const auto make = [&](const std::string& name, const std::string& bytes, bool commit) {
        auto writer = disk_->MakeFile(folder + name, {.modified = kOldTime});
        if (!writer) return writer.Error();
        for (const char byte : bytes)
            EXPECT_FALSE((*writer)->Write({&byte, 1}));
        EXPECT_EQ(bool(disk_->Stat(folder + name)), name == "Taken");
        return commit ? (*writer)->Commit() : std::error_code();
    };
    EXPECT_FALSE(make("New", "given up", false));
    EXPECT_EQ(make("Taken", "new", true), std::errc::file_exists);
    EXPECT_EQ(temp_.Contents(), "Folder/ Folder/Taken=old");
    PutFile(temp_ / "Folder\\" + std::string(kTempNew), "left over");
    EXPECT_FALSE(make("New", "whole", true));
    EXPECT_EQ(InfoOf("Folder/New").modified, kOldTime);
    ASSERT_FALSE(disk_->RemoveFile(folder + "TAKEN"));
    EXPECT_FALSE(make("TAKEN", "", true));
    EXPECT_EQ(temp_.Contents(), "Folder/ Folder/New=whole Folder/TAKEN=");

    const auto space = disk_->SpaceAt(folder);
    ASSERT_TRUE(space);
    EXPECT_GT(space->free, 0U);
    EXPECT_GE(space->total, space->free);
}

TEST_F(FileSystemContractTest, ReplacesOnlyWhatItMay) {
    temp_.Put("file=new folder/ target=old");
    const std::string target = temp_ / "target";
    const std::string folder = temp_ / "folder";
    EXPECT_EQ(disk_->Copy(file_, target, {}), std::errc::file_exists);
    EXPECT_EQ(disk_->Copy(file_, folder, {}), std::errc::file_exists);
    EXPECT_EQ(disk_->Copy(file_, folder, kReplace), std::errc::is_a_directory);
    EXPECT_EQ(disk_->Copy(folder, target, kReplace), std::errc::is_a_directory);
    EXPECT_EQ(disk_->HardLink(file_, target, false), std::errc::file_exists);
    EXPECT_EQ(disk_->HardLink(file_, folder, true), std::errc::is_a_directory);
    EXPECT_EQ(disk_->RenameOver(file_, folder), std::errc::is_a_directory);
    EXPECT_EQ(disk_->RenameOver(folder, target), std::errc::is_a_directory);
    EXPECT_EQ(disk_->WriteFile(folder, "new"), std::errc::is_a_directory);
    EXPECT_EQ(temp_.Contents(), "file=new folder/ target=old");

    ASSERT_FALSE(disk_->SetReadOnly(target, true));
    EXPECT_FALSE(disk_->Copy(file_, target, kReplace));
    EXPECT_EQ(temp_.Contents(), "file=new folder/ target=new");
    EXPECT_FALSE(InfoOf("target").readOnly);

    // With its own attributes, over what is read-only, too.
    for (const char* name : {"file", "target"})
        ASSERT_FALSE(disk_->SetReadOnly(temp_ / name, true));
    ASSERT_FALSE(disk_->SetModified(file_, kOldTime));
    EXPECT_FALSE(disk_->RenameOver(file_, target));
    EXPECT_EQ(temp_.Contents(), "folder/ target=new");
    EXPECT_TRUE(InfoOf("target").readOnly);
    EXPECT_EQ(InfoOf("target").modified, kOldTime);
}

TEST_F(FileSystemContractTest, HardLinksAreNamesOfOneFile) {
    temp_.Put("file=one new=new other=two");
    const std::string other = temp_ / "other";
    const std::string third = temp_ / "third";
    ASSERT_FALSE(disk_->HardLink(file_, third, false));
    ASSERT_FALSE(disk_->HardLink(file_, other, true));
    ASSERT_FALSE(disk_->HardLink(file_, third, true));
    EXPECT_EQ(InfoOf("file").links, 3U);
    EXPECT_TRUE(InfoOf("file").id && InfoOf("file").id == InfoOf("OTHER").id);
    EXPECT_FALSE(InfoOf("file").id == InfoOf("new").id || InfoOf("file").id == InfoOf("").id);
    EXPECT_EQ(temp_.Contents(), "file=one new=new other=one third=one");

    // Replacing one name leaves the others with the old bytes; a copy onto itself ends the sharing.
    ASSERT_FALSE(disk_->Copy(temp_ / "new", third, kReplace));
    ASSERT_FALSE(disk_->WriteFile(temp_ / "new", "written"));
    ASSERT_FALSE(disk_->Copy(file_, file_, kReplace));
    ASSERT_FALSE(disk_->Copy(file_, other, kReplace));
    EXPECT_EQ(temp_.Contents(), "file=one new=written other=one third=new");
    for (const char* name : {"file", "other", "third"})
        EXPECT_EQ(InfoOf(name).links, 1U) << name;
    ASSERT_FALSE(disk_->HardLink(file_, other, true));
    EXPECT_FALSE(disk_->RenameOver(file_, other));
    EXPECT_EQ(temp_.Contents(), "new=written other=one third=new");
}

TEST_F(FileSystemContractTest, LeftoversOfAnInterruptedOperationAreSwept) {
    temp_.Put("file=new target=old");
    const auto expectSwept = [&](auto operation, const char* after) {
        PutFile(temp_ / kTempNew, "half");
        ASSERT_FALSE(disk_->SetReadOnly(temp_ / kTempNew, true));
        EXPECT_FALSE(operation());
        EXPECT_EQ(temp_.Contents(), after);
    };
    const std::string target = temp_ / "target";
    expectSwept([&] { return disk_->Copy(file_, temp_ / "copy", {}); }, "copy=new file=new target=old");
    expectSwept([&] { return disk_->WriteFile(target, "other"); }, "copy=new file=new target=other");
    // What cannot be swept is left alone.
    temp_.Put("~quillbay.new/inside=x");
    EXPECT_FALSE(disk_->Copy(file_, target, kReplace));
    EXPECT_FALSE(disk_->WriteFile(file_, "last"));
    EXPECT_EQ(temp_.Contents(), "copy=new file=last target=new ~quillbay.new/ ~quillbay.new/inside=x");
}

TEST_F(FileSystemContractTest, WaitsForWhatIsInUseButNotForEver) {
    auto owned = std::make_unique<FaultyFileSystem>(*disk_);
    auto& faulty = *owned;
    std::chrono::milliseconds waited(0);
    PatientFileSystem patient(std::move(owned), [&](auto time) { waited += time; });
    const std::string copy = temp_ / "copy";
    const std::string folder = temp_ / "folder";
    std::unique_ptr<FileWriter> writer;
    const std::function<std::error_code()> operations[] = {
        [&] { return patient.WriteFile(file_, "bytes"); },
        [&] { return patient.MakeFolder(folder); },
        [&] { return patient.Copy(file_, copy, {}); },
        [&] { return patient.HardLink(file_, folder + "\\link", false); },
        [&] { return patient.Rename(copy, folder + "\\moved"); },
        [&] { return patient.RenameOver(folder + "\\moved", folder + "\\link"); },
        [&] { return patient.SetReadOnly(file_, true); },
        [&] { return patient.SetReadOnly(file_, false); },
        [&] { return patient.SetModified(file_, kOldTime); },
        [&] { return patient.List(folder, Detail::Full).Error(); },
        [&] { return patient.Stat(file_).Error(); },
        [&] { return patient.Read(file_, 0, 9).Error(); },
        [&] { return patient.SameContents(file_, file_).Error(); },
        [&] { return patient.FingerprintFile(file_).Error(); },
        [&] { return patient.RealPath(file_).Error(); },
        [&] { return patient.SpaceAt(folder).Error(); },
        [&] {
            auto made = patient.MakeFile(copy, {});
            if (made) writer = std::move(*made);
            return writer ? std::error_code() : made.Error();
        },
        [&] { return writer->Commit(); },
        [&] { return patient.RemoveFile(copy); },
        [&] { return patient.RemoveTree(folder); },
        [&] { return patient.MakeFolder(folder); },
        [&] { return patient.RemoveEmptyFolder(folder); },
    };
    for (const auto& operation : operations) {
        const auto before = waited;
        faulty.Arm(1, FaultyFileSystem::Fault::Fail, std::errc::device_or_resource_busy);
        EXPECT_FALSE(operation()) << &operation - operations;
        EXPECT_EQ((waited - before).count(), 10) << &operation - operations;
    }
    EXPECT_EQ(temp_.Contents(), "file=bytes");
    waited = {};
    faulty.Arm(1, FaultyFileSystem::Fault::Fail);
    EXPECT_EQ(patient.RemoveFile(file_), std::errc::io_error);
    EXPECT_EQ(waited.count(), 0) << "which does not pass";
    faulty.Arm(1, FaultyFileSystem::Fault::EndBefore, std::errc::device_or_resource_busy);
    EXPECT_TRUE(patient.RemoveFile(file_));
    EXPECT_GE(waited, std::chrono::seconds(1));
    for (int file = 0; file < 10'000; ++file)
        EXPECT_EQ(patient.RemoveFile(file_), std::errc::device_or_resource_busy);
    EXPECT_LE(waited, Patience::kMostInVain);
}

TEST_F(FileSystemContractTest, RenamesInsideAVolume) {
    const auto rename = [&](const char* from, const char* to) {
        return disk_->Rename(temp_ / from, temp_ / to);
    };
    temp_.Put("a=a b=b Folder/inside=x");
    for (const auto& [from, to] : {std::pair{"a", "b"}, {"a", "Folder"}, {"Folder", "b"}})
        EXPECT_EQ(rename(from, to), std::errc::file_exists) << from << " to " << to;
    for (const auto& [from, to] : {std::pair{"a", "a"}, {"b", "Folder\\c"}, {"a", "A"}, {"Folder", "folder"}})
        EXPECT_FALSE(rename(from, to)) << from << " to " << to;
    EXPECT_TRUE(rename("folder", "folder\\deeper"));
    EXPECT_EQ(temp_.Contents(), "A=a folder/ folder/c=b folder/inside=x");
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
    EXPECT_EQ(temp_.Contents(), "");
}

} // namespace
} // namespace quillbay::test
