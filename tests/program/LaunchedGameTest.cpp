#include "driver/DrivenProgram.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <thread>

/// The real program starts a real Windows program. scripts/windows-tests prepares the Wine prefix and the
/// game.
namespace quillbay {
namespace {

namespace fs = std::filesystem;

TEST(LaunchedGame, StartsInItsFolderWithItsArguments) {
    const char* prefix = std::getenv("QUILLBAY_TEST_PREFIX");
    ASSERT_NE(prefix, nullptr);
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    std::string home = fs::temp_directory_path() / "quillbay-launch-XXXXXX";
    ASSERT_NE(::mkdtemp(home.data()), nullptr);
    fs::create_directory(home + "/app");
    fs::copy_file(QUILLBAY, home + "/app/quillbay");
    fs::create_directory_symlink(prefix, home + "/prefix");
    const auto markOf = [&](std::initializer_list<const char*> commands) {
        DrivenProgram program(home + "/app/quillbay", home);
        for (const char* command : commands)
            program.Do(command);
        EXPECT_EQ(program.Wait(), 0);
        const auto patience = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        const std::string file = home + "/prefix/drive_c/Games & Co/Tempest II 100%/mark";
        std::string mark;
        while (std::ranges::count(mark, '\n') < 2 && std::chrono::steady_clock::now() < patience) {
            std::this_thread::yield();
            std::ifstream stream(file, std::ios::binary);
            mark.assign(std::istreambuf_iterator(stream), {});
        }
        fs::remove(file);
        return mark;
    };
    const std::string folder = "C:\\Games & Co\\Tempest II 100%\n";
    EXPECT_EQ(markOf({"title Quillbay", "trigger menuManagerLaunchT2"}), "Tempest2.exe\n" + folder);
    EXPECT_EQ(
        markOf({"title Quillbay", "trigger menuManagerLaunchMapEditor", "type Enter file name|my map.bzn"}),
        "Tempest2.exe /edit my map.bzn\n" + folder);
    fs::remove_all(home);
}

} // namespace
} // namespace quillbay
