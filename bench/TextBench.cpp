#include "modinfo/ModInfo.h"
#include "platform/CaseFold.h"

#include <benchmark/benchmark.h>
#include <cstdint>
#include <string>

using namespace quillbay;

namespace {

void ParseModInfo(benchmark::State& state) {
    std::string text;
    while (text.size() < static_cast<std::size_t>(state.range(0))) {
        text += "Author: someone\r\n\r\nDescription: twelve hulls, drawn and balanced anew\r\n\r\n";
    }
    for (auto _ : state) {
        ModInfoParser parser;
        parser.Feed(text);
        benchmark::DoNotOptimize(parser.Finish());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(ParseModInfo)->Arg(1'000)->Arg(1'000'000);

void CompareNames(benchmark::State& state, const char* one, const char* other) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(LessFolded(one, other));
    }
}
BENCHMARK_CAPTURE(CompareNames, ascii, "Textures of the Rim", "textures of the rim 2");
BENCHMARK_CAPTURE(CompareNames, letters, "\xC3\x84ther und \xC3\x96lfeld",
                  "\xC3\xA4ther und \xC3\xB6lfeld 2");

} // namespace
