#include "trust/record_samples.h"

#include "bibliography/source_builder.h"
#include "bibliography/source_list.h"
#include "calendar/event_builder.h"
#include "calendar/event_file.h"
#include "calendar/reminder_file.h"
#include "calendar/shown_popups.h"
#include "classify/category_list.h"
#include "exchange/archive_notes.h"
#include "notes/note_builder.h"
#include "notes/notebook_list.h"
#include "notes/print_preview.h"
#include "notes/sync_log.h"
#include "support/note_reading.h"

namespace lore {

namespace {

std::vector<CSource> SampleSources() {
    CSource plain = FullSource(1013);
    plain.SourceType = 1;
    plain.FormatStyle = 9;
    plain.UseDateText = 0;
    return {FullSource(1011), plain};
}

RawRecord& AddOldPath(RawRecord& file) {
    return file.Int(2).Int(0).Text("Lights").Text("<UNASSIGNED>").Int(1).Text("Lenses").Text("Lights");
}

CTmReminder SampleReminder(const std::string& id) {
    CTmReminder reminder;
    reminder.Type = 2;
    reminder.ServerId = 5;
    reminder.ServerDone = true;
    reminder.SendTime = reminder.ServerSendTime = reminder.EventStart = Day(2011, 5, 6, 7, 8, 9);
    reminder.ReminderId = id;
    reminder.SendTo = reminder.EmailAddress = reminder.PhoneNumber = "5551234567";
    reminder.EventId = "{E}";
    reminder.Message = "Bring\nlamp";
    reminder.EventLabel = reminder.EventDescription = "Class";
    return reminder;
}

CSource CitedSource(int32_t id) {
    CSource source = FullSource(id);
    source.FormattedText = "Smith, J. The Light. 1998.";
    source.SpanKinds = {1, 2};
    source.SpanStarts = {0, 10};
    source.SpanEnds = {5, 15};
    return source;
}

SourceList ListOf(const std::vector<CSource>& sources) {
    SourceList list;
    for (const CSource& source : sources)
        list.AddTail(source);
    return list;
}

}  // namespace

AuthorList SampleAuthors() {
    AuthorList authors = ThreeAuthors();
    authors.AddAuthor({7, "Ann\nMarie", "B", "M\xFCller", "reserved", "text"});
    return authors;
}

std::string AuthorSample() {
    const AuthorList authors = SampleAuthors();
    RecordWriter stream;
    WriteFixedDouble(&stream, kDataVersion);
    WriteAuthorRecords(&stream, {authors.begin(), authors.end()});
    return stream.DiskBytes();
}

std::string SourceSample() {
    return WithHead(2, [](RecordWriter& stream) {
        for (const CSource& source : SampleSources())
            WriteSource(&stream, source);
    });
}

/// Ends behind the slots: the date stands in slot 2.
std::string TextDateSourceSample() {
    RawRecord file;
    file.Real(1.1).Int(2);
    for (const char* date : {"July 12, 1998", "1887"}) {
        file.Text("{S}").Int(1011).Text("Smith, J.").Ints({1, 3, 3, 6, 2, 2, 1, 15}).Text("Title\nLine").Text("Press");
        file.Text(date);
        for (int slot = 3; slot < 15; ++slot)
            file.Text("slot");
    }
    return file.Bytes();
}

std::string OldestSourceSample() {
    RawRecord file;
    file.Real(0.95).Int(2);
    for (const int32_t id : {5, 6})
        file.Int(id).Text("Smith, J.").Text("5/12/1998").Text("Title").Text("Press").Text("3").Text("4-5");
    return file.Bytes();
}

std::string TypeSample() {
    return WithHead(2, [](RecordWriter& stream) {
        WriteCustomTypeBlock(&stream, FullSource(1).CustomTypeCopy);
        CCustomSourceType type = MakeCustomType(DateTime(2010, 1, 1));
        type.GUID = "{T2}";
        type.name = "Logbook";
        WriteCustomTypeBlock(&stream, type);
    });
}

std::string CategorySample() {
    CProCategoryList forest;
    forest.AddRoot(PathOf({{3, "Lights"}, {4, "Lenses"}, {5, "Fresnel"}}));
    forest.AddRoot(CProCategoryTree(kUnassignedID, kUnassignedName));
    forest.EditRoots()[0].children.emplace_back(9, "Keepers");
    forest.LinkAll();
    RecordWriter stream;
    forest.Write(&stream);
    return stream.DiskBytes();
}

std::string OldCategorySample() {
    RawRecord file;
    file.Real(11.2).Int(3);
    AddOldPath(file);
    AddOldPath(file.Int(0));
    return file.Bytes();
}

std::string NoteBookSample() {
    const TempFolder folder(MemoryFolder());
    SaveDatabases(folder / "sample", {{2113, 0, "Lighthouses", "DB00005", "", DateTime(2011, 1, 2), "{N1}"},
                                      {2114, 0, "Ships", "DB00009", "/backup/[ships]", DateTime(2012, 1, 2), "{N2}"}});
    return BytesOf(folder / "sample");
}

std::string LastListSample() {
    RecordWriter stream;
    WriteLongList(&stream, {5, 3, 3, 2147483647, 8, 1, 0, -1});
    return stream.DiskBytes();
}

std::string SyncSample() {
    SyncLog log;
    const DateTime date(2011, 7, 12, 14, 20, 24);
    log.link = {kStoredTrue, 12, "Online name", "Desktop name", date, "{N1}"};
    for (const int32_t id : {1, 2, 3})
        log.Add({id, kStoredTrue, id + 100, id == 2, "{G" + std::to_string(id) + "}", "SRC0000000001.dat", date, date,
                 DateTime(), date, date});
    const TempFolder folder(MemoryFolder());
    SaveSyncLogTo(folder / "sample", log);
    return BytesOf(folder / "sample");
}

std::string EventSample() {
    EventList events = {Series(kDaily, {1, 0, 2}, Day(2011, 1, 3), Day(2011, 4, 9)),
                        Series(kWeekly, {2, 0, 1, 0, 0, 0, 1, 0}, Day(2011, 1, 3), Day(2011, 3, 3)),
                        Series(kMonthly, {0, 1, 15, 1, 4, 5, 1}, Day(2011, 1, 3), Day(2012, 3, 3)),
                        Series(kYearly, {1, 0, 2, 20, 0, 0, 0}, Day(2011, 1, 3), Day(2019, 3, 3))};
    for (CTmEvent& event : events)
        event.Description = "A description with\nlines and more than fifty columns of words";
    RecordWriter stream;
    WriteEvents(stream, events);
    return stream.DiskBytes();
}

std::string ReminderSample() {
    RecordWriter stream;
    WriteReminders(stream, {SampleReminder("{R1}"), SampleReminder("{R2}"), SampleReminder("{R3}")});
    return stream.DiskBytes();
}

std::string ShownSample() {
    ShownPopups shown;
    for (int i = 0; i < 12; ++i) {
        const DateTime time = DateTime(2011, 5, 6, 7, 8, 9).PlusDays(i);
        shown[{"{R" + std::to_string(i) + "}", time.Seconds()}] = i % 3 == 0 ? time.PlusSeconds(600) : DateTime();
    }
    const TempFolder folder(MemoryFolder());
    SaveShownPopups(folder / "sample", shown);
    return BytesOf(folder / "sample");
}

std::string BibliographySample() {
    return WithHead(2, [](RecordWriter& stream) {
        WriteBibliographySource(&stream, CitedSource(1011));
        WriteBibliographySource(&stream, CitedSource(1012));
    });
}

std::string PreviewSample() {
    const TempFolder folder(MemoryFolder());
    SavePrintPreview(folder / "sample", {{FullNote(7), {CitedSource(1011)}}, {DayNote(8), {}}});
    return BytesOf(folder / "sample");
}

std::string ArchiveSample() {
    const SourceList sources = ListOf(SampleSources());
    CNote note = FullNote(7);
    note.sources = {1013};
    RecordWriter stream;
    WriteArchiveHead(stream, DateTime(2012, 1, 2), 2);
    WriteArchiveNote(stream, MakeSourcesNote(ListOf({FullSource(1011)}), DateTime(2012, 1, 2)), SampleAuthors());
    WriteArchiveNote(stream, MakeArchiveNote(note, sources), SampleAuthors());
    return stream.DiskBytes();
}

std::string NoteSample() {
    const std::vector<CNote> notes = {FullNote(7), DayNote(8)};
    return NoteFileBytes(notes);
}

std::string OldNoteSample() {
    RawRecord file;
    file.Real(11.3).Int(2);
    for (const int32_t id : {7, 8}) {
        file.Int(id).Ints({1011, 0, 1013}).Text("2009-01-02-03-04-05").Text("2009-01-02-03-04-06").Text("{G}");
        file.Text("keys").Text("").Int(2112);
        file.Int(1).Int(-5).Real(1.5).Text("A lamp").Text("C:\\Data Files\\lamp.png").Text("lamp.png").Int(1).Int(1);
        file.Text("plain\r\ntext").Text("{\\rtf1 plain\\par text}");
        for (int set = 0; set < 3; ++set)
            AddOldPath(file);
    }
    return file.Bytes();
}

std::string FirstNoteSample() {
    RawRecord file;
    file.Real(0.9).Int(2);
    for (const int32_t id : {7, 8}) {
        file.Int(id).Int(12).Text("2005-01-02-03-04-05").Text("2005-01-02-03-04-06").Text("keys").Text("");
        AddOldPath(file.Text("plain").Text("{\\rtf1 plain}"));
    }
    return file.Bytes();
}

}  // namespace lore
