#include "platform/posix/FileCopy.h"
#include "platform/posix/TempEntry.h"
#include "platform/posix/UniqueFd.h"
#include "support/TempFolder.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

int flushes = 0;
bool knowsRenameFlags = true;

} // namespace

// In the place of the system library's: they count, and play an older system.
extern "C" int fsync(int file) {
    ++flushes;
    return static_cast<int>(::syscall(SYS_fsync, file));
}

extern "C" int renameat2(int from, const char* name, int to, const char* newName, unsigned flags) noexcept {
    if (knowsRenameFlags || flags == 0)
        return static_cast<int>(::syscall(SYS_renameat2, from, name, to, newName, flags));
    errno = EINVAL;
    return -1;
}

// What only a POSIX system has: links, names of any bytes, names that differ in letter case only.
namespace quillbay::test {
namespace {

class PosixFileSystemTest : public DiskTest {
protected:
    void PutLink(std::string_view path, const std::string& text) const {
        ASSERT_EQ(::symlink(text.c_str(), DiskText(temp_ / path).c_str()), 0);
    }
    UniqueFd Open(std::string_view path, int flags) const {
        return UniqueFd(::open(DiskText(temp_ / path).c_str(), flags | O_CLOEXEC, 0600));
    }
    /// Of a link itself.
    struct stat NativeInfo(std::string_view path) const {
        struct stat info {};
        EXPECT_EQ(::lstat(DiskText(temp_ / path).c_str(), &info), 0);
        return info;
    }
};

TEST_F(PosixFileSystemTest, LinksAreReportedAsLinksToWhatTheyLeadTo) {
    PutFile(temp_ / "outside\\file", "12345");
    PutFolder(temp_ / "in");
    PutLink("in\\toFile", "../outside/file");
    PutLink("in\\toFolder", "../outside");
    PutLink("in\\toNothing", "nowhere");
    PutLink("in\\toItself", "toItself");
    ASSERT_EQ(::mkfifo(DiskText(temp_ / "in\\.pipe").c_str(), 0600), 0);
    std::map<std::string, EntryKind> kinds = {{"toFile", EntryKind::File}, {"toFolder", EntryKind::Folder}};
    for (const auto detail : {Detail::Names, Detail::Full}) {
        const auto entries = disk_->List(temp_ / "in", detail).ValueOr({});
        EXPECT_EQ(entries.size(), 5U);
        for (const auto& entry : entries) {
            EXPECT_EQ(entry.isLink, entry.name != ".pipe") << entry.name;
            EXPECT_EQ(entry.hidden, entry.name == ".pipe") << entry.name;
            const auto kind = kinds.try_emplace(entry.name, EntryKind::Other).first->second;
            EXPECT_EQ(entry.kind, kind) << entry.name;
        }
    }
    EXPECT_TRUE(InfoOf("IN\\tofile").isLink);
    EXPECT_EQ(InfoOf("in\\toFile").size, 5U);
    EXPECT_EQ(InfoOf("in\\toNothing").kind, EntryKind::Other);
    EXPECT_EQ(disk_->ReadLink(temp_ / "in\\TOFOLDER").ValueOr({}), "../outside");
    EXPECT_EQ(disk_->Read(temp_ / "in\\toFile", 3, 9).ValueOr({}), "45");
    EXPECT_EQ(disk_->SameContents(temp_ / "in\\toFile", temp_ / "outside\\file").ValueOr(false), true);
    EXPECT_EQ(disk_->FingerprintFile(temp_ / "in\\toFile").ValueOr({}), FingerprintOf("12345"));
    EXPECT_EQ(InfoOf("in\\toFolder").id, InfoOf("outside").id);
    EXPECT_EQ(disk_->TreeSize(temp_ / "in").ValueOr(99), 0U);
    EXPECT_EQ(disk_->TreeSize(temp_ / "in\\TOFOLDER").ValueOr(0), 5U);
    EXPECT_EQ(disk_->RealPath(temp_ / "in\\toFolder\\FILE").ValueOr({}), DiskText(temp_ / "outside\\file"));
    // A pipe without a writer must not make anybody wait.
    const auto unsupported = std::errc::operation_not_supported;
    EXPECT_EQ(disk_->Read(temp_ / "in\\.pipe", 0, 9).Error(), unsupported);
    EXPECT_EQ(disk_->FingerprintFile(temp_ / "in\\.pipe").Error(), unsupported);
    EXPECT_EQ(disk_->Copy(temp_ / "in\\.pipe", temp_ / "in\\copy", {}), unsupported);
}

TEST_F(PosixFileSystemTest, LinksAreReplacedAndRemovedAsLinks) {
    temp_.Put("outside/file=precious in/source=new");
    const std::string source = temp_ / "in\\source";
    const std::string link = temp_ / "in\\link";
    const std::pair<const char*, std::function<std::error_code()>> operations[] = {
        {"Copy", [&] { return disk_->Copy(source, link, {.replace = true}); }},
        {"WriteFile", [&] { return disk_->WriteFile(link, "new"); }},
        {"HardLink", [&] { return disk_->HardLink(source, link, true); }},
    };
    for (const auto& [name, run] : operations) {
        SCOPED_TRACE(name);
        PutLink("in\\link", "../outside/file");
        EXPECT_FALSE(run());
        EXPECT_EQ(temp_.Contents(), "in/ in/link=new in/source=new outside/ outside/file=precious");
        EXPECT_FALSE(disk_->RemoveFile(link));
    }
    PutLink("in\\link", "../outside/file");
    EXPECT_EQ(disk_->Copy(source, link, {}), std::errc::file_exists);
    EXPECT_EQ(disk_->Rename(source, link), std::errc::file_exists);

    PutLink("in\\folderLink", "../outside");
    EXPECT_EQ(disk_->RemoveTree(temp_ / "in\\folderLink\\"), std::errc::not_a_directory);
    EXPECT_EQ(disk_->RemoveEmptyFolder(temp_ / "in\\folderLink"), std::errc::not_a_directory);
    // A name that cannot be given back is not listed, but goes, too.
    std::filesystem::rename(DiskPath(source), DiskPath(temp_ / "in") / "a\\b\xFF");
    EXPECT_EQ(disk_->List(temp_ / "in", Detail::Names).ValueOr({}).size(), 2U);
    EXPECT_FALSE(disk_->RemoveTree(temp_ / "in"));
    EXPECT_EQ(temp_.Contents(), "outside/ outside/file=precious");
}

TEST_F(PosixFileSystemTest, LinksAreCopiedAsAskedFor) {
    PutFile(temp_ / "file", "bytes");
    PutLink("link", "file");
    const std::array<timespec, 2> times = {timespec{100, 5}, timespec{200, 7}};
    const std::string native = DiskText(temp_ / "link");
    ASSERT_EQ(::utimensat(AT_FDCWD, native.c_str(), times.data(), AT_SYMLINK_NOFOLLOW), 0);
    EXPECT_FALSE(disk_->Copy(temp_ / "LINK", temp_ / "kept", {.keepLink = true}));
    EXPECT_EQ(NativeInfo("kept").st_mtim.tv_sec, 200);
    EXPECT_EQ(NativeInfo("kept").st_mtim.tv_nsec, 7);
    // Both times are passed on: some file systems take no single one.
    EXPECT_EQ(NativeInfo("kept").st_atim.tv_sec, 100);
    ASSERT_EQ(::utimensat(AT_FDCWD, native.c_str(), times.data(), 0), 0);
    EXPECT_FALSE(disk_->Copy(temp_ / "link", temp_ / "followed", {}));
    EXPECT_EQ(NativeInfo("followed").st_atim.tv_sec, 100);
    EXPECT_FALSE(disk_->SetModified(temp_ / "followed", FileTime{std::chrono::seconds(300)}));
    EXPECT_EQ(NativeInfo("followed").st_atim.tv_sec, 100);

    // A link that leads nowhere is something, too.
    PutLink("dangling", "nowhere");
    EXPECT_EQ(disk_->Copy(temp_ / "dangling", temp_ / "new", {}), std::errc::no_such_file_or_directory);
    EXPECT_FALSE(disk_->Copy(temp_ / "dangling", temp_ / "file", {.replace = true, .keepLink = true}));
    EXPECT_FALSE(disk_->HardLink(temp_ / "dangling", temp_ / "second", false));
    EXPECT_EQ(InfoOf("dangling").links, 2U);
    EXPECT_EQ(disk_->MakeFolder(temp_ / "Dangling"), std::errc::file_exists);
    EXPECT_EQ(temp_.Contents(), "dangling->nowhere file->nowhere followed=bytes kept->file link->file "
                                "second->nowhere");

    // Copied through a link onto itself, a file is not lost.
    PutLink("toFollowed", "followed");
    EXPECT_FALSE(disk_->Copy(temp_ / "toFollowed", temp_ / "followed", {.replace = true}));
    EXPECT_FALSE(disk_->Copy(temp_ / "followed", temp_ / "toFollowed", {.replace = true}));
    EXPECT_EQ(BytesOf("followed") + BytesOf("toFollowed"), "bytesbytes");
}

TEST_F(PosixFileSystemTest, RightsAreLentOnlyByTheirOwner) {
    temp_.Put("file=x");
    const std::string file = DiskText(temp_ / "file");
    const auto modeAfterCopy = [&](bool isItself) {
        EXPECT_FALSE(disk_->Copy(temp_ / "file", temp_ / "copy", {.replace = true, .keepLink = isItself}));
        return NativeInfo("copy").st_mode & 07777U;
    };
    ASSERT_EQ(::chmod(file.c_str(), 06751), 0);
    EXPECT_EQ(modeAfterCopy(true), 06751U);
    EXPECT_EQ(modeAfterCopy(false), 0751U);
    if (::chown(file.c_str(), 12345, 12345) != 0) return; // only root can give a file away
    ASSERT_EQ(::chmod(file.c_str(), 06751), 0);
    EXPECT_EQ(modeAfterCopy(true), 0751U);
    EXPECT_FALSE(disk_->WriteFile(temp_ / "file", "written"));
    EXPECT_EQ(NativeInfo("file").st_mode & 07777U, 0751U);
}

TEST_F(PosixFileSystemTest, TheExactNameGoesBeforeOtherSpellings) {
    temp_.Put("odf/ships/a=lower ODF/ships/a=upper ODF/SHIPS/b=deep");
    for (const auto& [path, bytes] :
         {std::pair{"odf\\ships\\a", "lower"}, {"ODF\\ships\\A", "upper"}, {"ODF\\SHIPS\\B", "deep"}})
        EXPECT_EQ(disk_->Read(temp_ / path, 0, 9).ValueOr({}), bytes);
    // The way is not gone back: where a folder has its exact name, another one is not looked into.
    EXPECT_EQ(disk_->Stat(temp_ / "ODF\\ships\\b").Error(), std::errc::no_such_file_or_directory);
    EXPECT_FALSE(disk_->RemoveTree(temp_ / "ODF"));
    // Two names of one file that differ in letter case only stay two.
    ASSERT_FALSE(disk_->HardLink(temp_ / "odf\\ships\\a", temp_ / "odf\\ships\\A", false));
    EXPECT_EQ(disk_->Rename(temp_ / "odf\\ships\\a", temp_ / "odf\\ships\\A"), std::errc::file_exists);
    EXPECT_EQ(temp_.Contents(), "odf/ odf/ships/ odf/ships/A=lower odf/ships/a=lower");
}

TEST_F(PosixFileSystemTest, TreesMayBeDeeperThanPathsAndDescriptorsReach) {
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit few{60, limit.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    const std::string name(50, 'n');
    PutFolder(temp_ / "deep");
    UniqueFd folder = Open("deep", O_RDONLY | O_DIRECTORY);
    for (int depth = 0; depth < 100; ++depth) {
        ASSERT_EQ(::mkdirat(folder.Get(), name.c_str(), 0700), 0);
        ASSERT_EQ(::mkdirat(folder.Get(), "side", 0700), 0);
        folder = UniqueFd(::openat(folder.Get(), name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        ASSERT_TRUE(folder);
    }
    const UniqueFd file(::openat(folder.Get(), "file", O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
    ASSERT_EQ(::write(file.Get(), "bytes", 5), 5);
    EXPECT_EQ(disk_->TreeSize(temp_ / "deep").ValueOr(0), 5U);
    EXPECT_FALSE(disk_->RemoveTree(temp_ / "deep"));
    EXPECT_EQ(temp_.Contents(), "");
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
}

TEST_F(PosixFileSystemTest, WhatIsToBeOnTheDiskIsFlushed) {
    PutFile(temp_ / "from", "bytes");
    const auto count = [](std::error_code error) { return error ? -1 : std::exchange(flushes, 0); };
    flushes = 0;
    for (const bool flush : {false, true})
        EXPECT_EQ(count(disk_->Copy(temp_ / "from", temp_ / "to", {.replace = true, .flush = flush})), flush);
    EXPECT_EQ(count(disk_->WriteFile(temp_ / "to", "written")), 1);
}

TEST_F(PosixFileSystemTest, CopiesAndReplacesWhereTheSystemHelpsLess) {
    knowsRenameFlags = false;
    temp_.Put("one=1 two=2");
    EXPECT_EQ(disk_->Rename(temp_ / "one", temp_ / "two"), std::errc::file_exists);
    EXPECT_EQ(disk_->Copy(temp_ / "one", temp_ / "two", {}), std::errc::file_exists);
    EXPECT_FALSE(disk_->Rename(temp_ / "one", temp_ / "three"));
    EXPECT_FALSE(disk_->Copy(temp_ / "three", temp_ / "two", {.replace = true}));
    EXPECT_EQ(temp_.Contents(), "three=1 two=1");
    knowsRenameFlags = true;
    const std::string bytes(600'000, 'q');
    PutFile(temp_ / "from", "head" + bytes);
    PutFile(temp_ / "short", "abc");
    const UniqueFd from = Open("from", O_RDONLY);
    // Begun inside the kernel, gone on with through the buffer.
    const UniqueFd to = Open("new", O_WRONLY | O_CREAT);
    ASSERT_FALSE(CopyBytes(from.Get(), to.Get(), 4));
    ASSERT_FALSE(CopyByReading(from.Get(), to.Get()));
    EXPECT_EQ(BytesOf("new"), "head" + bytes);
    // Into a pipe the kernel does not copy; a file that is shorter than it was said to be ends the copy.
    ASSERT_EQ(::mkfifo(DiskText(temp_ / "pipe").c_str(), 0600), 0);
    const UniqueFd pipe = Open("pipe", O_RDWR);
    ASSERT_FALSE(CopyBytes(Open("short", O_RDONLY).Get(), pipe.Get(), 1000));
    std::array<char, 8> read{};
    EXPECT_EQ(::read(pipe.Get(), read.data(), read.size()), 3);

    ASSERT_FALSE(RenameOver(DiskText(temp_ / "new"), DiskText(temp_ / "short")));
    EXPECT_EQ(BytesOf("short"), "head" + bytes);
    ASSERT_FALSE(disk_->HardLink(temp_ / "short", temp_ / "linked", false));
    ASSERT_FALSE(RenameOver(DiskText(temp_ / "linked"), DiskText(temp_ / "short")));
    EXPECT_EQ(disk_->Stat(temp_ / "linked").Error(), std::errc::no_such_file_or_directory);
    ASSERT_EQ(::chmod(DiskText(temp_ / "short").c_str(), 0547), 0);
    ASSERT_FALSE(disk_->WriteFile(temp_ / "short", "written"));
    EXPECT_EQ(NativeInfo("short").st_mode & 0777U, 0547U);
}

} // namespace
} // namespace quillbay::test
