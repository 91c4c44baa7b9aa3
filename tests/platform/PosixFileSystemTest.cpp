#include "platform/FileSystem.h"
#include "platform/posix/PosixCopy.h"
#include "platform/posix/PosixRename.h"
#include "platform/posix/UniqueFd.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

// What only a POSIX system has: links, names of any bytes, names that differ in letter case only.
namespace quillbay {

namespace {

using test::DiskText;
using test::FileBytes;
using test::PutFile;
using test::PutFolder;
using Strings = std::vector<std::string>;

void PutLink(const std::string& path, const std::string& text) {
    ASSERT_EQ(::symlink(text.c_str(), DiskText(path).c_str()), 0);
}

class PosixFileSystemTest : public testing::Test {
protected:
    Strings Names(std::string_view folder) {
        Strings names;
        for (const auto& entry : fs_.List(folder, Detail::Names).ValueOr({}))
            names.push_back(entry.name);
        std::sort(names.begin(), names.end());
        return names;
    }
    FileInfo Info(std::string_view path) { return fs_.Stat(path).ValueOr({}); }

    test::TempFolder temp_;
    std::unique_ptr<FileSystem> owner_ = MakeFileSystem();
    FileSystem& fs_ = *owner_;
};

TEST_F(PosixFileSystemTest, LinksAreReportedAsLinksToWhatTheyLeadTo) {
    PutFile(temp_ / "outside\\file", "12345");
    PutFolder(temp_ / "in");
    PutLink(temp_ / "in\\toFile", "../outside/file");
    PutLink(temp_ / "in\\toFolder", "../outside");
    PutLink(temp_ / "in\\toNothing", "nowhere");
    PutLink(temp_ / "in\\toItself", "toItself");
    ASSERT_EQ(::mkfifo(DiskText(temp_ / "in\\.pipe").c_str(), 0600), 0);
    for (const auto detail : {Detail::Names, Detail::Full}) {
        const auto entries = fs_.List(temp_ / "in", detail).ValueOr({});
        EXPECT_EQ(entries.size(), 5U);
        for (const auto& entry : entries) {
            EXPECT_EQ(entry.isLink, entry.name != ".pipe") << entry.name;
            EXPECT_EQ(entry.hidden, entry.name == ".pipe") << entry.name;
            const auto kind = entry.name == "toFile"     ? EntryKind::File
                              : entry.name == "toFolder" ? EntryKind::Folder
                                                         : EntryKind::Other;
            EXPECT_EQ(entry.kind, kind) << entry.name;
        }
    }
    EXPECT_TRUE(Info(temp_ / "IN\\tofile").isLink);
    EXPECT_EQ(Info(temp_ / "in\\toFile").size, 5U);
    EXPECT_EQ(Info(temp_ / "in\\toNothing").kind, EntryKind::Other);
    EXPECT_EQ(fs_.ReadLink(temp_ / "in\\TOFOLDER").ValueOr({}), "../outside");
    EXPECT_EQ(fs_.Read(temp_ / "in\\toFile", 3, 9).ValueOr({}), "45");
    EXPECT_EQ(fs_.Read(temp_ / "in\\toNothing", 0, 9).Error(), std::errc::no_such_file_or_directory);
    EXPECT_EQ(fs_.SameContents(temp_ / "in\\toFile", temp_ / "outside\\file").ValueOr(false), true);
    EXPECT_EQ(fs_.TreeSize(temp_ / "in").ValueOr(99), 0U);
    EXPECT_EQ(fs_.RealPath(temp_ / "in\\toFolder\\FILE").ValueOr({}), DiskText(temp_ / "outside\\file"));
    // A pipe without a writer must not make anybody wait.
    EXPECT_EQ(fs_.Read(temp_ / "in\\.pipe", 0, 9).Error(), std::errc::operation_not_supported);
    EXPECT_EQ(fs_.Copy(temp_ / "in\\.pipe", temp_ / "in\\copy", {}), std::errc::operation_not_supported);
}

TEST_F(PosixFileSystemTest, LinksAreReplacedAndRemovedAsLinks) {
    PutFile(temp_ / "outside\\file", "precious");
    PutFile(temp_ / "in\\source", "new");
    const auto relink = [&] {
        Ignore(fs_.RemoveFile(temp_ / "in\\link"));
        PutLink(temp_ / "in\\link", "../outside/file");
    };
    relink();
    EXPECT_FALSE(fs_.Copy(temp_ / "in\\source", temp_ / "in\\link", {.replace = true}));
    EXPECT_FALSE(Info(temp_ / "in\\link").isLink);
    relink();
    EXPECT_FALSE(fs_.WriteFile(temp_ / "in\\link", "written"));
    EXPECT_FALSE(Info(temp_ / "in\\link").isLink);
    EXPECT_EQ(FileBytes(temp_ / "in\\link"), "written");
    relink();
    EXPECT_FALSE(fs_.HardLink(temp_ / "in\\source", temp_ / "in\\link", true));
    EXPECT_EQ(FileBytes(temp_ / "in\\link"), "new");
    relink();
    EXPECT_EQ(fs_.Copy(temp_ / "in\\source", temp_ / "in\\link", {}), std::errc::file_exists);
    EXPECT_EQ(fs_.Rename(temp_ / "in\\source", temp_ / "in\\link"), std::errc::file_exists);

    PutLink(temp_ / "in\\folderLink", "../outside");
    EXPECT_EQ(fs_.RemoveTree(temp_ / "in\\folderLink\\"), std::errc::not_a_directory);
    EXPECT_EQ(fs_.RemoveEmptyFolder(temp_ / "in\\folderLink"), std::errc::not_a_directory);
    EXPECT_FALSE(fs_.RemoveTree(temp_ / "in"));
    EXPECT_EQ(Names(temp_.Path()), Strings{"outside"});
    EXPECT_EQ(FileBytes(temp_ / "outside\\file"), "precious");
}

TEST_F(PosixFileSystemTest, LinksAreCopiedAsAskedFor) {
    PutFile(temp_ / "file", "bytes");
    PutLink(temp_ / "link", "file");
    const std::array<timespec, 2> times = {timespec{100, 5}, timespec{200, 7}};
    ASSERT_EQ(::utimensat(AT_FDCWD, DiskText(temp_ / "link").c_str(), times.data(), AT_SYMLINK_NOFOLLOW), 0);
    EXPECT_FALSE(fs_.Copy(temp_ / "LINK", temp_ / "kept", {.keepLink = true}));
    EXPECT_EQ(fs_.ReadLink(temp_ / "kept").ValueOr({}), "file");
    struct stat info {};
    ASSERT_EQ(::lstat(DiskText(temp_ / "kept").c_str(), &info), 0);
    EXPECT_EQ(info.st_mtim.tv_sec, 200);
    EXPECT_EQ(info.st_mtim.tv_nsec, 7);
    EXPECT_FALSE(fs_.Copy(temp_ / "link", temp_ / "followed", {}));
    EXPECT_FALSE(Info(temp_ / "followed").isLink);
    EXPECT_EQ(FileBytes(temp_ / "followed"), "bytes");

    // A link that leads nowhere is something, too.
    PutLink(temp_ / "dangling", "nowhere");
    EXPECT_EQ(fs_.Copy(temp_ / "dangling", temp_ / "new", {}), std::errc::no_such_file_or_directory);
    EXPECT_FALSE(fs_.Copy(temp_ / "dangling", temp_ / "file", {.replace = true, .keepLink = true}));
    EXPECT_EQ(fs_.ReadLink(temp_ / "FILE").ValueOr({}), "nowhere");
    EXPECT_FALSE(fs_.HardLink(temp_ / "dangling", temp_ / "second", false));
    EXPECT_EQ(Info(temp_ / "dangling").links, 2U);
    EXPECT_EQ(fs_.MakeFolder(temp_ / "Dangling"), std::errc::file_exists);
    EXPECT_EQ(Names(temp_.Path()), (Strings{"dangling", "file", "followed", "kept", "link", "second"}));

    // Copied through a link onto itself, a file is not lost.
    PutLink(temp_ / "toKept", "followed");
    EXPECT_FALSE(fs_.Copy(temp_ / "toKept", temp_ / "followed", {.replace = true}));
    EXPECT_FALSE(fs_.Copy(temp_ / "followed", temp_ / "toKept", {.replace = true}));
    EXPECT_EQ(FileBytes(temp_ / "followed"), "bytes");
    EXPECT_EQ(FileBytes(temp_ / "toKept"), "bytes");
}

TEST_F(PosixFileSystemTest, CopyKeepsPermissionsAndNanoseconds) {
    PutFile(temp_ / "file", "x");
    const std::string file = DiskText(temp_ / "file");
    ASSERT_EQ(::chmod(file.c_str(), 0547), 0);
    const std::array<timespec, 2> times = {timespec{100, 5}, timespec{200, 123456789}};
    ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), times.data(), 0), 0);
    ASSERT_FALSE(fs_.Copy(temp_ / "file", temp_ / "copy", {}));
    struct stat info {};
    ASSERT_EQ(::stat(DiskText(temp_ / "copy").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777U, 0547U);
    EXPECT_EQ(info.st_mtim.tv_nsec, 123456789);
    ASSERT_FALSE(fs_.WriteFile(temp_ / "copy", "y"));
    ASSERT_EQ(::stat(DiskText(temp_ / "copy").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777U, 0547U);
}

TEST_F(PosixFileSystemTest, TheExactNameGoesBeforeOtherSpellings) {
    PutFile(temp_ / "odf\\ships\\a", "lower");
    PutFile(temp_ / "ODF\\ships\\a", "upper");
    PutFile(temp_ / "ODF\\SHIPS\\b", "deep");
    EXPECT_EQ(fs_.Read(temp_ / "odf\\ships\\a", 0, 9).ValueOr({}), "lower");
    EXPECT_EQ(fs_.Read(temp_ / "ODF\\ships\\A", 0, 9).ValueOr({}), "upper");
    EXPECT_EQ(fs_.Read(temp_ / "ODF\\SHIPS\\B", 0, 9).ValueOr({}), "deep");
    // The way is not gone back: where a folder has its exact name, another one is not looked into.
    EXPECT_EQ(fs_.Stat(temp_ / "ODF\\ships\\b").Error(), std::errc::no_such_file_or_directory);
    EXPECT_FALSE(fs_.RemoveTree(temp_ / "ODF"));
    EXPECT_EQ(Names(temp_.Path()), Strings{"odf"});
    // Two names of one file that differ in letter case only stay two.
    ASSERT_FALSE(fs_.HardLink(temp_ / "odf\\ships\\a", temp_ / "odf\\ships\\A", false));
    EXPECT_EQ(fs_.Rename(temp_ / "odf\\ships\\a", temp_ / "odf\\ships\\A"), std::errc::file_exists);
    EXPECT_EQ(Names(temp_ / "odf\\ships"), (Strings{"A", "a"}));
}

TEST_F(PosixFileSystemTest, NamesOfAnyBytesComeAndGo) {
    const std::string name = "bad\xFF\xC3name.\xE4";
    ASSERT_FALSE(fs_.MakeFolder(temp_ / "d"));
    ASSERT_FALSE(fs_.WriteFile(temp_ / "d\\" + name, "x"));
    EXPECT_EQ(Names(temp_ / "d"), Strings{name});
    EXPECT_EQ(Info(temp_ / "D\\BAD\xFF\xC3NAME.\xE4").name, name);
    ASSERT_FALSE(fs_.Rename(temp_ / "d\\" + name, temp_ / "d\\\xFE"));
    EXPECT_EQ(Names(temp_ / "d"), Strings{"\xFE"});

    // A name that cannot be given back is not shown, not found, and still goes with its folder.
    const std::string folder = DiskText(temp_ / "d");
    const UniqueFd odd(::open((folder + "/a\\b").c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
    ASSERT_TRUE(odd);
    EXPECT_EQ(Names(temp_ / "d"), Strings{"\xFE"});
    EXPECT_EQ(fs_.Stat(temp_ / "d\\a\\b").Error(), std::errc::no_such_file_or_directory);
    EXPECT_FALSE(fs_.RemoveTree(temp_ / "d"));
    EXPECT_EQ(Names(temp_.Path()), Strings{});
}

TEST_F(PosixFileSystemTest, TreesMayBeDeeperThanPathsAndDescriptorsReach) {
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit few{60, limit.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    const std::string name(50, 'n');
    PutFolder(temp_ / "deep");
    UniqueFd folder(::open(DiskText(temp_ / "deep").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int depth = 0; depth < 100; ++depth) {
        ASSERT_EQ(::mkdirat(folder.Get(), name.c_str(), 0700), 0);
        ASSERT_EQ(::mkdirat(folder.Get(), "side", 0700), 0);
        folder = UniqueFd(::openat(folder.Get(), name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        ASSERT_TRUE(folder);
    }
    const UniqueFd file(::openat(folder.Get(), "file", O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
    ASSERT_EQ(::write(file.Get(), "bytes", 5), 5);
    EXPECT_EQ(fs_.TreeSize(temp_ / "deep").ValueOr(0), 5U);
    EXPECT_FALSE(fs_.RemoveTree(temp_ / "deep"));
    EXPECT_EQ(Names(temp_.Path()), Strings{});
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
}

TEST_F(PosixFileSystemTest, CopiesAndReplacesWhereTheSystemHelpsLess) {
    const std::string bytes(600'000, 'q');
    PutFile(temp_ / "from", "head" + bytes);
    PutFile(temp_ / "new", "");
    const UniqueFd from(::open(DiskText(temp_ / "from").c_str(), O_RDONLY | O_CLOEXEC));
    const UniqueFd to(::open(DiskText(temp_ / "new").c_str(), O_WRONLY | O_CLOEXEC));
    // Begun inside the kernel, gone on with through the buffer.
    ASSERT_FALSE(CopyBytes(from.Get(), to.Get(), 4));
    ASSERT_FALSE(CopyByReading(from.Get(), to.Get()));
    EXPECT_EQ(FileBytes(temp_ / "new"), "head" + bytes);
    // Into a pipe the kernel does not copy; a file that is shorter than it was said to be ends the copy.
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    const UniqueFd reader(ends[0]);
    const UniqueFd writer(ends[1]);
    PutFile(temp_ / "short", "abc");
    const UniqueFd shortFile(::open(DiskText(temp_ / "short").c_str(), O_RDONLY | O_CLOEXEC));
    ASSERT_FALSE(CopyBytes(shortFile.Get(), writer.Get(), 1000));
    std::array<char, 8> read{};
    EXPECT_EQ(::read(reader.Get(), read.data(), read.size()), 3);

    ASSERT_FALSE(RenameOver(DiskText(temp_ / "new"), DiskText(temp_ / "short")));
    EXPECT_EQ(FileBytes(temp_ / "short"), "head" + bytes);
    ASSERT_FALSE(fs_.HardLink(temp_ / "short", temp_ / "linked", false));
    ASSERT_FALSE(RenameOver(DiskText(temp_ / "linked"), DiskText(temp_ / "short")));
    EXPECT_EQ(Names(temp_.Path()), (Strings{"from", "short"}));
}

} // namespace

} // namespace quillbay
