#include <cstdlib>
#include <gtest/gtest.h>

#include "exchange/archive_check.h"
#include "exchange/archive_notes.h"
#include "exchange/raw_zip.h"
#include "notes/note_builder.h"

// What the fuzz program starts from, and what it found, read once more. With LORE_WRITE_CORPUS set the seeds are
// written anew.

namespace lore {
namespace {

const std::filesystem::path kCorpus =
    std::filesystem::path(LORE_TEST_DATA).parent_path().parent_path() / "fuzz/corpus/archive";

RawEntry Entry(std::string name, std::string bytes, bool deflated) {
    RawEntry entry;
    entry.name = std::move(name);
    entry.bytes = std::move(bytes);
    entry.deflated = deflated;
    return entry;
}

std::string Records() {
    RecordWriter stream;
    WriteArchiveHead(stream, DateTime(2026, 1, 1), 2);
    for (const CNote& note : {DayNote(1), FullNote(2)})
        WriteArchiveNote(stream, {note, {}}, AuthorList());
    return stream.DiskBytes();
}

TEST(ArchiveCorpus, HoldsASeedOfEachKind) {
    RawEntry link = Entry("0000002.txt", "/etc/passwd", false);
    link.mode = 0120777;
    const std::pair<const char*, std::string> seeds[] = {
        {"stored", RawZip({Entry("_ExpNotes.dat", Records(), false), Entry("0000001.txt", "text", false)})},
        {"deflated", RawZip({Entry("_ExpNotes.dat", Records(), true), Entry("../0000001.txt", "text text", true)})},
        {"link", RawZip({Entry("_ExpNotes.dat", "", false), link})},
        {"empty", RawZip({})},
    };
    for (const auto& [name, bytes] : seeds) {
        if (std::getenv("LORE_WRITE_CORPUS")) {
            std::filesystem::create_directories(kCorpus);
            PutBytes(kCorpus / name, bytes);
        }
        EXPECT_EQ(BytesOf(kCorpus / name), bytes) << name;
    }
}

TEST(ArchiveCorpus, IsReadWithoutHarm) {
    const TempFolder folder(MemoryFolder());
    for (const auto& entry : std::filesystem::directory_iterator(kCorpus))
        EXPECT_EQ(CheckArchive(BytesOf(entry.path()), folder.Path()), "") << entry.path();
}

}  // namespace
}  // namespace lore
