#include "bibliography/source_record.h"

#include <gtest/gtest.h>

#include "bibliography/citation.h"
#include "bibliography/custom_type_list.h"
#include "bibliography/old_text_date.h"
#include "bibliography/source_builder.h"
#include "bibliography/source_list.h"
#include "support/raw_record.h"

namespace lore {
namespace {

/// Which parts of a record a version has, told apart from the reader's own constants.
struct Shape {
    double version;
    bool guid, body, date, modified, typed;
};

constexpr Shape kShapes[] = {
    {0.5, false, false, false, false, false},   {0.9500006, false, false, false, false, false},
    {0.951, true, false, false, false, false},  {0.9520007, true, false, false, false, false},
    {0.953, true, true, false, false, false},   {1.20005, true, true, false, false, false},
    {1.3, true, true, true, false, false},      {1.34, true, true, true, false, false},
    {1.35, true, true, true, true, false},      {9.99, true, true, true, true, false},
    {10.0, true, true, true, false, false},     {10.5, true, true, true, false, false},
    {11.16008, true, true, true, false, false}, {11.2, true, true, true, true, false},
    {11.24005, true, true, true, true, false},  {11.25, true, true, true, true, true},
    {11.56, true, true, true, true, true},
};

void WriteBodyFields(RecordWriter* out, const CSource& source) {
    for (const int32_t value : {source.FormatStyle, source.SourceType, source.IndentSpaces, source.AuthorsBeforeEtAl})
        WriteFixedInt(out, value);
    WriteLongList(out, source.AuthorIDs);
    WriteFixedInt(out, static_cast<int32_t>(source.FieldTexts.size()));
    for (const std::string& text : source.FieldTexts)
        WriteCountedString(out, text);
}

void WriteOfShape(RecordWriter* out, const CSource& source, const Shape& shape) {
    if (shape.guid)
        WriteCountedString(out, source.SourceGUID);
    WriteFixedInt(out, source.SourceID);
    WriteCountedString(out, source.AuthorText);
    if (shape.body)
        WriteBodyFields(out, source);
    else
        for (const char* text : {"5/7/1998", "Title", "Publisher", "Three", "Four"})
            WriteCountedString(out, text);
    if (shape.date) {
        WriteFixedInt(out, 1);
        WriteFixedInt(out, 1);
        WriteDateField(out, source.SourceDate);
    }
    if (shape.modified)
        WriteDateField(out, source.ModifiedDate);
    if (shape.typed) {
        WriteFixedInt(out, source.UseDateText);
        WriteCountedString(out, source.DateText);
        WriteCustomTypeBlock(out, source.CustomTypeCopy);
    }
}

SourceList LoadOfShape(const Shape& shape, const std::vector<CSource>& sources, const ReadContext& context) {
    TempFolder folder;
    RecordWriter out;
    WriteFixedDouble(&out, shape.version);
    WriteFixedInt(&out, static_cast<int32_t>(sources.size()));
    for (const CSource& source : sources)
        WriteOfShape(&out, source, shape);
    PutBytes(folder / "Sources.dat", out.DiskBytes());
    SourceList list;
    EXPECT_TRUE(list.LoadSources(folder / "Sources.dat", context).Ok());
    EXPECT_EQ(list.ReadWhole(), list.Count() == sources.size()) << "a source that was passed over is missing";
    return list;
}

TEST(SourceRecord, EveryVersionReadsItsFieldsAndDefaultsTheRest) {
    for (const Shape& shape : kShapes) {
        SCOPED_TRACE(shape.version);
        ReadWorld world;
        CSource first = FullSource(1011);
        first.FieldTexts[2] = "5/7/1998";
        const SourceList list = LoadOfShape(shape, {first, FullSource(1012)}, world.context);
        ASSERT_EQ(IdsOf(list), (std::vector<int32_t>{1011, 1012}));
        const CSource& source = list[0];
        EXPECT_EQ(source.SourceGUID, shape.guid ? "{SOURCE 1011}" : "{GUID 1}");
        EXPECT_EQ(source.FormatStyle, shape.body ? 9 : 1);
        EXPECT_EQ(source.AuthorIDs, shape.body ? (LongList{2, 1}) : LongList());
        EXPECT_EQ(source.FieldTexts.size(), shape.body ? 11u : 15u);
        EXPECT_EQ(source.FieldTexts[1], shape.body ? "Harbor Press" : "Publisher");
        EXPECT_EQ(source.FieldTexts[4], shape.body ? "4-5" : "Four");
        EXPECT_TRUE(source.HasDate);
        EXPECT_EQ(source.SourceDate, shape.date ? DateTime(1998, 5, 7, 1, 2, 3) : DateTime(1998, 5, 7));
        EXPECT_EQ(source.YearOnly, shape.date ? 1 : 0);
        EXPECT_EQ(source.ModifiedDate, shape.modified ? first.ModifiedDate : world.context.nowUtc);
        EXPECT_EQ(source.UseDateText, shape.typed ? 1 : 0);
        EXPECT_EQ(source.DateText, shape.typed ? "Spring 1998" : "");
        EXPECT_EQ(source.CustomTypeCopy.name, shape.typed ? "Letter" : "");
        EXPECT_EQ(source.CustomTypeCopy.fields.size(), shape.typed ? 2u : 4u);
    }
}

TEST(SourceRecord, AnEmptyGuidIsFilledAndARecordWithoutAnIdIsDropped) {
    ReadWorld world;
    CSource source = FullSource(3);
    source.SourceGUID.clear();
    const SourceList list = LoadOfShape(kShapes[16], {FullSource(-1), source, source, FullSource(0)}, world.context);
    EXPECT_EQ(Each(list, &CSource::SourceGUID), (std::vector<std::string>{"{GUID 1}", "{GUID 2}"}));
}

TEST(SourceRecord, MainFormHasItsFieldsInOrder) {
    ReadWorld world;
    CSource source = MakeSource(world.context);
    source.SourceID = 1011;
    source.SourceGUID = "G";
    source.AuthorIDs = {4};
    source.HasDate = true;
    source.FieldTexts = {"T"};
    source.CustomTypeCopy.fields.clear();
    EXPECT_EQ(RecordOf(source), RawRecord()
                                    .Add("G", 1011, "", 1, 1, 3, 6, 1, 4, 1, "T", 0, 2112, "2026-03-14-15-09-26")
                                    .Add("2026-03-14-14-09-26", 0, "", "", "", "2026-03-14-14-09-26", 0)
                                    .Bytes());
}

TEST(SourceRecord, OldTextDateIsReadAsAPersonWroteIt) {
    using Texts = std::vector<std::string>;
    const std::tuple<Texts, std::optional<DateTime>, int32_t> cases[] = {
        {{"1998", " 1998"}, DateTime(1998, 1, 1), 1},
        {{"1001"}, DateTime(1001, 1, 1), 1},
        {{"2999"}, DateTime(2999, 1, 1), 1},
        {{"5/7/1998", "05-07-1998"}, DateTime(1998, 5, 7), 0},
        {{"July 12, 2011", "12 jul. 2011"}, DateTime(2011, 7, 12), 0},
        {{"12-Sept-2011"}, DateTime(2011, 9, 12), 0},
        {{"May 1998"}, DateTime(1998, 5, 1), 0},
        {{"5/7/98", "05-07-98 10:11:12 PM", "May 7, 1998 9:05"}, DateTime(1998, 5, 7), 0},
        {{"5/7/29"}, DateTime(2029, 5, 7), 0},
        {{"5/7/30"}, DateTime(1930, 5, 7), 0},
        {{"1998-05-07", "2011/7/12"}, {}, 1},
        {{"1000", "3000", "2/30/1998", "13/1/1998", "5/98", "5/7/198", "5/7/19981", "10:11", "5/7/98 at 1:2"}, {}, 0},
        {{"May 1998 25:3-17, revised", "May 1998 99:", "5/7/98 1:2:3:4", "5/7/98 pm"}, {}, 0},
        {{"", "Ma 1998", "May", "May 5 6 1998", "n.d."}, {}, 0}};
    for (const auto& [texts, date, yearOnly] : cases) {
        for (const std::string& text : texts) {
            CSource source;
            source.FieldTexts[kDateSlot] = text;
            TakeOldTextDate(source);
            EXPECT_EQ(source.HasDate ? std::optional(source.SourceDate) : std::nullopt, date) << text;
            EXPECT_EQ(source.YearOnly, yearOnly) << text;
            EXPECT_EQ(source.FieldTexts[kDateSlot], text);
            EXPECT_EQ(HoldsUnreadDate(source), !date && !text.empty()) << text;
        }
    }
}

TEST(SourceRecord, ExportFormCarriesCitationAndAuthorsButNoModifiedDate) {
    ReadWorld world;
    CSource source = FullSource(1011);
    source.SourceType = 1;
    source.AuthorIDs = {2, 8, 1};
    RecordWriter out;
    WriteExportSource(&out, source, ThreeAuthors());
    EXPECT_EQ(source.FormattedText, "");
    CSource read;
    RecordReader in(out.DiskBytes());
    ReadExportSource(&in, kDataVersion, world.context, read);
    EXPECT_TRUE(in.AtEnd());
    EXPECT_FALSE(in.RanOut());
    FormatSource(source, ThreeAuthors());
    EXPECT_EQ(read.FormattedText, source.FormattedText);
    ASSERT_EQ(read.EmbeddedAuthors.size(), 2u);
    EXPECT_EQ(read.EmbeddedAuthors[0].last, "Jones");
    EXPECT_EQ(read.EmbeddedAuthors[1].middle, "Q");
    EXPECT_EQ(read.ModifiedDate, world.context.nowUtc);
    read.ModifiedDate = source.ModifiedDate;
    EXPECT_EQ(RecordOf(read), RecordOf(source));
}

TEST(SourceRecord, ExportFormOfOldVersionsHasTwoGatesOnly) {
    for (const double version : {0.9, 1.2, 1.3, 11.24005}) {
        SCOPED_TRACE(version);
        ReadWorld world;
        CSource source = FullSource(1011);
        source.FieldTexts[2] = "May 7, 1998";
        RecordWriter out;
        WriteCountedString(&out, source.SourceGUID);
        WriteFixedInt(&out, source.SourceID);
        WriteCountedString(&out, "Jones M.");
        WriteBodyFields(&out, source);
        if (version > 1.25) {
            WriteFixedInt(&out, 0);
            WriteFixedInt(&out, 2112);
            WriteDateField(&out, DateTime(1998, 5, 7));
        }
        WriteCountedString(&out, "The citation.");
        WriteAuthorRecords(&out, {Author(2, "Mary", "", "Jones")});
        RecordReader in(out.DiskBytes());
        CSource read;
        ReadExportSource(&in, version, world.context, read);
        EXPECT_TRUE(in.AtEnd());
        EXPECT_EQ(read.SourceDate, DateTime(1998, 5, 7));
        EXPECT_EQ(read.FormattedText, "The citation.");
        EXPECT_EQ(read.EmbeddedAuthors.at(0).last, "Jones");
        EXPECT_EQ(read.CustomTypeCopy.fields.size(), 4u);
    }
}

TEST(SourceFile, EveryCutKeepsTheWholeRecordsBeforeIt) {
    TempFolder folder;
    ReadWorld world;
    SourceList list;
    list.AddTail(FullSource(1011));
    list.AddTail(FullSource(1012));
    ASSERT_TRUE(list.SaveSources(folder / "a", ThreeAuthors()).Ok());
    const std::string bytes = BytesOf(folder / "a");
    const size_t second = bytes.find("{SOURCE 1012}") - 16;
    for (size_t cut = 0; cut < bytes.size(); ++cut) {
        PutBytes(folder / "b", bytes.substr(0, cut));
        SourceList read;
        EXPECT_TRUE(read.LoadSources(folder / "b", world.context).Ok());
        EXPECT_FALSE(read.ReadWhole()) << cut;
        EXPECT_LE(read.Count(), 2u);
        if (cut >= second) {
            EXPECT_EQ(RecordOf(read[0]), RecordOf(list[0])) << cut;
        }
    }
}

}  // namespace
}  // namespace lore
