// How long a NoteBook takes to open, and what memory it takes, for NoteBooks of growing size.

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <map>
#include <memory>
#include <string>

#include "bench/bench_folder.h"
#include "bench/notebook_generator.h"
#include "bench/quiet_world.h"
#include "notes/note_book_loader.h"
#include "notes/notebook_list.h"
#include "notes/text_cache.h"

namespace lore {
namespace {

/// A data folder that goes with the process.
class Folder {
public:
    explicit Folder(int32_t count) {
        GeneratorOptions options;
        options.count = count;
        book_ = GenerateNoteBook(Path(), options);
    }
    const std::filesystem::path& Path() const { return folder_.Path(); }
    double TextBytes() const { return static_cast<double>(book_.textBytes); }

private:
    BenchFolder folder_;
    GeneratedBook book_;
};

const Folder& FolderOf(int64_t count) {
    static std::map<int64_t, std::unique_ptr<Folder>> folders;
    std::unique_ptr<Folder>& folder = folders[count];
    if (!folder)
        folder = std::make_unique<Folder>(static_cast<int32_t>(count));
    return *folder;
}

/// A value of the process's status in bytes.
double StatusBytes(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kilobytes = 0;
        if (word == name && status >> kilobytes)
            return kilobytes * 1024;
    }
    return 0;
}

/// Gives memory that is free back, and forgets the largest size that was in use.
void ForgetPeak() {
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";
}

enum class Kind { Picture, Heads, Texts };

void Open(benchmark::State& state, Kind kind) {
    const Folder& folder = FolderOf(state.range(0));
    QuietWorld world;
    ForgetPeak();
    const double before = StatusBytes("VmRSS:");
    double after = 0;
    for (auto _ : state) {
        OpenNoteBook book;
        book.paths = NoteBookPaths(DataPaths{folder.Path()}, kMainNoteBookFolder);
        IdCounters counters;
        TextCache texts(size_t{4} << 30);
        LoadOptions options;
        options.mode = LoadMode::ReadOnly;
        options.keepHeads = kind == Kind::Heads;
        options.texts = kind == Kind::Texts ? &texts : nullptr;
        const LoadReport report = LoadNoteBook(book, counters, world.context, world.faults, options);
        state.PauseTiming();
        after = StatusBytes("VmRSS:");
        state.ResumeTiming();
    }
    const auto count = static_cast<double>(state.range(0));
    state.counters["a_note"] =
        benchmark::Counter(count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    state.counters["kept_a_note"] = (after - before) / count;
    state.counters["kept_by_text"] = (after - before) / folder.TextBytes();
    state.counters["peak_by_text"] = (StatusBytes("VmHWM:") - before) / folder.TextBytes();
}
BENCHMARK_CAPTURE(Open, picture, Kind::Picture)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Open, with_heads, Kind::Heads)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Open, with_texts, Kind::Texts)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lore

BENCHMARK_MAIN();
