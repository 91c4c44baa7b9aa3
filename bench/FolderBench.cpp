#include "library/KnownFolders.h"
#include "library/ModRows.h"
#include "sample/Sample.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;
using namespace quillbay;

namespace {

/// A folder that is removed at the end.
class Scratch {
public:
    Scratch() {
        std::string pattern = fs::temp_directory_path() / "quillbay-bench-XXXXXX";
        path_ = ::mkdtemp(pattern.data());
    }
    ~Scratch() { fs::remove_all(path_); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    std::string Path() const { return path_; }

private:
    fs::path path_;
};

void ListFolder(benchmark::State& state, Detail detail) {
    const Scratch scratch;
    sample::MakeLibrary(scratch.Path(), 1000, 0);
    const auto files = MakeFileSystem();
    for (auto _ : state) {
        benchmark::DoNotOptimize(files->List(scratch.Path(), detail));
    }
}
BENCHMARK_CAPTURE(ListFolder, names, Detail::Names)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(ListFolder, full, Detail::Full)->Unit(benchmark::kMicrosecond);

void ScanLibrary(benchmark::State& state) {
    const Scratch scratch;
    sample::MakeLibrary(scratch.Path(), 1000, 200);
    const auto files = MakeFileSystem();
    for (auto _ : state) {
        benchmark::DoNotOptimize(ScanModLibrary(*files, scratch.Path()));
    }
}
BENCHMARK(ScanLibrary)->Unit(benchmark::kMicrosecond);

void CountGame(benchmark::State& state) {
    const Scratch scratch;
    sample::MakeGame(scratch.Path(), 6'850, 1'000'000);
    const auto files = MakeFileSystem();
    for (auto _ : state) {
        benchmark::DoNotOptimize(CountKnownFiles(*files, scratch.Path()));
    }
}
BENCHMARK(CountGame)->Unit(benchmark::kMicrosecond);

} // namespace
