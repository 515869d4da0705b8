#include <benchmark/benchmark.h>

#include "bench/made_sources.h"
#include "bibliography/citation.h"

namespace lore {
namespace {

void FormatSources(benchmark::State& state) {
    const AuthorList authors = MakeAuthors();
    SourceList sources = MakeSources(state.range(0));
    for (auto _ : state)
        sources.FormatAll(authors);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(FormatSources)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

void SortSources(benchmark::State& state) {
    const AuthorList authors = MakeAuthors();
    const SourceList unsorted = MakeSources(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        SourceList sources = unsorted;
        state.ResumeTiming();
        sources.SortSources(authors);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(SortSources)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

void WrapSources(benchmark::State& state) {
    const AuthorList authors = MakeAuthors();
    SourceList sources = MakeSources(state.range(0));
    sources.FormatAll(authors);
    for (auto _ : state) {
        for (size_t i = 0; i < sources.Count(); ++i)
            benchmark::DoNotOptimize(WrapCitation(sources[i], sources[i].FormattedText, 60));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(WrapSources)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lore

BENCHMARK_MAIN();
