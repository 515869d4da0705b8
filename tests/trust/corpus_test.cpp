#include <gtest/gtest.h>

#include "support/data_files.h"
#include "trust/note_check.h"
#include "trust/record_kinds.h"

// What the fuzz programs start from, and what they found, read once more.

namespace lore {
namespace {

TEST(Corpus, OfRecordFilesIsReadWithoutHarm) {
    RecordBench bench;
    size_t seeds = 0;
    for (const auto& path : CorpusFiles(LORE_TEST_DATA, "record")) {
        const std::string bytes = BytesOf(path);
        ASSERT_FALSE(bytes.empty()) << path;
        const RecordKind& kind = RecordKinds()[static_cast<unsigned char>(bytes[0]) % RecordKinds().size()];
        EXPECT_EQ(bench.Check(kind, bytes.substr(1)), "") << path;
        seeds += path.filename() == kind.name;
    }
    EXPECT_EQ(seeds, RecordKinds().size()) << "each kind has a seed of its name, which begins with its number";
}

TEST(Corpus, OfNoteFilesIsReadWithoutHarm) {
    for (const auto& path : CorpusFiles(LORE_TEST_DATA, "note"))
        EXPECT_EQ(CheckNoteFile(BytesOf(path)), "") << path;
}

}  // namespace
}  // namespace lore
