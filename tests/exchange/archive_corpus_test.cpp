#include <gtest/gtest.h>

#include "exchange/archive_check.h"
#include "support/data_files.h"
#include "support/read_world.h"

namespace lore {
namespace {

/// What the fuzz program starts from, and what it found.
TEST(ArchiveCorpus, IsReadWithoutHarm) {
    const TempFolder folder(MemoryFolder());
    for (const std::filesystem::path& file : CorpusFiles(LORE_TEST_DATA, "archive"))
        EXPECT_EQ(CheckArchive(BytesOf(file), folder.Path()), "") << file;
}

}  // namespace
}  // namespace lore
