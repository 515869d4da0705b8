#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>

#include "trust/note_check.h"
#include "trust/record_kinds.h"

// What the fuzz programs start from, and what they found, read once more. With LORE_WRITE_CORPUS set the seeds are
// written anew.

namespace lore {
namespace {

const std::filesystem::path kCorpus = std::filesystem::path(LORE_TEST_DATA).parent_path().parent_path() / "fuzz/corpus";

std::map<std::string, std::string> FilesOf(const char* corpus) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(kCorpus / corpus))
        files[entry.path().filename().string()] = BytesOf(entry.path());
    return files;
}

/// Expects a seed to stand in the corpus, or writes it.
void ExpectSeed(const std::filesystem::path& file, const std::string& bytes) {
    if (std::getenv("LORE_WRITE_CORPUS")) {
        std::filesystem::create_directories(file.parent_path());
        PutBytes(file, bytes);
    }
    EXPECT_EQ(BytesOf(file), bytes) << file;
}

TEST(Corpus, HoldsASeedOfEachKind) {
    for (size_t i = 0; i < RecordKinds().size(); ++i) {
        const RecordKind& kind = RecordKinds()[i];
        ExpectSeed(kCorpus / "record" / kind.name, std::string(1, static_cast<char>(i)) + kind.sample());
        if (std::string(kind.name).starts_with("notes") && kind.copyFile == kind.copyCopy)
            ExpectSeed(kCorpus / "note" / kind.name, kind.sample());
    }
}

TEST(Corpus, OfRecordFilesIsReadWithoutHarm) {
    RecordBench bench;
    for (const auto& [name, bytes] : FilesOf("record")) {
        ASSERT_FALSE(bytes.empty()) << name;
        const RecordKind& kind = RecordKinds()[static_cast<unsigned char>(bytes[0]) % RecordKinds().size()];
        EXPECT_EQ(bench.Check(kind, bytes.substr(1)), "") << name;
    }
}

TEST(Corpus, OfNoteFilesIsReadWithoutHarm) {
    for (const auto& [name, bytes] : FilesOf("note"))
        EXPECT_EQ(CheckNoteFile(bytes), "") << name;
}

}  // namespace
}  // namespace lore
