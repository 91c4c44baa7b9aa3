#include "ToolJobs.h"

#include "driver/DrivenProgram.h"
#include "sample/Sample.h"

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace fs = std::filesystem;

namespace quillbay {

namespace {

/// A running program on a game and a library of its own.
class Tool {
public:
    Tool(const fs::path& folder, const std::function<void(const fs::path& game, const fs::path& mods)>& fill)
        : game_(sample::MakePrefix(folder / "home/prefix")), app_(folder / "app") {
        fs::create_directories(app_ / "mods");
        fill(game_, app_ / "mods");
        fs::copy_file(QUILLBAY, app_ / "quillbay");
        Settle();
        program_.emplace(app_ / "quillbay", folder / "home");
        program_->Do("title Quillbay");
    }

    const fs::path& Game() const { return game_; }
    const fs::path& App() const { return app_; }
    void Do(const std::string& command) { program_->Do(command); }

    /// Milliseconds from a command until what it leads to is there.
    double Time(const std::string& command, const std::string& outcome) {
        const auto before = std::chrono::steady_clock::now().time_since_epoch();
        Do(command);
        const std::chrono::nanoseconds after{std::stoll(program_->Do("await " + outcome))};
        return std::chrono::duration<double, std::milli>(after - before).count();
    }
    /// The same for a window that its menu item opens; it is closed again.
    double TimeOpening(const std::string& item, const std::string& window) {
        const double taken = Time("trigger " + item, window + "|visible|true");
        Do("close " + window);
        Do("await " + window + "|visible|false");
        return taken;
    }

private:
    fs::path game_;
    fs::path app_;
    std::optional<DrivenProgram> program_;
};

/// Made when it is needed first, so that a run of a few measurements makes only what they need.
class LaterTool {
public:
    LaterTool(fs::path folder, std::function<void(const fs::path&, const fs::path&)> fill)
        : folder_(std::move(folder)), fill_(std::move(fill)) {}

    Tool& operator*() {
        if (!tool_) {
            tool_ = std::make_unique<Tool>(folder_, fill_);
        }
        return *tool_;
    }
    Tool* operator->() { return &**this; }

private:
    fs::path folder_;
    std::function<void(const fs::path&, const fs::path&)> fill_;
    std::unique_ptr<Tool> tool_;
};

double MillisecondsOf(const std::vector<std::string>& command) { return 1000 * RunProcess(command); }

double ListWithTimes(const fs::path& game) {
    return MillisecondsOf({"find", game, "-type", "f", "-printf", "%p %s %T@\n"});
}

/// The finder on games of growing size.
std::vector<Measurement> FinderJobs(const fs::path& folder) {
    std::vector<Measurement> jobs;
    for (const std::size_t count : std::array<std::size_t, 3>{6'850, 14'000, 28'000}) {
        const std::string files = std::to_string(count) + " files";
        const auto tool = std::make_shared<LaterTool>(
            folder / ("finder" + std::to_string(count)), [count](const fs::path& game, const fs::path& mods) {
                sample::MakeGame(game, count, count * 2'000);
                RunProcess({JOB_RUNNER, "recompile", game, mods.parent_path()});
            });
        const auto list = [tool] { return ListWithTimes((*tool)->Game()); };
        jobs.push_back(
            {{"scan of " + files + ", window included", "`find game -printf '%p %s %T@'`", 6, "ms"},
             [tool] {
                 Tool& finder = **tool;
                 finder.Do("trigger menuManagerFindModifiedFiles");
                 finder.Do("await frmFindModifiedFiles|visible|true");
                 const double taken = finder.Time("click frmFindModifiedFiles/cmdStart",
                                                  "frmFindModifiedFiles/cmdStart|visible|true");
                 finder.Do("close frmFindModifiedFiles");
                 finder.Do("await frmFindModifiedFiles|visible|false");
                 return taken;
             },
             list});
        if (jobs.size() > 1) {
            continue;
        }
        jobs.push_back(
            {{"opening the finder, " + files, "`find game -printf '%p %s %T@'`", 4, "ms"},
             [tool] { return (*tool)->TimeOpening("menuManagerFindModifiedFiles", "frmFindModifiedFiles"); },
             list});
        jobs.push_back(
            {{"recompile of " + files + ", whole process", "`find game -printf '%p %s %T@'`", 4, "ms"},
             [tool] {
                 Tool& finder = **tool;
                 return MillisecondsOf({JOB_RUNNER, "recompile", finder.Game(), finder.App()});
             },
             list});
    }
    return jobs;
}

Measurement CompatibilityJob(const fs::path& folder) {
    const auto tool =
        std::make_shared<LaterTool>(folder / "compare", [](const fs::path&, const fs::path& mods) {
            for (const char* mod : {"First", "Second"}) {
                sample::MakeGame(mods / mod, 9'990, 2'000'000);
            }
        });
    return {{"comparing two mods of 10,000 files", "`find First Second`", 4, "ms"},
            [tool] {
                Tool& checker = **tool;
                checker.Do("trigger menuModCompatablility");
                checker.Do("select lstBox1|First");
                checker.Do("select lstBox2|Second");
                return checker.Time("click frmCompatability/cmdCheck", "lstIncompatable|readOnly|true");
            },
            [tool] {
                const fs::path mods = (*tool)->App() / "mods";
                return MillisecondsOf({"find", mods / "First", mods / "Second"});
            }};
}

Measurement CheckerJob(const fs::path& folder) {
    const auto tool =
        std::make_shared<LaterTool>(folder / "checker", [](const fs::path& game, const fs::path&) {
            sample::MakeDefinitions(game / "odf", 3'000, true);
        });
    return {{"check of 3,000 ODF files, window included", "`cat` of them through `grep -c '\"'`", 5, "ms"},
            [tool] {
                (*tool)->Do("trigger menuModOpenOdfChecker");
                return (*tool)->Time("click frmOdfChecker/cmdStart", "frmOdfChecker/cboHelp|visible|true");
            },
            [tool] {
                const std::string odf = (*tool)->Game() / "odf";
                return MillisecondsOf(
                    {"sh", "-c", "find '" + odf + "' -name '*.odf' -exec cat {} + | grep -c '\"'"});
            }};
}

Measurement AnalyzerJob(const fs::path& folder) {
    const auto tool =
        std::make_shared<LaterTool>(folder / "analyzer", [](const fs::path&, const fs::path& mods) {
            sample::MakeLibrary(mods, 1'000, 0);
        });
    return {{"the analyzer with 1,000 mods, window included", "`find mods -type d`", 5, "ms"},
            [tool] { return (*tool)->TimeOpening("menuModAnalyzeMod", "frmAnalyzer"); },
            [tool] {
                return MillisecondsOf({"find", (*tool)->App() / "mods", "-type", "d"});
            }};
}

Measurement SorterJob(const fs::path& folder) {
    const auto tool =
        std::make_shared<LaterTool>(folder / "sorter", [](const fs::path&, const fs::path& mods) {
            fs::create_directories(mods / "Empty");
            sample::MakeLooseFiles(mods / "Loose", 5'000, 1'000);
        });
    return {{"choosing a mod of 5,000 loose files", "`grep -l include` over its 1,000 ODF files", 5, "ms"},
            [tool] {
                Tool& sorter = **tool;
                sorter.Do("trigger menuManagerFileInstaller");
                sorter.Do("select lstChooser|Empty");
                return sorter.Time("select lstChooser|Loose", "frmInstaller|visible|true");
            },
            [tool] {
                const std::string loose = (*tool)->App() / "mods/Loose";
                return MillisecondsOf({"sh", "-c", "grep -l include '" + loose + "'/*.odf"});
            }};
}

} // namespace

std::vector<Measurement> ToolJobs(const fs::path& folder) {
    std::vector<Measurement> jobs = FinderJobs(folder);
    for (const auto& make : {CompatibilityJob, CheckerJob, AnalyzerJob, SorterJob}) {
        jobs.push_back(make(folder));
    }
    return jobs;
}

} // namespace quillbay
