#include <gtest/gtest.h>

#include "notes/search_check.h"
#include "support/data_files.h"
#include "support/read_world.h"

namespace lore {
namespace {

TEST(SearchCorpus, HoldsForWhatFuzzingFound) {
    const TempFolder folder(MemoryFolder());
    for (const auto& path : CorpusFiles(LORE_TEST_DATA, "search"))
        EXPECT_EQ(CheckSearch(BytesOf(path), folder.Path()), "") << path;
}

}  // namespace
}  // namespace lore
