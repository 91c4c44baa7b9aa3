#include "platform/ShellOpener.h"
#include "platform/SingleInstance.h"
#include "platform/SoundPlayer.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace quillbay {

namespace {

using test::DiskText;
using test::FileBytes;
using test::PutFile;
using test::PutFolder;
using test::ScopedVariable;

/// Programs of the test's own in a PATH that holds nothing else.
class PosixProcessTest : public testing::Test {
protected:
    PosixProcessTest() { PutFolder(bin_); }

    /// A program that writes `record` (a shell text) to the file "record" in one step, then does `after`.
    void PutProgram(const std::string& name, const std::string& record, const std::string& after = {}) {
        const std::string file = DiskText(temp_ / "record");
        PutFile(bin_ + "/" + name, "#!/bin/sh\nprintf '%s\\n' " + record + " > '" + file +
                                       ".new'\n/bin/mv '" + file + ".new' '" + file + "'\n" + after + "\n");
        std::filesystem::permissions(bin_ + "/" + name, std::filesystem::perms::owner_all);
    }
    /// What the program recorded, once it has; the record is taken away.
    std::string TakeRecord() {
        const std::string file = DiskText(temp_ / "record");
        const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!std::filesystem::exists(file)) {
            if (std::chrono::steady_clock::now() > limit) return "(nothing was started)";
            std::this_thread::yield();
        }
        auto record = FileBytes(file);
        std::filesystem::remove(file);
        return record;
    }

    test::TempFolder temp_;
    std::string bin_ = DiskText(temp_ / "bin");
    ScopedVariable path_{"PATH", ":" + bin_};
    ScopedVariable prefix_{"WINEPREFIX", std::nullopt};
};

TEST_F(PosixProcessTest, FilesAndAddressesGoToTheDesktop) {
    PutFile(temp_ / "Mods\\Read me & more.txt", "x");
    const auto opener = MakeShellOpener();
    EXPECT_EQ(opener->OpenWithShell(temp_ / "Mods"), std::errc::no_such_file_or_directory);
    PutProgram("xdg-open", "\"$#\" \"$1\"");
    EXPECT_FALSE(opener->OpenWithShell(temp_ / "mods\\READ ME & more.txt"));
    EXPECT_EQ(TakeRecord(), "1\n" + DiskText(temp_ / "Mods/Read me & more.txt") + "\n");
    EXPECT_FALSE(opener->OpenWithShell(temp_ / "Mods\\"));
    EXPECT_EQ(TakeRecord(), "1\n" + DiskText(temp_ / "Mods") + "\n");
    EXPECT_FALSE(opener->OpenWithShell("mailto:a@b.example?subject=C:\\x", "C:\\"));
    EXPECT_EQ(TakeRecord(), "1\nmailto:a@b.example?subject=C:\\x\n");
    EXPECT_EQ(opener->OpenWithShell(temp_ / "none"), std::errc::no_such_file_or_directory);
    // The programs are not ours to wait for.
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(PosixProcessTest, BatchFilesStartInTheirPrefix) {
    PutFile(temp_ / "prefix\\drive_c\\T2\\Go.BAT", "x");
    PutFolder(temp_ / "prefix\\dosdevices");
    PutProgram("wine", "\"$1\" \"$2\" \"$3\" \"$WINEPREFIX\" \"$(pwd)\"");
    const std::string game = DiskText(temp_ / "prefix/drive_c/T2");
    const auto opener = MakeShellOpener();
    EXPECT_FALSE(opener->OpenWithShell(temp_ / "prefix\\drive_c\\t2\\go.bat", temp_ / "prefix\\drive_c\\T2"));
    EXPECT_EQ(TakeRecord(),
              "start\n/unix\n" + game + "/Go.BAT\n" + DiskText(temp_ / "prefix") + "\n" + game + "\n");
    EXPECT_EQ(opener->OpenWithShell(temp_ / "prefix\\drive_c\\T2\\Go.BAT", temp_ / "none"),
              std::errc::no_such_file_or_directory);
}

TEST_F(PosixProcessTest, StartedProgramsInheritNothing) {
    PutFile(temp_ / "file.txt", "x");
    // A descriptor that somebody forgot to mark, and a signal that the program ignores.
    const int forgotten = ::open(DiskText(temp_ / "file.txt").c_str(), O_RDONLY);
    ASSERT_GE(forgotten, 0);
    const auto oldHandler = std::signal(SIGPIPE, SIG_IGN);
    PutProgram(
        "xdg-open",
        "\"$(for f in /proc/$$/fd/*; do /bin/readlink $f; done)\" \"$(/bin/grep SigIgn /proc/$$/status)\"");
    EXPECT_FALSE(MakeShellOpener()->OpenWithShell(temp_ / "file.txt"));
    const auto record = TakeRecord();
    EXPECT_NE(record.find("/dev/null"), std::string::npos) << record;
    EXPECT_EQ(record.find("file.txt"), std::string::npos) << record;
    EXPECT_NE(record.find("SigIgn:\t0000000000000000"), std::string::npos) << record;
    std::signal(SIGPIPE, oldHandler);
    ::close(forgotten);
}

TEST_F(PosixProcessTest, ASecondSoundStopsTheFirst) {
    PutFile(temp_ / "a.wav", "x");
    PutFile(temp_ / "b.wav", "x");
    auto player = MakeSoundPlayer();
    EXPECT_EQ(player->Play(temp_ / "a.wav"), std::errc::no_such_file_or_directory);
    PutProgram("aplay", "wrong");
    PutProgram("paplay", "\"$1\" $$", "while :; do /bin/sleep 60; done");
    EXPECT_EQ(player->Play(temp_ / "none.wav"), std::errc::no_such_file_or_directory);

    ASSERT_FALSE(player->Play(temp_ / "A.wav"));
    const auto first = TakeRecord();
    ASSERT_EQ(first.substr(0, first.find('\n')), DiskText(temp_ / "a.wav"));
    const pid_t firstPlayer = std::stoi(first.substr(first.find('\n') + 1));
    EXPECT_EQ(::kill(firstPlayer, 0), 0);
    ASSERT_FALSE(player->Play(temp_ / "b.wav"));
    EXPECT_EQ(::kill(firstPlayer, 0), -1);
    const auto second = TakeRecord();
    const pid_t secondPlayer = std::stoi(second.substr(second.find('\n') + 1));
    EXPECT_EQ(::kill(secondPlayer, 0), 0);
    player.reset();
    EXPECT_EQ(::kill(secondPlayer, 0), -1);
}

TEST(PosixSingleInstanceTest, OnlyOneHoldsTheLockAndDeathFreesIt) {
    const test::TempFolder temp;
    const ScopedVariable runtime("XDG_RUNTIME_DIR", temp.Path());
    int ready[2];
    ASSERT_EQ(::pipe2(ready, O_CLOEXEC), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const auto held = SingleInstance::Acquire();
        const char answer = held ? 'y' : 'n';
        if (::write(ready[1], &answer, 1) == 1) ::pause();
        ::_exit(0);
    }
    char answer = 0;
    EXPECT_EQ(::read(ready[0], &answer, 1), 1);
    EXPECT_EQ(answer, 'y');
    EXPECT_TRUE(std::filesystem::exists(temp.Path() + "/quillbay.lock"));
    EXPECT_EQ(SingleInstance::Acquire(), nullptr);
    ::kill(child, SIGKILL);
    ASSERT_EQ(::waitpid(child, nullptr, 0), child);
    auto first = SingleInstance::Acquire();
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(SingleInstance::Acquire(), nullptr);
    first.reset();
    EXPECT_NE(SingleInstance::Acquire(), nullptr);
    ::close(ready[0]);
    ::close(ready[1]);
}

TEST(PosixSingleInstanceTest, FallsBackToTheTemporaryFolderThenToNoLock) {
    const test::TempFolder temp;
    const ScopedVariable runtime("XDG_RUNTIME_DIR", temp.Path() + "/none");
    const std::string lock = temp.Path() + "/quillbay-" + std::to_string(::getuid()) + ".lock";
    {
        const ScopedVariable temporary("TMPDIR", temp.Path());
        const auto held = SingleInstance::Acquire();
        EXPECT_TRUE(std::filesystem::exists(lock));
        EXPECT_EQ(SingleInstance::Acquire(), nullptr);
    }
    const ScopedVariable temporary("TMPDIR", temp.Path() + "/none");
    const auto held = SingleInstance::Acquire();
    EXPECT_NE(SingleInstance::Acquire(), nullptr);
}

} // namespace

} // namespace quillbay
