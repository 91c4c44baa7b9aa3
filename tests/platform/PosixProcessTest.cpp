#include "platform/ShellOpener.h"
#include "platform/SingleInstance.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace quillbay::test {
namespace {

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

    TempFolder temp_;
    std::string bin_ = DiskText(temp_ / "bin");
    ScopedVariable path_{"PATH", ":" + bin_};
    ScopedVariable prefix_{"WINEPREFIX", std::nullopt};
    const std::unique_ptr<ShellOpener> opener_ = MakeShellOpener();
};

TEST_F(PosixProcessTest, FilesAndAddressesGoToTheDesktop) {
    PutFile(temp_ / "Mods\\Read me & more.txt", "x");
    PutProgram("../Mods/xdg-open", "wrong"); // which is not taken from the current folder
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(DiskPath(temp_ / "Mods"));
    EXPECT_EQ(opener_->OpenWithShell(temp_ / "Mods"), std::errc::no_such_file_or_directory);
    std::filesystem::current_path(before);
    PutProgram("xdg-open", "\"$#\" \"$1\"");
    const std::string address = "mailto:a@b.example?subject=C:\\x";
    for (const auto& [target, folder, argument] :
         {std::tuple{temp_ / "mods\\READ ME & more.txt", "", DiskText(temp_ / "Mods/Read me & more.txt")},
          {temp_ / "Mods\\", "", DiskText(temp_ / "Mods")},
          {address, "C:\\", address}}) {
        EXPECT_FALSE(opener_->OpenWithShell(target, folder)) << target;
        EXPECT_EQ(TakeRecord(), "1\n" + argument + "\n");
    }
    EXPECT_EQ(opener_->OpenWithShell(temp_ / "none"), std::errc::no_such_file_or_directory);
    // The programs are not ours to wait for.
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(PosixProcessTest, BatchFilesStartInTheirPrefix) {
    PutFile(temp_ / "prefix\\drive_c\\T2\\Go.BAT", "x");
    PutFolder(temp_ / "prefix\\dosdevices");
    PutProgram("wine", "\"$1\" \"$2\" \"$3\" \"$WINEPREFIX\" \"$(pwd)\"");
    const std::string game = temp_ / "prefix\\drive_c\\t2";
    EXPECT_FALSE(opener_->OpenWithShell(game + "\\go.bat", game));
    const std::string prefix = DiskText(temp_ / "prefix");
    EXPECT_EQ(TakeRecord(),
              "start\n/unix\n" + prefix + "/drive_c/T2/Go.BAT\n" + prefix + "\n" + prefix + "/drive_c/T2\n");
    EXPECT_FALSE(opener_->OpenWithShell(game + "\\go.bat", game, "/chosen"));
    EXPECT_NE(TakeRecord().find("Go.BAT\n/chosen\n"), std::string::npos);
    EXPECT_EQ(opener_->OpenWithShell(game + "\\go.bat", temp_ / "none"),
              std::errc::no_such_file_or_directory);
}

TEST(PosixSingleInstanceTest, LocksInTheRunTimeThenInTheTemporaryFolderThenNotAtAll) {
    const TempFolder temp;
    const auto expectLock = [&](const std::string& name) {
        auto first = SingleInstance::Acquire();
        EXPECT_TRUE(std::filesystem::exists(temp.Path() + name)) << name;
        EXPECT_EQ(SingleInstance::Acquire(), nullptr) << name;
        first.reset();
        EXPECT_NE(SingleInstance::Acquire(), nullptr) << name;
    };
    const ScopedVariable temporary("TMPDIR", temp.Path());
    const ScopedVariable runtime("XDG_RUNTIME_DIR", temp.Path());
    expectLock("/quillbay.lock");
    const ScopedVariable noRuntime("XDG_RUNTIME_DIR", temp.Path() + "/none");
    expectLock("/quillbay-" + std::to_string(::getuid()) + ".lock");
    const ScopedVariable noTemporary("TMPDIR", temp.Path() + "/none");
    const auto held = SingleInstance::Acquire();
    EXPECT_NE(SingleInstance::Acquire(), nullptr);
}

} // namespace
} // namespace quillbay::test
