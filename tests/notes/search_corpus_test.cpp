#include <gtest/gtest.h>

#include "notes/search_check.h"
#include "support/read_world.h"

namespace lore {
namespace {

TEST(SearchCorpus, HoldsForWhatFuzzingFound) {
    const auto corpus = std::filesystem::path(LORE_TEST_DATA).parent_path().parent_path() / "fuzz/corpus/search";
    const TempFolder folder(MemoryFolder());
    for (const auto& entry : std::filesystem::directory_iterator(corpus))
        EXPECT_EQ(CheckSearch(BytesOf(entry.path()), folder.Path()), "") << entry.path();
}

}  // namespace
}  // namespace lore
