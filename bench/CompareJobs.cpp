#include "Measure.h"
#include "driver/DrivenProgram.h"
#include "sample/Sample.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <string>

namespace fs = std::filesystem;
using namespace quillbay;

namespace {

constexpr int kPairs = 7;
constexpr std::size_t kGameFiles = 6'850;
constexpr std::uint64_t kGameBytes = 150'000'000;
constexpr std::size_t kMods = 1'000;
constexpr std::size_t kAddons = 200;

/// The sample, and the state that each measured job starts from.
class Bench {
public:
    explicit Bench(fs::path folder) : folder_(std::move(folder)) {
        fs::remove_all(folder_);
        const fs::path game = sample::MakePrefix(Home() / "prefix");
        sample::MakeGame(game, kGameFiles, kGameBytes);
        sample::MakeReplacingMod(game, App() / "mods/Whole");
        sample::MakeLibrary(CrowdedApp() / "mods", kMods, kAddons);
        fs::copy_file(QUILLBAY, App() / "quillbay");
        fs::copy_file(QUILLBAY, CrowdedApp() / "quillbay");
        fs::create_directories(folder_ / "clean");
        Copy(game, folder_ / "clean/game");
        Copy(App() / "mods", folder_ / "clean/mods");
    }

    fs::path Home() const { return folder_ / "home"; }
    fs::path App() const { return folder_ / "app"; }
    fs::path CrowdedApp() const { return folder_ / "crowded"; }
    std::string Game() const { return folder_ / "run/game"; }
    std::string Mods() const { return folder_ / "run/mods"; }
    std::string Saved() const { return folder_ / "run/saved"; }

    void Restore() const {
        fs::remove_all(folder_ / "run");
        Copy(folder_ / "clean", folder_ / "run");
        Settle();
    }

    void RestoreInstalled() const {
        Restore();
        RunProcess(Job("install"));
        Settle();
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
                 const std::string& window) {
    DrivenProgram driven(program, home);
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

std::vector<Comparison> CompareAll(const Bench& bench) {
    std::vector<Comparison> all = {
        {"install, whole process", "`cp -a mod/. game/`", 1.0, "s"},
        {"install, whole process", "`rsync -a --backup --backup-dir=saved mod/ game/`", 0.5, "s"},
        {"uninstall, whole process", "`rsync -a --ignore-times Backup/ game/`", 0.15, "s"},
        {"start to the caption", "an empty Qt window", 3, "ms"},
        {"automatic refresh, 1,000 mods and 200 addons", "`find mods -maxdepth 2 -type d`", 1, "ms"},
        {"peak memory of a session", "an empty Qt window", 1.6, "MB"},
    };
    const std::string mod = bench.Mods() + "/Whole";
    const auto install = [&] {
        bench.Restore();
        return RunProcess(bench.Job("install"));
    };
    MeasurePairs(all[0], kPairs, install, [&] {
        bench.Restore();
        return RunProcess({"cp", "-a", mod + "/.", bench.Game() + "/"});
    });
    MeasurePairs(all[1], kPairs, install, [&] {
        bench.Restore();
        return RunProcess(
            {"rsync", "-a", "--backup", "--backup-dir=" + bench.Saved(), mod + "/", bench.Game() + "/"});
    });
    MeasurePairs(
        all[2], kPairs,
        [&] {
            bench.RestoreInstalled();
            return RunProcess(bench.Job("uninstall"));
        },
        [&] {
            bench.RestoreInstalled();
            return RunProcess({"rsync", "-a", "--ignore-times", mod + "/Backup/", bench.Game() + "/"});
        });
    Settle();
    MeasurePairs(
        all[3], kPairs,
        [&] { return StartTime(bench.App() / "quillbay", bench.Home(), "Quillbay", "frmSelector"); },
        [&] { return StartTime(EMPTY_WINDOW, bench.Home(), "Empty", "EmptyWindow"); });
    {
        DrivenProgram driven(bench.CrowdedApp() / "quillbay", bench.Home());
        driven.Do("title Quillbay");
        const std::string mods = bench.CrowdedApp() / "mods";
        MeasurePairs(
            all[4], kPairs,
            [&] {
                return Milliseconds(
                    std::chrono::nanoseconds{std::stoll(driven.Do("timer timRefreshModList"))});
            },
            [&] {
                return 1000 * RunProcess({"find", mods, "-maxdepth", "2", "-type", "d"});
            });
        driven.Do("close frmSelector");
        driven.Wait();
    }
    MeasurePairs(
        all[5], kPairs, [&] { return SessionPeak(bench); }, [&] { return EmptyWindowPeak(bench.Home()); });
    return all;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("compare_jobs FOLDER (made anew)\n", stderr);
        return 2;
    }
    try {
        PrintTable(CompareAll(Bench(fs::absolute(argv[1]))));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "compare_jobs: %s\n", error.what());
        return 1;
    }
    return 0;
}
