#include "library/ModInstaller.h"
#include "library/ModRows.h"
#include "library/ModUninstaller.h"

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

using namespace quillbay;

namespace {

constexpr const char* kUsage = "job_runner install|uninstall GAME MODS MOD\n";

bool Install(FileSystem& files, const ModJob& job) {
    const auto result = RunInstall(files, PlanInstall(files, job), {});
    return result.outcome == InstallOutcome::Done && result.notSaved.empty() && result.notCopied.empty();
}

bool Uninstall(FileSystem& files, const ModJob& job) {
    const auto result = RunUninstall(files, PlanUninstall(files, job), {});
    return !result.failure && !result.BackupStays();
}

} // namespace

/// Does one job and prints how long it took without the start of the process, in nanoseconds.
int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() != 4 || (arguments[0] != "install" && arguments[0] != "uninstall")) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    const ModJob job{arguments[1], arguments[2], {arguments[3]}};
    const auto files = MakeFileSystem();
    const auto before = std::chrono::steady_clock::now();
    const bool whole = arguments[0] == "install" ? Install(*files, job) : Uninstall(*files, job);
    const std::chrono::nanoseconds taken = std::chrono::steady_clock::now() - before;
    std::printf("%lld\n", static_cast<long long>(taken.count()));
    return whole ? 0 : 1;
}
