#include "bibliography/source_record.h"

#include "bibliography/citation.h"
#include "bibliography/custom_type_list.h"
#include "bibliography/old_text_date.h"

namespace lore {

// A source record begins the same way in all three forms:
//
//   head
//     CountedString  SourceGUID           above 0.9500006
//     FixedInt       SourceID
//     CountedString  AuthorText
//   body, above 0.9520007
//     FixedInt       FormatStyle, SourceType, IndentSpaces, AuthorsBeforeEtAl
//     LongList       AuthorIDs
//     FixedInt       number of slots, then that many CountedString: FieldTexts
//   oldest body, up to 0.9520007
//     CountedString  five times: the slots 2, 0, 1, 3, 4
//
// main form: head, body,
//   date             above 1.20005; otherwise slot 2 holds the date as text, and the record ends
//     FixedInt       YearOnly
//     FixedInt       HasDate: 2112 or 0
//     DateField      SourceDate
//   DateField        ModifiedDate         above 1.34 and below 10.0, and again above 11.16008
//   typed date       above 11.24005
//     FixedInt       UseDateText
//     CountedString  DateText
//   type             above 11.24005: CustomTypeCopy, as in SourceTypes.dat
//
// export form: head, body without regard to the version, date (with the gate of the main form),
//   CountedString    FormattedText
//   authors          EmbeddedAuthors, as in Authors.dat behind its version
//   typed date, type (with the gate of the main form)
//
// bibliography form: head, body,
//   CountedString    FormattedText
//   LongList         SpanKinds, SpanStarts, SpanEnds

namespace {

// Versions above which a field stands in the record. On disk; never change.
constexpr double kGuidSince = 0.9500006;
constexpr double kBodySince = 0.9520007;
constexpr double kDateSince = 1.20005;
constexpr double kModifiedDateSince = 1.34;
constexpr double kSecondSeries = 10.0;  ///< from here on the versions were counted anew
constexpr double kModifiedDateAgainSince = 11.16008;
constexpr double kTypedDateSince = 11.24005;

constexpr size_t kOldestSlots[] = {2, 0, 1, 3, 4};

void ReadHead(RecordReader* stream, double version, const ReadContext& context, CSource& source) {
    if (version > kGuidSince)
        ReadCountedString(stream, source.SourceGUID);
    if (source.SourceGUID.empty())
        source.SourceGUID = context.guids->NewGuid();
    ReadFixedInt(stream, source.SourceID);
    ReadCountedString(stream, source.AuthorText);
}

void WriteHead(RecordWriter* stream, const CSource& source) {
    WriteCountedString(stream, source.SourceGUID);
    WriteFixedInt(stream, source.SourceID);
    WriteCountedString(stream, source.AuthorText);
}

void ReadBody(RecordReader* stream, CSource& source) {
    ReadFixedInt(stream, source.FormatStyle);
    ReadFixedInt(stream, source.SourceType);
    ReadFixedInt(stream, source.IndentSpaces);
    ReadFixedInt(stream, source.AuthorsBeforeEtAl);
    ReadLongList(stream, source.AuthorIDs);
    source.FieldTexts.clear();
    ReadCounted(stream, [&] { source.FieldTexts.push_back(ReadCountedString(stream)); });
}

void WriteBody(RecordWriter* stream, const CSource& source) {
    WriteFixedInt(stream, source.FormatStyle);
    WriteFixedInt(stream, source.SourceType);
    WriteFixedInt(stream, source.IndentSpaces);
    WriteFixedInt(stream, source.AuthorsBeforeEtAl);
    WriteLongList(stream, source.AuthorIDs);
    WriteFixedInt(stream, static_cast<int32_t>(source.FieldTexts.size()));
    for (const std::string& text : source.FieldTexts)
        WriteCountedString(stream, text);
}

void ReadOldestBody(RecordReader* stream, CSource& source) {
    for (const size_t slot : kOldestSlots)
        ReadCountedString(stream, source.FieldTexts[slot]);
}

void ReadDate(RecordReader* stream, CSource& source) {
    ReadFixedInt(stream, source.YearOnly);
    source.HasDate = ReadStoredBool(stream);
    ReadDateField(stream, source.SourceDate);
}

void WriteDate(RecordWriter* stream, const CSource& source) {
    WriteFixedInt(stream, source.YearOnly);
    WriteStoredBool(stream, source.HasDate);
    WriteDateField(stream, source.SourceDate);
}

void ReadTypedDateAndType(RecordReader* stream, const ReadContext& context, CSource& source) {
    ReadFixedInt(stream, source.UseDateText);
    ReadCountedString(stream, source.DateText);
    ReadCustomTypeBlock(stream, context, source.CustomTypeCopy);
}

void WriteTypedDateAndType(RecordWriter* stream, const CSource& source) {
    WriteFixedInt(stream, source.UseDateText);
    WriteCountedString(stream, source.DateText);
    WriteCustomTypeBlock(stream, source.CustomTypeCopy);
}

bool HasModifiedDate(double version) {
    return version > (version < kSecondSeries ? kModifiedDateSince : kModifiedDateAgainSince);
}

}  // namespace

CSource MakeSource(const ReadContext& context) {
    CSource source;
    source.SourceDate = context.now;
    source.CustomTypeCopy = MakeCustomType(context.nowUtc);
    source.ModifiedDate = context.nowUtc;
    return source;
}

bool HasTextDates(double version) {
    return version <= kDateSince;
}

void ReadSource(RecordReader* stream, double version, const ReadContext& context, CSource& source) {
    source = MakeSource(context);
    ReadHead(stream, version, context, source);
    if (version > kBodySince)
        ReadBody(stream, source);
    else
        ReadOldestBody(stream, source);
    if (HasTextDates(version))
        TakeOldTextDate(source);
    else
        ReadDate(stream, source);
    if (HasModifiedDate(version))
        ReadDateField(stream, source.ModifiedDate);
    if (version > kTypedDateSince)
        ReadTypedDateAndType(stream, context, source);
}

void WriteSource(RecordWriter* stream, const CSource& source) {
    WriteHead(stream, source);
    WriteBody(stream, source);
    WriteDate(stream, source);
    WriteDateField(stream, source.ModifiedDate);
    WriteTypedDateAndType(stream, source);
}

void ReadExportSource(RecordReader* stream, double version, const ReadContext& context, CSource& source) {
    source = MakeSource(context);
    ReadHead(stream, kDataVersion, context, source);
    ReadBody(stream, source);
    if (HasTextDates(version))
        TakeOldTextDate(source);
    else
        ReadDate(stream, source);
    ReadCountedString(stream, source.FormattedText);
    ReadAuthorRecords(stream, source.EmbeddedAuthors);
    if (version > kTypedDateSince)
        ReadTypedDateAndType(stream, context, source);
}

void WriteExportSource(RecordWriter* stream, const CSource& source, const AuthorList& authors) {
    CSource copy = source;
    FormatSource(copy, authors);
    copy.EmbeddedAuthors.clear();
    for (const int32_t id : copy.AuthorIDs) {
        if (const CAuthor* author = authors.FindAuthorByID(id))
            copy.EmbeddedAuthors.push_back(*author);
    }
    WriteHead(stream, copy);
    WriteBody(stream, copy);
    WriteDate(stream, copy);
    WriteCountedString(stream, copy.FormattedText);
    WriteAuthorRecords(stream, copy.EmbeddedAuthors);
    WriteTypedDateAndType(stream, copy);
}

void ReadBibliographySource(RecordReader* stream, const ReadContext& context, CSource& source) {
    source = MakeSource(context);
    ReadHead(stream, kDataVersion, context, source);
    ReadBody(stream, source);
    ReadCountedString(stream, source.FormattedText);
    for (LongList* spans : {&source.SpanKinds, &source.SpanStarts, &source.SpanEnds})
        ReadLongList(stream, *spans);
}

void WriteBibliographySource(RecordWriter* stream, const CSource& source) {
    WriteHead(stream, source);
    WriteBody(stream, source);
    WriteCountedString(stream, source.FormattedText);
    for (const LongList* spans : {&source.SpanKinds, &source.SpanStarts, &source.SpanEnds})
        WriteLongList(stream, *spans);
}

}  // namespace lore
