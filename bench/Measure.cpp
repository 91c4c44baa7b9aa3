#include "Measure.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace quillbay {

namespace {

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

double RunProcess(const std::vector<std::string>& command) {
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    for (auto& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", 1, 0);
    pid_t process = -1;
    const auto before = std::chrono::steady_clock::now();
    const int error = ::posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (error != 0 || ::waitpid(process, &status, 0) < 0 || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        throw std::runtime_error("failed: " + command[0]);
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - before).count();
}

void Settle() { ::sync(); }

void MeasurePairs(Comparison& comparison, int pairs, const std::function<double()>& ours,
                  const std::function<double()>& theirs) {
    std::vector<double> ourFigures;
    std::vector<double> theirFigures;
    for (int pair = 0; pair < pairs; ++pair) {
        if (pair % 2 == 0) {
            ourFigures.push_back(ours());
            theirFigures.push_back(theirs());
        } else {
            theirFigures.push_back(theirs());
            ourFigures.push_back(ours());
        }
        std::fprintf(stderr, "%s: %.4g %s, %s: %.4g %s\n", comparison.job.c_str(), ourFigures.back(),
                     comparison.unit.c_str(), comparison.peer.c_str(), theirFigures.back(),
                     comparison.unit.c_str());
    }
    comparison.ours = Median(ourFigures);
    comparison.theirs = Median(theirFigures);
}

void PrintTable(const std::vector<Comparison>& comparisons) {
    std::printf("| Job | Quillbay | Beside it | Takes | Ratio | Aim |\n|---|---|---|---|---|---|\n");
    for (const auto& comparison : comparisons) {
        std::printf("| %s | %.4g %s | %s | %.4g %s | %.2f | at most %g |\n", comparison.job.c_str(),
                    comparison.ours, comparison.unit.c_str(), comparison.peer.c_str(), comparison.theirs,
                    comparison.unit.c_str(), comparison.Ratio(), comparison.atMost);
    }
}

} // namespace quillbay
