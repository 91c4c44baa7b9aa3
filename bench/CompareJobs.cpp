#include "ArchiveJobs.h"
#include "Measure.h"
#include "ToolJobs.h"
#include "driver/DrivenProgram.h"
#include "sample/Sample.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace fs = std::filesystem;
using namespace quillbay;

namespace {

constexpr int kPairs = 7;
constexpr std::size_t kGameFiles = 6'850;
constexpr std::uint64_t kGameBytes = 150'000'000;
constexpr std::size_t kMods = 1'000;
constexpr std::size_t kAddons = 200;
constexpr int kPrefixes = 50;
constexpr std::size_t kRegistryBytes = 5'000'000;

/// The sample, and the state that each measured job starts from.
class Bench {
public:
    explicit Bench(fs::path folder) : folder_(std::move(folder)) {
        fs::remove_all(folder_);
        const fs::path game = sample::MakePrefix(Home() / "prefix");
        sample::MakeGame(game, kGameFiles, kGameBytes);
        sample::MakeReplacingMod(game, App() / "mods/Whole");
        sample::MakeLauncherPrefixes(PlayersHome(), kPrefixes, kRegistryBytes);
        sample::MakeLibrary(CrowdedApp() / "mods", kMods, kAddons);
        fs::copy_file(QUILLBAY, App() / "quillbay");
        fs::copy_file(QUILLBAY, CrowdedApp() / "quillbay");
        fs::create_directories(Mods());
        Copy(game, Clean());
        Copy(App() / "mods/Whole", Mods() + "/Whole");
    }

    fs::path Home() const { return folder_ / "home"; }
    fs::path PlayersHome() const { return folder_ / "player"; }
    fs::path App() const { return folder_ / "app"; }
    fs::path CrowdedApp() const { return folder_ / "crowded"; }
    std::string Game() const { return folder_ / "run/game"; }
    std::string Mods() const { return folder_ / "run/mods"; }
    fs::path Clean() const { return folder_ / "clean"; } ///< the game, whatever is measured
    std::string Saved() const { return folder_ / "run/saved"; }

    void Restore() const {
        fs::remove_all(Game());
        fs::remove_all(Saved());
        fs::remove_all(Mods() + "/Whole/Backup");
        Copy(Clean(), Game());
        Settle();
    }

    /// `onDisk`: as long after the installation as that everything is written; deleting costs more then.
    void RestoreInstalled(bool onDisk) const {
        Restore();
        RunProcess(Job("install"));
        if (onDisk) {
            Settle();
        }
    }

    std::vector<std::string> Job(const std::string& name) const {
        return {JOB_RUNNER, name, Game(), Mods(), "Whole"};
    }

private:
    static void Copy(const fs::path& from, const fs::path& to) { RunProcess({"cp", "-a", from, to}); }

    fs::path folder_;
};

double Milliseconds(std::chrono::nanoseconds time) { return static_cast<double>(time.count()) / 1e6; }

/// From before the process was made to a painted window with that title.
double StartTime(const fs::path& program, const fs::path& home, const std::string& title,
                 const std::string& window, bool choosePrefix = true) {
    DrivenProgram driven(program, home, choosePrefix);
    const std::chrono::nanoseconds shown{std::stoll(driven.Do("title " + title))};
    const auto taken = Milliseconds(shown - driven.StartedAt().time_since_epoch());
    driven.Do("close " + window);
    driven.Wait();
    return taken;
}

double EmptyWindowPeak(const fs::path& home) {
    DrivenProgram driven(EMPTY_WINDOW, home);
    driven.Do("title Empty");
    const double peak = std::stod(driven.Do("peak")) / 1024;
    driven.Do("close EmptyWindow");
    driven.Wait();
    return peak;
}

/// After the start, an installation and an uninstallation.
double SessionPeak(const Bench& bench) {
    DrivenProgram driven(bench.App() / "quillbay", bench.Home());
    driven.Do("title Quillbay");
    for (const std::string button : {"Install", "Uninstall"}) {
        driven.Do("select lstMods|Whole");
        driven.Do("click cmd" + button + "Mod");
        driven.Do("answer " + button + " Whole mod?|Yes");
        driven.Do("await cmd" + button + "Mod|text|" + button + " Mod");
        driven.Do("await cmdInstallMod|enabled|true");
    }
    const double peak = std::stod(driven.Do("peak")) / 1024;
    driven.Do("close frmSelector");
    driven.Wait();
    return peak;
}

std::vector<Measurement> FileJobs(const Bench& bench) {
    const std::string mod = bench.Mods() + "/Whole";
    const std::string game = bench.Game() + "/";
    const auto install = [&bench] {
        bench.Restore();
        return RunProcess(bench.Job("install"));
    };
    const auto uninstall = [&bench](bool onDisk) {
        return [&bench, onDisk] {
            bench.RestoreInstalled(onDisk);
            return RunProcess(bench.Job("uninstall"));
        };
    };
    const auto copy = [&bench, mod, game] {
        bench.Restore();
        return RunProcess({"cp", "-a", mod + "/.", game});
    };
    const auto copyWithBackup = [&bench, mod, game] {
        bench.Restore();
        return RunProcess({"rsync", "-a", "--backup", "--backup-dir=" + bench.Saved(), mod + "/", game});
    };
    const auto copyBack = [&bench, mod, game](bool onDisk) {
        return [&bench, mod, game, onDisk] {
            bench.RestoreInstalled(onDisk);
            return RunProcess({"rsync", "-a", "--ignore-times", mod + "/Backup/", game});
        };
    };
    const auto restoreBarely = [&bench, mod, game] {
        bench.RestoreInstalled(true);
        return RunProcess({BARE_RESTORE, mod + "/Backup", game});
    };
    return {
        {{"install, whole process", "`cp -a mod/. game/`", 1.0, "s"}, install, copy},
        {{"install, whole process", "`rsync -a --backup --backup-dir=saved mod/ game/`", 0.5, "s"},
         install,
         copyWithBackup},
        {{"uninstall soon after, whole process", "`rsync -a --ignore-times Backup/ game/`", 0.3, "s"},
         uninstall(false),
         copyBack(false)},
        {{"uninstall later, whole process", "`rsync -a --ignore-times Backup/ game/`", 0.3, "s"},
         uninstall(true),
         copyBack(true)},
        {{"uninstall later, whole process", "link, rename and unlink of each file, by `bare_restore`", 1.3,
          "s"},
         uninstall(true),
         restoreBarely},
    };
}

std::vector<Measurement> WindowJobs(const Bench& bench, DrivenProgram& crowded) {
    const std::string mods = bench.CrowdedApp() / "mods";
    return {
        {{"start to the caption", "an empty Qt window", 3, "ms"},
         [&bench] { return StartTime(bench.App() / "quillbay", bench.Home(), "Quillbay", "frmSelector"); },
         [&bench] { return StartTime(EMPTY_WINDOW, bench.Home(), "Empty", "EmptyWindow"); }},
        {{"start among 50 Wine prefixes of 5 MB", "an empty Qt window", 3, "ms"},
         [&bench] {
             return StartTime(bench.App() / "quillbay", bench.PlayersHome(), "Quillbay", "frmSelector",
                              false);
         },
         [&bench] { return StartTime(EMPTY_WINDOW, bench.PlayersHome(), "Empty", "EmptyWindow"); }},
        {{"automatic refresh, 1,000 mods and 200 addons", "`find mods -maxdepth 2 -type d`", 1, "ms"},
         [&crowded] { return std::stod(crowded.Do("timer timRefreshModList")) / 1e6; },
         [mods] {
             return 1000 * RunProcess({"find", mods, "-maxdepth", "2", "-type", "d"});
         }},
        {{"peak memory of a session", "an empty Qt window", 1.6, "MB"},
         [&bench] { return SessionPeak(bench); },
         [&bench] { return EmptyWindowPeak(bench.Home()); }},
    };
}

/// The comparisons whose job or peer contains `part`.
std::vector<Comparison> Compare(std::vector<Measurement> measurements, const std::string& part) {
    std::vector<Comparison> done;
    for (auto& [comparison, ours, theirs] : measurements) {
        if ((comparison.job + comparison.peer).find(part) != std::string::npos) {
            MeasurePairs(comparison, kPairs, ours, theirs);
            done.push_back(comparison);
        }
    }
    return done;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) {
        std::fputs("compare_jobs FOLDER [PART OF A NAME]   (the folder is made anew)\n", stderr);
        return 2;
    }
    const std::string part = argc == 3 ? argv[2] : "";
    try {
        const Bench bench(fs::absolute(argv[1]));
        auto comparisons = Compare(FileJobs(bench), part);
        for (auto& comparison :
             Compare(ArchiveJobs(bench.Clean(), fs::absolute(argv[1]) / "archives"), part)) {
            comparisons.push_back(std::move(comparison));
        }
        Settle();
        // The lock of the single instance lies in the home folder: the program with many mods has its own.
        sample::MakePrefix(bench.CrowdedApp() / "home/prefix");
        DrivenProgram crowded(bench.CrowdedApp() / "quillbay", bench.CrowdedApp() / "home");
        crowded.Do("title Quillbay");
        for (auto& comparison : Compare(WindowJobs(bench, crowded), part)) {
            comparisons.push_back(std::move(comparison));
        }
        for (auto& comparison : Compare(ToolJobs(fs::absolute(argv[1]) / "tools"), part)) {
            comparisons.push_back(std::move(comparison));
        }
        PrintTable(comparisons);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "compare_jobs: %s\n", error.what());
        return 1;
    }
    return 0;
}
