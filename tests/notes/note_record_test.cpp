#include "notes/note_record.h"

#include <gtest/gtest.h>
#include <limits>

#include "notes/note_builder.h"

namespace lore {
namespace {

/// Which fields a record of a version holds.
struct Shape {
    double version;
    int sources;  // how many single ids; 0 for a list
    bool info, guid, spell, color, attachments, shift, type;
    int paths;  // how many paths in the old form; 0 for category records
};

// Every gate and the first version above it.
constexpr Shape kShapes[] = {
    {0.9, 1, false, false, false, false, false, false, false, 1},
    {0.9500005, 1, false, false, false, false, false, false, false, 1},
    {0.95000055, 1, false, false, false, false, true, false, false, 1},
    {0.9500006, 1, false, false, false, false, true, false, false, 1},
    {0.9500007, 1, false, true, false, false, true, false, false, 1},
    {0.9820005, 1, false, true, false, false, true, false, false, 1},
    {0.9820006, 1, false, true, false, false, true, true, false, 1},
    {1.020007, 1, false, true, false, false, true, true, false, 1},
    {1.020008, 1, false, true, false, false, true, true, true, 1},
    {1.100005, 1, false, true, false, false, true, true, true, 1},
    {1.100006, 1, false, true, true, false, true, true, true, 1},
    {10.860005, 1, false, true, true, false, true, true, true, 1},
    {10.860006, 1, false, true, true, false, true, true, true, 3},
    {10.91005, 1, false, true, true, false, true, true, true, 3},
    {10.91006, 3, false, true, true, false, true, true, true, 3},
    {11.35005, 3, false, true, true, false, true, true, true, 3},
    {11.36, 3, false, true, true, false, true, true, true, 0},
    {11.37021, 3, false, true, true, false, true, true, true, 0},
    {11.37022, 3, false, true, true, true, true, true, true, 0},
    {11.40011, 3, false, true, true, true, true, true, true, 0},
    {11.40012, 0, false, true, true, true, true, true, true, 0},
    {11.46005, 0, false, true, true, true, true, true, true, 0},
    {11.46006, 0, true, true, true, true, true, true, true, 0},
    {12.0, 0, true, true, true, true, true, true, true, 0},
};

void AddOldPath(RawRecord& raw, const std::string& first) {
    raw.Int(2).Int(1).Text("Below").Text(first).Int(0).Text(first).Text("<UNASSIGNED>");
}

std::string RecordIn(const Shape& shape) {
    RawRecord raw;
    raw.Int(7);
    if (shape.sources == 0)
        raw.Ints({4, 42, 0, -5, 43});
    else
        raw.Ints(shape.sources == 3 ? std::vector<int32_t>{42, 0, 43} : std::vector<int32_t>{42});
    if (shape.info)
        raw.Int(1).Text("{S}").Text("p. 3");
    raw.Text("2011-07-12-14-20-24").Text("2011-07-13-01-02-03");
    if (shape.guid)
        raw.Text("{N}");
    raw.Text("a, b").Text("reserved");
    if (shape.spell)
        raw.Int(0);
    if (shape.color)
        raw.Ints({255, 2, 1});
    if (shape.attachments) {
        raw.Int(1);
        if (shape.shift)
            raw.Int(-3);
        raw.Real(0.5).Text("Title").Text("C:\\x\\Data Files\\Attachments\\0000001.txt").Text("D:\\Notes.DOCX");
        if (shape.type)
            raw.Ints({2, 2112});
    }
    raw.Text("plain").Text("{\\rtf1 rich}");
    for (int path = 0; path < shape.paths; ++path)
        AddOldPath(raw, "Set " + std::to_string(path + 1));
    if (shape.paths == 0)
        raw.Int(5).Int(-1).Text("Top").Int(0).Int(-1).Int(-1).Text("").Int(0).Int(-1).Int(-1).Text("").Int(0);
    return raw.Bytes();
}

void ExpectNote(const CNote& note, const Shape& shape) {
    EXPECT_EQ(note.id, 7);
    EXPECT_EQ(note.sources, shape.sources == 1 ? LongList({42}) : LongList({42, 43}));
    EXPECT_EQ(note.sourceInfo.size(), shape.info ? 1u : 0u);
    EXPECT_EQ(note.dateCreated, DateTime(2011, 7, 12, 14, 20, 24));
    EXPECT_EQ(note.dateEdited, DateTime(2011, 7, 13, 1, 2, 3));
    EXPECT_EQ(note.guid, shape.guid ? "{N}" : "{GUID 1}");
    EXPECT_EQ(note.keyWords, "a, b");
    EXPECT_EQ(note.reserved, "reserved");
    EXPECT_EQ(note.spellCheck, !shape.spell);
    EXPECT_EQ(note.borderColor, shape.color ? MakeRgb(255, 2, 1) : 0u);
    ASSERT_EQ(note.attachments.size(), shape.attachments ? 1u : 0u);
    if (shape.attachments) {
        const CAttachment& attachment = note.attachments[0];
        EXPECT_EQ(attachment.shift, shape.shift ? -3 : 0);
        EXPECT_EQ(attachment.zoom, 0.5);
        EXPECT_EQ(attachment.storedFile, "0000001.txt");
        EXPECT_EQ(attachment.type, shape.type ? 2 : 3);
        EXPECT_TRUE(attachment.show);
    }
    EXPECT_EQ(note.plainText, "plain");
    EXPECT_EQ(note.rtfText, "{\\rtf1 rich}");
    for (size_t set = 0; set < kSetCount; ++set) {
        const CProCategoryTree& path = note.categories[set];
        if (shape.paths == 0) {
            EXPECT_EQ(path.name, set == 0 ? "Top" : "");
        } else if (static_cast<int>(set) < shape.paths) {
            EXPECT_EQ(path.name, "Set " + std::to_string(set + 1));
            ASSERT_EQ(path.children.size(), 1u);
            EXPECT_EQ(path.children[0].name, "Below");
            EXPECT_EQ(path.id, -1);
        } else {
            EXPECT_TRUE(path.IsEmptyPath());
        }
    }
}

TEST(NoteRecord, ReadsTheShapeOfEveryVersion) {
    for (const Shape& shape : kShapes) {
        SCOPED_TRACE(shape.version);
        ReadWorld world;
        RecordReader stream(RecordIn(shape) + "X");
        CNote note;
        note.keyWords = "left over";
        ReadNote(&stream, shape.version, world.context, note);
        ExpectNote(note, shape);
        EXPECT_EQ(stream.Rest(), "X");
        EXPECT_EQ(world.guids.Count(), shape.guid ? 0 : 1);
    }
}

TEST(NoteRecord, PlaceAloneStepsOverTheSameRecord) {
    for (const Shape& shape : kShapes) {
        SCOPED_TRACE(shape.version);
        ReadWorld world;
        RecordReader whole(RecordIn(shape)), stream("0000000000000009" + RecordIn(shape) + "X");
        CNote expected, note = FullNote(3);
        NoteTexts texts;
        ReadNote(&whole, shape.version, world.context, expected);
        const int guids = world.guids.Count();
        ReadFixedInt(&stream);
        ReadNoteHead(&stream, shape.version, world.context, note, texts, HeadParts::Place);
        EXPECT_EQ(note.id, expected.id);
        EXPECT_EQ(GetNoteFileName(note), GetNoteFileName(expected));
        EXPECT_EQ(texts.plainText, expected.plainText);
        EXPECT_EQ(texts.rtfText, expected.rtfText);
        EXPECT_EQ(stream.Rest(), "X");
        EXPECT_EQ(world.guids.Count(), guids) << "it needs no guid";
    }
}

TEST(NoteRecord, WritesTheFieldsInTheirPlaces) {
    CNote note = FullNote(5);
    note.sources = {8, 3, 8};
    const std::string expected =
        RawRecord()
            .Add(5, 2, 8, 3, 2, "{S1}", "p. 7", "{S3}", "", "2011-07-12-14-20-24", "2012-01-02-03-04-05", note.guid)
            .Add(note.keyWords, "kept", 0, 255, 128, 1, 2, -12, 1.25, "A lamp", "0000001.png", "C:\\Pictures\\lamp.png",
                 1)
            .Add(2112, 0, 1.0, "Site", "", "http://example.org", 12, 0, note.plainText, note.rtfText)
            .Add(3, -1, "Lights", 1, 4, 3, "Lenses", 0, -1, -1, "", 0, 9, -1, "Places", 0)
            .Bytes();
    RecordWriter writer;
    WriteNote(&writer, note);
    EXPECT_EQ(writer.DiskBytes(), expected);
}

TEST(NoteRecord, TextsOverTheWritingLimitAreReadWholeAndDatesThatDoNotReadAreTheMomentOfReading) {
    CNote note = FullNote(5);
    note.dateCreated = DateTime();
    note.dateEdited = DateTime::Invalid();
    note.rtfText = std::string(kMaxStringLength + 7, 'x');
    RecordWriter writer;
    WriteNote(&writer, note);
    RecordReader stream(writer.DiskBytes());
    ReadWorld world;
    CNote read;
    ReadNote(&stream, kDataVersion, world.context, read);
    EXPECT_EQ(read.dateCreated, world.context.now);
    EXPECT_EQ(read.dateEdited, world.context.now);
    EXPECT_EQ(read.rtfText, note.rtfText);
    EXPECT_EQ(read.categories[2].name, "Places");
}

TEST(NoteRecord, AZoomThatItsFieldCannotHoldIsOne) {
    const std::pair<const char*, double> cases[] = {{"0100000000.000000000", 1e8},
                                                    {"9999999999.999998093", 9999999999.999998093},
                                                    {"10000000000.00000000", 1.0},
                                                    {"99999999999999999999", 1.0},
                                                    {"1e300\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 1.0},
                                                    {"-999999999.999999881", -999999999.999999881},
                                                    {"-1000000000.00000000", 1.0}};
    ReadWorld world;
    const std::string record = RecordOf(FullNote(5)), field = "0000000001.250000000";
    for (const auto& [digits, zoom] : cases) {
        std::string damaged = record;
        damaged.replace(record.find(field), field.size(), digits, field.size());
        NoteFileReader reader(world.context);
        reader.OpenBytes(damaged);
        ASSERT_TRUE(reader.Next());
        const CNote note = reader.TakeNote();
        EXPECT_EQ(note.attachments.at(0).zoom, zoom) << digits;
        EXPECT_EQ(RecordOf(note).size(), record.size()) << digits;
    }
    for (const double zoom : {1e10, -1e9, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
        CNote note = FullNote(5);
        note.attachments[0].zoom = zoom;
        EXPECT_EQ(RecordOf(note).size(), record.size()) << zoom;
    }
}

TEST(NoteRecord, FileNameFollowsTheFirstSourceOrTheDay) {
    CNote invalid = DayNote(1);
    invalid.dateCreated = DateTime::Invalid();
    CNote made = DayNote(1);
    made.dateCreated = DateTime(2011, 7, 12, 23, 59, 59);
    made.dateEdited = DateTime(2020, 1, 1);
    EXPECT_EQ(GetNoteFileName(made), "DAY07122011.dat");
    EXPECT_EQ(GetNoteFileName(invalid), "DAYInvalid DateTime.dat");
    EXPECT_EQ(GetNoteFileName(SourceNote(1, {42, 7})), "SRC0000000042.dat");
    EXPECT_EQ(GetNoteFileName(SourceNote(1, {2147483647})), "SRC2147483647.dat");
}

TEST(NoteRecord, WithoutAStreamOnlyDefaultsRemain) {
    ReadWorld world;
    CNote note = FullNote(5);
    ReadNote(nullptr, kDataVersion, world.context, note);
    EXPECT_LE(note.id, 0);
    EXPECT_TRUE(note.rtfText.empty());
    WriteNote(nullptr, note);
}

}  // namespace
}  // namespace lore
