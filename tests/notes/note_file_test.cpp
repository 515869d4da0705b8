#include "notes/note_file.h"

#include <gtest/gtest.h>

#include "notes/note_builder.h"
#include "support/note_reading.h"

namespace lore {
namespace {

std::vector<CNote> TwoNotes() {
    return {FullNote(5), FullNote(6)};
}

/// Reads bytes as a note file; the records that came out, in bytes.
std::vector<std::string> RecordsIn(const std::string& bytes, bool* damaged = nullptr) {
    ReadWorld world;
    NoteFileReader reader(world.context);
    reader.OpenBytes(bytes);
    std::vector<std::string> records;
    while (reader.Next())
        records.push_back(RecordOf(reader.TakeNote()));
    if (damaged)
        *damaged = reader.IsDamaged();
    return records;
}

TEST(NoteFile, OneReaderGoesFromFileToFileAndKeepsNothing) {
    TempFolder folder;
    PutBytes(folder / "long.dat", NoteFileBytes(TwoNotes()));
    PutBytes(folder / "cut.dat", NoteFileBytes(TwoNotes()).substr(0, 700));
    PutBytes(folder / "short.dat", NoteFileBytes({}));
    ReadWorld world;
    NoteFileReader reader(world.context);
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(reader.Open(folder / "long.dat").Ok());
        ASSERT_TRUE(reader.Next());
        EXPECT_EQ(RecordOf(reader.TakeNote()), RecordOf(FullNote(5)));
        EXPECT_TRUE(reader.Open(folder / "missing.dat").Missing());
        EXPECT_FALSE(reader.Next());
        EXPECT_FALSE(reader.IsDamaged());
        ASSERT_TRUE(reader.Open(folder / "cut.dat").Ok());
        while (reader.Next()) {
        }
        EXPECT_TRUE(reader.IsDamaged());
        ASSERT_TRUE(reader.Open(folder / "short.dat").Ok());
        EXPECT_FALSE(reader.Next());
        EXPECT_FALSE(reader.IsDamaged());
        EXPECT_EQ(reader.Count(), 0);
    }
}

TEST(NoteFile, CutAtEachByteKeepsWhatStandsBefore) {
    const std::vector<CNote> notes = TwoNotes();
    const std::string bytes = NoteFileBytes(notes);
    EXPECT_TRUE(bytes.starts_with("0000000011.5600000000000000000000002"));
    const size_t secondNote = NoteFileBytes({notes.data(), 1}).size();
    for (size_t length = 0; length < bytes.size(); ++length) {
        bool damaged = false;
        const std::vector<std::string> records = RecordsIn(bytes.substr(0, length), &damaged);
        ASSERT_LE(records.size(), 2u) << length;
        ASSERT_TRUE(damaged) << length;
        if (length >= secondNote) {
            ASSERT_FALSE(records.empty()) << length;
            ASSERT_EQ(records[0], RecordOf(notes[0])) << length;
        }
    }
    bool damaged = true;
    EXPECT_EQ(RecordsIn(bytes, &damaged).size(), 2u);
    EXPECT_FALSE(damaged);
    RecordsIn(bytes + "0", &damaged);
    EXPECT_TRUE(damaged);
}

TEST(NoteFile, CountThatIsTooLargeAddsNoNotes) {
    std::string bytes = NoteFileBytes(TwoNotes());
    bytes.replace(20, 16, "0000002000000000");
    EXPECT_EQ(RecordsIn(bytes).size(), 2u);
    bytes.replace(20, 16, "-000000000000001");
    EXPECT_TRUE(RecordsIn(bytes).empty());
}

TEST(NoteFile, ReaderShowsTheTextsAndTheNumberOfEachNoteThatHasAnId) {
    const std::vector<CNote> notes = {DayNote(0), FullNote(5), DayNote(-1), FullNote(6)};
    ReadWorld world;
    NoteFileReader reader(world.context);
    reader.OpenBytes(NoteFileBytes(notes));
    for (const int32_t id : {5, 6}) {
        ASSERT_TRUE(reader.Next());
        EXPECT_EQ(reader.Head().id, id);
        EXPECT_EQ(reader.NoteNumber(), static_cast<size_t>(id - 5));
        EXPECT_EQ(reader.PlainText(), FullNote(id).plainText);
        EXPECT_EQ(reader.RtfText(), FullNote(id).rtfText);
    }
    EXPECT_FALSE(reader.Next());
}

}  // namespace
}  // namespace lore
