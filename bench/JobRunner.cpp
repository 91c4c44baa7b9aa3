#include "catalogue/FileList.h"
#include "library/ModInstaller.h"
#include "library/ModIntake.h"
#include "library/ModRows.h"
#include "library/ModUninstaller.h"

#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

using namespace quillbay;

namespace {

constexpr const char* kUsage = "job_runner install|uninstall GAME MODS MOD\n"
                               "job_runner recompile GAME PROGRAM\n"
                               "job_runner add ARCHIVE MODS\n";

bool Install(FileSystem& files, const ModJob& job) {
    const auto result = RunInstall(files, PlanInstall(files, job), {});
    return result.outcome == InstallOutcome::Done && result.notSaved.empty() && result.notCopied.empty();
}

bool Uninstall(FileSystem& files, const ModJob& job) {
    const auto result = RunUninstall(files, PlanUninstall(files, job), {});
    return !result.failure && !result.BackupStays();
}

bool Recompile(FileSystem& files, const std::string& game, const std::string& program) {
    return RecompileFileList(files, game, program).outcome == RecompileOutcome::Done;
}

bool Add(FileSystem& files, const std::string& archive, const std::string& mods) {
    ModIntake intake(files, OpenArchive, mods, {});
    if (intake.Unpack(archive, {}, [](auto, auto) { return true; })) return false;
    const auto& found = intake.Layout().mods;
    for (std::size_t i = 0; i < found.size(); ++i)
        if (intake.Place(i, found[i].name, false).error) return false;
    return true;
}

/// The job that the arguments ask for; empty for none.
std::function<bool(FileSystem&)> JobFor(const std::vector<std::string>& words) {
    if (words.size() == 3 && words[0] == "recompile") {
        return [words](FileSystem& files) { return Recompile(files, words[1], words[2]); };
    }
    if (words.size() == 3 && words[0] == "add") {
        return [words](FileSystem& files) { return Add(files, words[1], words[2]); };
    }
    if (words.size() != 4 || (words[0] != "install" && words[0] != "uninstall")) {
        return {};
    }
    const auto run = words[0] == "install" ? Install : Uninstall;
    return [run, job = ModJob{words[1], words[2], {words[3]}}](FileSystem& files) { return run(files, job); };
}

} // namespace

/// Does one job and prints how long it took without the start of the process, in nanoseconds. Without
/// arguments it ends at once.
int main(int argc, char** argv) {
    if (argc == 1) return 0; // what the start of a program costs
    const auto job = JobFor({argv + 1, argv + argc});
    if (!job) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    const auto files = MakeFileSystem();
    const auto before = std::chrono::steady_clock::now();
    const bool whole = job(*files);
    const std::chrono::nanoseconds taken = std::chrono::steady_clock::now() - before;
    std::printf("%lld\n", static_cast<long long>(taken.count()));
    return whole ? 0 : 1;
}
