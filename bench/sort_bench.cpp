// How long the note list takes to sort, for each order and for lists of growing length.

#include <algorithm>
#include <benchmark/benchmark.h>
#include <iterator>
#include <map>
#include <random>
#include <string>

#include "notes/sort_order.h"

namespace lore {
namespace {

std::vector<CitationText> MakeTexts() {
    std::vector<CitationText> texts;
    for (int i = 0; i < 2000; ++i)
        texts.emplace_back("Author " + std::to_string(i) + ". A title of the usual length. 1999.");
    return texts;
}

std::vector<ListedNote> MakeNotes(size_t count) {
    std::mt19937 random(1);
    std::vector<ListedNote> notes;
    std::map<std::string, std::shared_ptr<const CProCategoryTree>> paths;
    const std::vector<CitationText> texts = MakeTexts();
    std::map<std::vector<size_t>, std::shared_ptr<const Citations>> citations;
    for (size_t i = 0; i < count; ++i) {
        auto note = std::make_shared<CNote>();
        note->id = static_cast<int32_t>(i + 1);
        note->dateCreated = note->dateEdited = DateTime(2011, 1, 1).PlusSeconds(random() % 100000000);
        const auto root = static_cast<int32_t>(random() % 40), child = static_cast<int32_t>(random() % 40);
        CProCategoryTree path(1 + root, "Category " + std::to_string(root));
        path.AddChild(CProCategoryTree(100 + 40 * root + child, "Below " + std::to_string(child)));
        note->categories[random() % 3] = path;
        std::vector<size_t> sources(random() % 3);
        std::ranges::generate(sources, [&] { return random() % texts.size(); });
        // Notes that are filed alike, or have equal sources, share what they sort by.
        auto& sharedPath = paths.try_emplace(path.Identity(), CopySortPath(*note)).first->second;
        auto& sharedTexts = citations.try_emplace(sources).first->second;
        if (!sharedTexts) {
            auto made = std::make_shared<Citations>();
            std::ranges::transform(sources, std::back_inserter(*made), [&](size_t source) { return texts[source]; });
            sharedTexts = made;
        }
        notes.emplace_back(note, sharedTexts, sharedPath);
    }
    return notes;
}

void BM_Sort(benchmark::State& state) {
    const std::vector<ListedNote> notes = MakeNotes(static_cast<size_t>(state.range(1)));
    for (auto _ : state)
        benchmark::DoNotOptimize(SortedOrder(notes, static_cast<int32_t>(state.range(0))));
}
BENCHMARK(BM_Sort)
    ->ArgsProduct({{kDateAddedUp, kSourceUp, kCategoryUp, kCategoryDown}, {2000, 20000, 200000}})
    ->Unit(benchmark::kMillisecond);

/// A sorted list again, one of whose notes has come to stand elsewhere.
void BM_SortAgain(benchmark::State& state) {
    const auto order = static_cast<int32_t>(state.range(0));
    const std::vector<ListedNote> notes = MakeNotes(static_cast<size_t>(state.range(1)));
    std::vector<ListedNote> sorted;
    for (const uint32_t position : SortedOrder(notes, order))
        sorted.push_back(notes[position]);
    sorted[sorted.size() / 2] = sorted[sorted.size() / 5];
    for (auto _ : state)
        benchmark::DoNotOptimize(SortedOrder(sorted, order));
}
BENCHMARK(BM_SortAgain)
    ->ArgsProduct({{kDateAddedUp, kSourceUp, kCategoryUp, kCategoryDown}, {20000, 200000}})
    ->Unit(benchmark::kMillisecond);

/// All notes under one name with two ids, which decide by place in the list.
void BM_SortOneNameTwoIds(benchmark::State& state) {
    std::vector<ListedNote> notes = MakeNotes(static_cast<size_t>(state.range(0)));
    for (size_t i = 0; i < notes.size(); ++i) {
        notes[i].note->categories[0] = CProCategoryTree(static_cast<int32_t>(i % 2 + 1), "Same");
        notes[i].RenewSortPath();
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(SortedOrder(notes, kCategoryUp));
}
BENCHMARK(BM_SortOneNameTwoIds)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lore

BENCHMARK_MAIN();
