#include "exchange/archive_notes.h"

#include <gtest/gtest.h>

#include "bibliography/source_builder.h"
#include "notes/note_builder.h"
#include "notes/note_record.h"

namespace lore {
namespace {

class ArchiveNotes : public testing::Test {
protected:
    ArchiveNotes() {
        sources_.AddTail(FullSource(1011));
        sources_.AddTail(FullSource(1012));
        sources_.AddTail(FullSource(1013));
    }
    std::string Written(const std::vector<ArchiveNote>& entries) const {
        RecordWriter stream;
        WriteArchiveHead(stream, DateTime(2012, 5, 6, 7, 8, 9), static_cast<int32_t>(entries.size()));
        for (const ArchiveNote& entry : entries)
            WriteArchiveNote(stream, entry, authors_);
        return stream.DiskBytes();
    }
    /// The same with the first one in front of the count.
    std::string Uncounted(const std::vector<ArchiveNote>& entries) const {
        RecordWriter stream;
        WriteFixedDouble(&stream, 11.56);
        WriteDateField(&stream, world_.context.now);
        for (const ArchiveNote& entry : entries) {
            WriteArchiveNote(stream, entry, authors_);
            if (&entry == &entries.front())
                WriteFixedInt(&stream, static_cast<int32_t>(entries.size()) - 1);
        }
        return stream.DiskBytes();
    }
    enum class Place { None, BeforeTheCount, Counted };
    /// An archive whose notes are plain records, with the sources note at a place.
    std::string Plain(const std::vector<CNote>& notes, Place place = Place::None, bool withSources = false) const {
        const ArchiveNote all = MakeSourcesNote(sources_, world_.context.now);
        RecordWriter stream, sources;
        WriteNote(&sources, all.note);
        if (withSources) {
            sources = {};
            WriteArchiveNote(sources, all, authors_);
        }
        WriteFixedDouble(&stream, 11.56);
        WriteDateField(&stream, DateTime(2012, 5, 6, 7, 8, 9));
        stream.Append(place == Place::BeforeTheCount ? sources.Logical() : "");
        WriteFixedInt(&stream, static_cast<int32_t>(notes.size()) + (place == Place::Counted ? 1 : 0));
        stream.Append(place == Place::Counted ? sources.Logical() : "");
        for (const CNote& note : notes)
            WriteNote(&stream, note);
        return stream.DiskBytes();
    }
    std::vector<ArchiveNote> ReadAll(const std::string& bytes) {
        reader_.OpenBytes(bytes);
        std::vector<ArchiveNote> entries;
        for (ArchiveNote entry; reader_.Next(entry);)
            entries.push_back(entry);
        return entries;
    }

    SourceList sources_;
    AuthorList authors_ = ThreeAuthors();
    ReadWorld world_;
    ArchiveNoteReader reader_{world_.context};
};

TEST_F(ArchiveNotes, TravelWithTheirSourcesAndTheAuthorsOfThese) {
    const CNote full = FullNote(7);
    CNote strange = SourceNote(8, {4711, 1012, 1012});
    const std::string bytes = Written({MakeArchiveNote(full, sources_), MakeArchiveNote(strange, sources_)});
    const std::vector<ArchiveNote> entries = ReadAll(bytes);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(reader_.Version(), 11.56);
    EXPECT_EQ(reader_.ExportDate(), DateTime(2012, 5, 6, 7, 8, 9));
    EXPECT_FALSE(reader_.SourcesNote());
    EXPECT_EQ(RecordOf(entries[0].note), RecordOf(full));
    ASSERT_EQ(entries[0].sources.size(), 2u);
    const CSource& source = entries[0].sources[1];
    EXPECT_EQ(source.SourceGUID, "{SOURCE 1013}");
    EXPECT_FALSE(source.FormattedText.empty()) << "formatted on the way out";
    ASSERT_EQ(source.EmbeddedAuthors.size(), 2u);
    EXPECT_EQ(source.EmbeddedAuthors[0].last, "Jones");
    EXPECT_EQ(source.CustomTypeCopy.name, "Letter");
    EXPECT_EQ(source.ModifiedDate, world_.context.nowUtc) << "the date of change stays at home";
    EXPECT_EQ(entries[1].note.sources, LongList{1012}) << "the records replace the ids";
    EXPECT_EQ(Written(entries).substr(0, 200), bytes.substr(0, 200));
    EXPECT_EQ(Written({entries[0]}), Written({MakeArchiveNote(full, sources_)}));
}

TEST_F(ArchiveNotes, WriteTheCountBehindTheDateAndSourcesBehindTheRecord) {
    RecordWriter record;
    WriteNote(&record, DayNote(5));
    RawRecord expected;
    expected.Real(11.56).Text("2012-05-06-07-08-09").Int(1).Raw(record.Logical()).Int(0);
    EXPECT_EQ(Written({MakeArchiveNote(DayNote(5), sources_)}), expected.Bytes());
}

TEST_F(ArchiveNotes, TakeTheSourcesNoteInBothPlaces) {
    const ArchiveNote all = MakeSourcesNote(sources_, world_.context.now);
    EXPECT_EQ(all.note.dateEdited, world_.context.now);
    const ArchiveNote note = MakeArchiveNote(FullNote(7), sources_);
    for (const std::string& bytes : {Written({all, note}), Uncounted({all, note})}) {
        const std::vector<ArchiveNote> entries = ReadAll(bytes);
        ASSERT_EQ(entries.size(), 1u);
        EXPECT_EQ(entries[0].note.id, 7);
        EXPECT_EQ(entries[0].sources.size(), 2u);
        ASSERT_TRUE(reader_.SourcesNote());
        EXPECT_EQ(reader_.SourcesNote()->note.id, kSourcesNoteID);
        EXPECT_EQ(reader_.SourcesNote()->sources.size(), 3u);
        EXPECT_EQ(reader_.SourcesNote()->note.sources, (LongList{1011, 1012, 1013}));
    }
}

TEST_F(ArchiveNotes, StandInOtherFilesAsPlainRecords) {
    CNote text = DayNote(3);
    text.rtfText = std::string(5000, 'x');  // read as what it isn't, it has room for many empty fields
    const std::vector<CNote> several[] = {{FullNote(7)}, {FullNote(7), DayNote(1), text}, {text, DayNote(2)}};
    for (const std::vector<CNote>& notes : several) {
        for (const Place place : {Place::None, Place::BeforeTheCount, Place::Counted}) {
            for (const bool withSources : {false, true}) {
                SCOPED_TRACE(testing::Message() << notes.size() << static_cast<int>(place) << withSources);
                ReadAll(Plain(notes, place, withSources));
                EXPECT_FALSE(reader_.IsWhole());
                const std::optional<PlainArchive> plain = reader_.ReadPlain();
                ASSERT_TRUE(plain);
                ASSERT_EQ(plain->notes.size(), notes.size());
                for (size_t i = 0; i < notes.size(); ++i) {
                    EXPECT_EQ(RecordOf(plain->notes[i].note), RecordOf(notes[i]));
                    EXPECT_TRUE(plain->notes[i].sources.empty());
                }
                ASSERT_EQ(plain->sourcesNote.has_value(), place != Place::None);
                if (plain->sourcesNote) {
                    EXPECT_EQ(plain->sourcesNote->sources.size(), withSources ? 3u : 0u);
                }
            }
        }
    }
    std::string later = Plain({DayNote(1)}), shortCount = later;
    later.replace(0, 20, "0000000011.560000001");
    for (const std::string& bytes : {later, Plain({}, Place::Counted)}) {
        ReadAll(bytes);
        EXPECT_FALSE(reader_.ReadPlain());
    }
    shortCount.replace(55, 16, "1\r\n");
    CNote undated = DayNote(4);
    undated.dateCreated = DateTime();
    for (const std::string& bytes : {shortCount, Plain({undated})}) {
        ReadAll(bytes);
        const std::optional<PlainArchive> plain = reader_.ReadPlain();
        ASSERT_TRUE(plain && plain->notes.size() == 1);
        EXPECT_FALSE(plain->notes[0].note.dateCreated.IsNull());
    }
}

TEST_F(ArchiveNotes, AreNoPlainRecordsIfTheyBreakOff) {
    const ArchiveNote all = MakeSourcesNote(sources_, world_.context.now);
    const ArchiveNote full = MakeArchiveNote(FullNote(7), sources_);
    CNote text = DayNote(1);  // as a number of sources, its id would leave the fields behind it in step
    text.rtfText = std::string(1500, 'x');
    const std::string archives[] = {Written({full, {text, {}}}), Written({{text, {}}, full, full}),
                                    Written({{DayNote(3), {}}, {text, {}}, {DayNote(2), {}}}),
                                    Written({all, {DayNote(2), {}}, {text, {}}}), Uncounted({all, full, {text, {}}})};
    for (const std::string& bytes : archives) {
        for (size_t size = 0; size < bytes.size(); ++size) {
            reader_.OpenBytes(bytes.substr(0, size));
            ASSERT_FALSE(reader_.ReadPlain()) << size << " of " << bytes.size();
        }
        ReadAll(bytes);
        EXPECT_TRUE(reader_.IsWhole());
        ReadAll(bytes + "0");
        EXPECT_FALSE(reader_.ReadPlain());
    }
    const std::string one = Written({full}), record = Plain({full.note});
    ASSERT_EQ(one.substr(0, record.size()), record);
    for (size_t size = 0; size < one.size(); ++size) {
        reader_.OpenBytes(one.substr(0, size));
        EXPECT_EQ(reader_.ReadPlain().has_value(), size == record.size()) << "the same bytes";
    }
}

TEST_F(ArchiveNotes, RefuseOnlyALaterVersion) {
    std::string bytes = Written({MakeArchiveNote(DayNote(9), sources_)});
    EXPECT_EQ(ReadAll(bytes).size(), 1u);
    bytes.replace(0, 20, "0000000011.560000001");
    EXPECT_TRUE(ReadAll(bytes).empty());
    EXPECT_TRUE(reader_.IsLaterVersion());
    EXPECT_EQ(reader_.Count(), 0) << "left unread";
    EXPECT_TRUE(reader_.Open("/nonexistent/_ExpNotes.dat").Missing());
    EXPECT_FALSE(reader_.IsLaterVersion() || reader_.ReadPlain());
    EXPECT_STREQ(reader_.DamageText(), "breaks off");
    EXPECT_TRUE(ReadAll("").empty());
}

TEST_F(ArchiveNotes, ReadRecordsOfAnOlderVersionByItsGates) {
    RawRecord old;
    old.Real(11.0).Text("2009-01-01-00-00-00").Int(1);
    old.Int(5).Ints({12, 0, -1}).Text("2009-01-02-03-04-05").Text("").Text("{G}").Text("keys").Text("").Int(2112);
    old.Int(0).Text("plain").Text("rtf").Ints({0, 0, 0});
    old.Int(1).Text("{S}").Int(12).Text("").Ints({1, 1, 3, 6}).Int(0).Int(0);
    old.Int(1).Int(0).Text("").Text("cited").Int(0);
    const std::vector<ArchiveNote> entries = ReadAll(old.Bytes());
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].note.rtfText, "rtf");
    EXPECT_EQ(entries[0].note.sources, LongList{12});
    ASSERT_EQ(entries[0].sources.size(), 1u);
    EXPECT_EQ(entries[0].sources[0].FormattedText, "cited");
    EXPECT_EQ(entries[0].sources[0].YearOnly, 1);
}

}  // namespace
}  // namespace lore
