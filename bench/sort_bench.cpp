// How long the note list takes to sort, for each order and for lists of growing length.

#include <benchmark/benchmark.h>
#include <random>
#include <string>

#include "notes/sort_order.h"

namespace lore {
namespace {

std::vector<ListedNote> MakeNotes(size_t count) {
    std::mt19937 random(1);
    std::vector<ListedNote> notes;
    for (size_t i = 0; i < count; ++i) {
        auto note = std::make_shared<CNote>();
        note->id = static_cast<int32_t>(i + 1);
        note->dateCreated = note->dateEdited = DateTime(2011, 1, 1).PlusSeconds(random() % 100000000);
        const auto root = static_cast<int32_t>(random() % 40), child = static_cast<int32_t>(random() % 40);
        CProCategoryTree path(1 + root, "Category " + std::to_string(root));
        path.AddChild(CProCategoryTree(100 + 40 * root + child, "Below " + std::to_string(child)));
        note->categories[random() % 3] = path;
        Citations citations;
        for (size_t n = random() % 3; n > 0; --n)
            citations.push_back("Author " + std::to_string(random() % 2000) + ". A title of the usual length. 1999.");
        notes.push_back({note, std::make_shared<Citations>(citations)});
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
