// How fast a search answers: over texts in memory, beside memmem over the same bytes, and over note files on disk.

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench/bench_folder.h"
#include "bench/notebook_generator.h"
#include "bench/quiet_world.h"
#include "notes/note_file.h"
#include "notes/search_database.h"
#include "notes/search_prefilter.h"
#include "notes/text_cache.h"
#include "rtf/rtf.h"

namespace lore {
namespace {

constexpr int kNotes = 20000;

/// 2,000 note files, and the folded texts of the same notes.
struct Data {
    BenchFolder folder;
    std::vector<std::string> rtf;
    FoldedTexts texts;
    TextCache cache{size_t{1} << 30};
    std::vector<std::string> files;

    Data() {
        NoteMaker maker(20240607);
        std::vector<CNote> notes;
        for (int i = 0; i < kNotes; ++i) {
            notes.push_back(maker.Next());
            rtf.push_back(notes.back().rtfText);
            texts.Add(notes.back().id, 0, PlainText(rtf.back()));
            if (notes.size() < kNotesPerFile)
                continue;
            const std::string path = (folder.Path() / GetNoteFileName(notes[0])).string();
            std::ofstream(path, std::ios::binary) << NoteFileBytes(notes);
            cache.UpdateFile(path, notes);
            files.push_back(path);
            notes.clear();
        }
    }

    static Data& Get() {
        static Data data;
        return data;
    }
};

NoteMatcher MatcherFor(const std::string& text) {
    NoteSearch search;
    ParseSearchString(text, nullptr, search);
    return NoteMatcher(search);
}

constexpr const char* kTerms[] = {"heliotrope", "\"heliotrope\"",  "needle", "he", "qz", "e", "lamp",
                                  "zzz",        "xy OR heliotrope"};

const std::string& TermAt(const benchmark::State& state) {
    static const std::vector<std::string> terms(std::begin(kTerms), std::end(kTerms));
    return terms[static_cast<size_t>(state.range(0))];
}

void MemmemOverAllText(benchmark::State& state) {
    const std::string& bytes = Data::Get().texts.bytes;
    for (auto _ : state)
        benchmark::DoNotOptimize(memmem(bytes.data(), bytes.size(), "heliotropa", 10));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes.size()));
}
BENCHMARK(MemmemOverAllText)->Unit(benchmark::kMillisecond);

void SearchTextsInMemory(benchmark::State& state) {
    const Data& data = Data::Get();
    const std::string& term = TermAt(state);
    size_t results = 0;
    for (auto _ : state) {
        const NoteMatcher matcher = MatcherFor(term);
        results = 0;
        for (const std::string& file : data.files)
            results += data.cache.SearchFile(file, matcher)->size();
    }
    state.SetLabel(term + ": " + std::to_string(results));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * data.texts.bytes.size()));
}
BENCHMARK(SearchTextsInMemory)->DenseRange(0, std::size(kTerms) - 1)->Unit(benchmark::kMillisecond);

/// Each letter that is typed into the search box: how long most of these searches take, and the slowest ones.
void EachKeyOfASearch(benchmark::State& state) {
    const Data& data = Data::Get();
    const std::string words[] = {"heliotrope", "lighthouse keeper", "needle"};
    std::vector<double> taken;
    for (auto _ : state)
        for (const std::string& word : words)
            for (size_t letters = 1; letters <= word.size(); ++letters) {
                const auto begin = std::chrono::steady_clock::now();
                const NoteMatcher matcher = MatcherFor(word.substr(0, letters));
                size_t results = 0;
                for (const std::string& file : data.files)
                    results += data.cache.SearchFile(file, matcher)->size();
                benchmark::DoNotOptimize(results);
                const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - begin;
                taken.push_back(spent.count());
            }
    std::sort(taken.begin(), taken.end());
    state.counters["median"] = taken[taken.size() / 2];
    state.counters["worst"] = taken[taken.size() * 99 / 100];
}
BENCHMARK(EachKeyOfASearch)->Unit(benchmark::kMillisecond)->Iterations(10);

void PrefilterRtf(benchmark::State& state) {
    const Data& data = Data::Get();
    const NoteMatcher matcher = MatcherFor(TermAt(state));
    const RtfPrefilter filter(matcher);
    int64_t bytes = 0;
    int64_t left = 0;
    for (auto _ : state) {
        left = 0;
        for (const std::string& rtf : data.rtf) {
            left += filter.MayMatch(rtf);
            bytes += static_cast<int64_t>(rtf.size());
        }
    }
    state.SetLabel(TermAt(state) + ": " + std::to_string(left));
    state.SetBytesProcessed(bytes);
}
BENCHMARK(PrefilterRtf)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

void PlainTextOfRtf(benchmark::State& state) {
    const Data& data = Data::Get();
    int64_t bytes = 0;
    std::string text;
    for (auto _ : state) {
        for (const std::string& rtf : data.rtf) {
            PlainText(rtf, text);
            bytes += static_cast<int64_t>(rtf.size());
        }
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(PlainTextOfRtf)->Unit(benchmark::kMillisecond);

void FoldTexts(benchmark::State& state) {
    const std::string& bytes = Data::Get().texts.bytes;
    const std::string_view text = std::string_view(bytes).substr(0, bytes.find('\xFF'));
    std::string folded;
    for (auto _ : state) {
        folded.clear();
        AppendFolded(folded, text);
        benchmark::DoNotOptimize(folded.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(FoldTexts);

void SearchNoteFiles(benchmark::State& state) {
    const Data& data = Data::Get();
    const NoteMatcher matcher = MatcherFor(TermAt(state));
    QuietWorld world;
    SearchOptions options;
    options.threads = static_cast<int>(state.range(1));
    size_t results = 0;
    for (auto _ : state)
        results = SearchDatabase(data.folder.Path(), matcher, options, world.context, world.faults).size();
    state.SetLabel(TermAt(state) + ": " + std::to_string(results));
}
BENCHMARK(SearchNoteFiles)->ArgsProduct({{1, 3, 8}, {1, 2}})->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace lore

BENCHMARK_MAIN();
