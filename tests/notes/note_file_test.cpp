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

TEST(NoteFile, ReadAndWrittenUnchangedIsEqualByteForByte) {
    TempFolder folder;
    const std::string bytes = NoteFileBytes(TwoNotes());
    EXPECT_TRUE(bytes.starts_with("0000000011.5600000000000000000000002"));
    PutBytes(folder / "a.dat", bytes);
    ReadWorld world;
    const std::vector<CNote> notes = NotesOfFile(folder / "a.dat", world.context);
    ASSERT_EQ(notes.size(), 2u);
    ASSERT_TRUE(SaveNoteFile(folder / "b.dat", notes).Ok());
    EXPECT_EQ(BytesOf(folder / "b.dat"), bytes);
}

TEST(NoteFile, OldFileIsSavedInTheCurrentShape) {
    TempFolder folder;
    RawRecord raw;
    raw.Real(0.9).Int(1).Ints({7, 42}).Text("2011-07-12-14-20-24").Text("2011-07-13-01-02-03").Text("a").Text("r");
    raw.Text("plain").Text("rich").Int(1).Int(0).Text("Old").Text("");
    PutBytes(folder / "a.dat", raw.Bytes());
    ReadWorld world;
    const std::vector<CNote> notes = NotesOfFile(folder / "a.dat", world.context);
    ASSERT_EQ(notes.size(), 1u);
    ASSERT_TRUE(SaveNoteFile(folder / "a.dat", notes).Ok());
    const std::vector<CNote> again = NotesOfFile(folder / "a.dat", world.context);
    ASSERT_EQ(again.size(), 1u);
    EXPECT_EQ(RecordOf(again[0]), RecordOf(notes[0]));
    EXPECT_EQ(again[0].guid, "{GUID 1}");
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

TEST(NoteFile, RecordsWithoutAnIdAreDropped) {
    std::vector<CNote> notes = {FullNote(5), FullNote(0), FullNote(-1), FullNote(6)};
    notes[1].id = 0;
    notes[2].id = -1;
    const std::vector<std::string> records = RecordsIn(NoteFileBytes(notes));
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[1], RecordOf(FullNote(6)));
}

TEST(NoteFile, MissingFileHasNoNotes) {
    TempFolder folder;
    ReadWorld world;
    NoteFileReader reader(world.context);
    EXPECT_TRUE(reader.Open(folder / "none.dat").Missing());
    EXPECT_FALSE(reader.Next());
    EXPECT_FALSE(reader.IsDamaged());
}

TEST(NoteFile, CutAtEachByteKeepsWhatStandsBefore) {
    const std::vector<CNote> notes = TwoNotes();
    const std::string bytes = NoteFileBytes(notes);
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

TEST(NoteFile, ReaderShowsTheTextsAndTheNumberOfEachNote) {
    std::vector<CNote> notes = TwoNotes();
    notes.insert(notes.begin(), DayNote(0));
    notes[0].id = 0;
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
