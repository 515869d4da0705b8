// The filter panels and the browser of sources in a large NoteBook: how long counts take after a change of the list,
// and how long the panels take to be filled anew.

#include <benchmark/benchmark.h>
#include <random>
#include <string>

#include "bench/made_sources.h"
#include "notes/filter_panels.h"

namespace lore {
namespace {

constexpr int32_t kCategories = 5000, kNotes = 100'000, kSources = 10'000, kKeyWords = 3000;
constexpr int kRoots = 50, kChildren = 9;  // three levels below each root

/// 50 roots with 9 branches of 11 categories: about 5,000.
CProCategoryList MakeForest() {
    CProCategoryList forest;
    int32_t id = 10;
    for (int root = 0; root < kRoots; ++root) {
        CProCategoryTree tree(id++, "Root " + std::to_string(root));
        for (int branch = 0; branch < kChildren; ++branch) {
            CProCategoryTree middle(id++, "Branch " + std::to_string(branch));
            for (int leaf = 0; leaf < kCategories / kRoots / kChildren - 1; ++leaf)
                middle.AddChild({id++, "Leaf " + std::to_string(leaf)});
            tree.AddChild(middle);
        }
        forest.AddRoot(tree);
    }
    forest.AddRoot({kUnassignedID, kUnassignedName});
    return forest;
}

/// A path that names a category by its id alone, as filing asks for.
CProCategoryTree PathTo(int32_t id) {
    return {id, "Here"};
}

/// Every note stands in one category of each set, in one source, under two key words, and has one of 40 colours.
struct LargeBook {
    CProCategoryList forest = MakeForest();
    SourceList sources = MakeSources(kSources);
    LongList withoutSource;
    CKeyWordList keyWords;
    CSearchColorList colors;
    LongList all, some;

    LargeBook() {
        std::mt19937 random(7);
        const int32_t highest = forest.HighestID();
        for (int32_t note = 1001; note <= 1000 + kNotes; ++note) {
            for (int set = 1; set <= kSetCount; ++set)
                forest.IndexNote(note, PathTo(10 + static_cast<int32_t>(random() % (highest - 9))), set);
            sources.AddNoteID(1011 + static_cast<int32_t>(random() % kSources), note);
            const auto word = [&] { return "word " + std::to_string(random() % kKeyWords); };
            keyWords.AddKeyWordsOfNote(word() + ", " + word(), note);
            colors.AddNoteToColor(note, static_cast<Rgb>(random() % 40 * 6));
            all.AddTail(note);
            if (note % 20 == 0)
                some.AddTail(note);
        }
    }
    static const LargeBook& Get() {
        static const LargeBook book;
        return book;
    }
};

void RefreshCounts(benchmark::State& state) {
    const LargeBook& book = LargeBook::Get();
    std::array<FilterPanel, 4> panels;
    panels[0].SetEntries(CategoryEntries(book.forest, kAllSets));
    panels[1].SetEntries(SourceEntries(book.sources, SourceGrouping::Author, book.withoutSource));
    panels[2].SetEntries(KeyWordEntries(book.keyWords));
    panels[3].SetEntries(ColorEntries(book.colors));
    const LongList& listed = state.range(0) == kNotes ? book.all : book.some;
    for (auto _ : state) {
        for (FilterPanel& panel : panels)
            panel.CountNotes(listed);
        benchmark::DoNotOptimize(panels[0].Entries().front().inList);
    }
}
BENCHMARK(RefreshCounts)->Arg(5000)->Arg(kNotes)->Unit(benchmark::kMillisecond);

void RebuildPanels(benchmark::State& state) {
    const LargeBook& book = LargeBook::Get();
    for (auto _ : state) {
        FilterPanel panel;
        panel.SetEntries(CategoryEntries(book.forest, kAllSets));
        panel.SetEntries(SourceEntries(book.sources, SourceGrouping::Author, book.withoutSource));
        panel.SetEntries(KeyWordEntries(book.keyWords));
        panel.SetEntries(ColorEntries(book.colors));
    }
}
BENCHMARK(RebuildPanels)->Unit(benchmark::kMillisecond);

void FilterCategories(benchmark::State& state) {
    FilterPanel panel;
    panel.SetEntries(CategoryEntries(LargeBook::Get().forest, kAllSets));
    panel.SetFilter("x");
    for (auto _ : state) {
        panel.SetFilter("leaf 7");
        panel.SetFilter("branch");
    }
}
BENCHMARK(FilterCategories)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lore

BENCHMARK_MAIN();
