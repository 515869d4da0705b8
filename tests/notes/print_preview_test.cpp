#include "notes/print_preview.h"

#include <gtest/gtest.h>

#include "bibliography/source_builder.h"
#include "notes/note_builder.h"
#include "support/note_reading.h"

namespace lore {
namespace {

TEST(PrintPreview, HoldsTheNotesWithTheirFormattedSources) {
    TempFolder folder;
    ReadWorld world;
    PrintNote entry;
    entry.note = FullNote(5);
    entry.sources.push_back(CitationOnly(1011, "Ames, A. Lamps."));
    entry.sources[0].SourceGUID = "{S1}";
    entry.sources[0].SpanKinds = {1};
    entry.sources[0].SpanStarts = {9};
    entry.sources[0].SpanEnds = {14};
    const std::vector<PrintNote> notes = {entry, {DayNote(6), {}}};
    ASSERT_TRUE(SavePrintPreview(folder / "PrintPreview.nbf", notes).Ok());
    const std::string bytes = BytesOf(folder / "PrintPreview.nbf");
    EXPECT_TRUE(bytes.starts_with("000000000000000511.560000000000000002"));

    const Loaded<PrintPreview> preview = LoadPrintPreview(folder / "PrintPreview.nbf", world.context);
    ASSERT_TRUE(preview.ReadWhole());
    EXPECT_EQ(preview.value.version, "11.56");
    const std::vector<PrintNote>& read = preview.value.notes;
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(RecordOf(read[0].note), RecordOf(entry.note));
    ASSERT_EQ(read[0].sources.size(), 1u);
    EXPECT_EQ(read[0].sources[0].FormattedText, "Ames, A. Lamps.");
    EXPECT_EQ(read[0].sources[0].SpanEnds, LongList({14}));
    EXPECT_TRUE(read[1].sources.empty());
    ASSERT_TRUE(SavePrintPreview(folder / "again.nbf", read).Ok());
    EXPECT_EQ(BytesOf(folder / "again.nbf"), bytes);
}

TEST(PrintPreview, ShortFilesGiveNoEmptyNotesAndNoEmptySources) {
    TempFolder folder;
    ReadWorld world;
    SavePrintPreview(folder / "PrintPreview.nbf", {{FullNote(5), {CitationOnly(0, "dropped")}}, {FullNote(6), {}}});
    const std::string bytes = BytesOf(folder / "PrintPreview.nbf");
    for (size_t length = 0; length < bytes.size(); ++length) {
        PutBytes(folder / "cut.nbf", bytes.substr(0, length));
        const std::vector<PrintNote> read = LoadPrintPreview(folder / "cut.nbf", world.context).value.notes;
        ASSERT_LE(read.size(), 2u);
        for (const PrintNote& note : read)
            ASSERT_TRUE(note.sources.empty());
    }
}

}  // namespace
}  // namespace lore
