#include "trust/record_kinds.h"

#include "bibliography/source_builder.h"
#include "bibliography/source_list.h"
#include "bibliography/source_record.h"
#include "calendar/event_file.h"
#include "calendar/event_text.h"
#include "calendar/reminder_file.h"
#include "calendar/series.h"
#include "calendar/series_text.h"
#include "calendar/shown_popups.h"
#include "classify/category_list.h"
#include "classify/old_category.h"
#include "exchange/archive_notes.h"
#include "notes/note_file.h"
#include "notes/notebook_list.h"
#include "notes/print_preview.h"
#include "notes/sync_log.h"
#include "support/note_reading.h"

namespace lore {

namespace {

using Path = std::filesystem::path;

/// A file of so many records that `write(stream)` writes behind its version and count.
template <typename Write>
std::string WithHead(int32_t count, Write write) {
    RecordWriter stream;
    WriteFixedDouble(&stream, kDataVersion);
    WriteFixedInt(&stream, count);
    write(stream);
    return stream.DiskBytes();
}

void CopyAuthors(const Path& file, const Path& copy, const ReadContext&) {
    AuthorList list;
    list.LoadAuthors(file);
    list.SaveAuthors(copy);
}

void CopySources(const Path& file, const Path& copy, const ReadContext& context) {
    SourceList list;
    list.LoadSources(file, context);
    PutBytes(copy, WithHead(static_cast<int32_t>(list.Count()), [&](RecordWriter& stream) {
                 for (const CSource& source : list)
                     WriteSource(&stream, source);
             }));
    list.SortSources(ThreeAuthors());
}

void CopyTypes(const Path& file, const Path& copy, const ReadContext& context) {
    CustomTypeList list;
    list.LoadTypes(file, context);
    list.LoadTypesUnsorted(file, context);
    list.SaveTypes(copy);
}

void CopyCategories(const Path& file, const Path& copy, const ReadContext&) {
    CProCategoryList list;
    list.Load(file);
    list.HighestID();
    list.Save(copy);
}

void CopyOldCategories(const Path& file, const Path& copy, const ReadContext&) {
    std::vector<CCategoryTree> trees;
    LoadEmptyCategories(file, trees);
    CProCategoryList list;
    for (const CCategoryTree& tree : trees) {
        CProCategoryTree chain;
        if (ChainFromOldPath(tree, chain))
            list.AddRoot(chain);
    }
    list.Save(copy);
}

void CopyNoteBooks(const Path& file, const Path& copy, const ReadContext& context) {
    std::vector<CDatabase> list;
    LoadDatabases(file, context, list);
    SaveDatabases(copy, list);
}

void CopyLastList(const Path& file, const Path& copy, const ReadContext&) {
    LongList list;
    LoadLongListFile(list, file);
    SaveLongListFile(list, copy);
}

void CopySyncLog(const Path& file, const Path& copy, const ReadContext&) {
    SyncLog log;
    LoadSyncLogFrom(file, log);
    SaveSyncLogTo(copy, log);
}

void CopyEvents(const Path& file, const Path& copy, const ReadContext& context) {
    const EventList list = LoadAllEvents(file, context).value;
    size_t dates = 0;
    for (const CTmEvent& event : list) {
        // A file of a thousand hostile series may hold a hundred million dates.
        if (dates < kMostOccurrences)
            dates += SeriesDates(event).dates.size();
        SeriesSummary(event);
        HoverText(event);
    }
    WriteEvents(copy, list);
}

void CopyReminders(const Path& file, const Path& copy, const ReadContext& context) {
    WriteReminders(copy, LoadAllReminders(file, context).value);
}

void CopyShown(const Path& file, const Path& copy, const ReadContext&) {
    ShownPopups shown;
    LoadShownPopups(file, shown);
    SaveShownPopups(copy, shown);
}

void CopyBibliography(const Path& file, const Path& copy, const ReadContext& context) {
    std::unique_ptr<RecordReader> stream;
    std::vector<CSource> sources;
    if (OpenRecordFile(file, stream).Ok()) {
        ReadFixedDouble(stream.get());
        ReadCounted(stream.get(), [&] { ReadBibliographySource(stream.get(), context, sources.emplace_back()); });
    }
    PutBytes(copy, WithHead(static_cast<int32_t>(sources.size()), [&](RecordWriter& out) {
                 for (const CSource& source : sources)
                     WriteBibliographySource(&out, source);
             }));
}

void CopyPreview(const Path& file, const Path& copy, const ReadContext& context) {
    const std::vector<PrintNote> notes = LoadPrintPreview(file, context).value.notes;
    PutBytes(copy, "");
    if (!notes.empty())
        SavePrintPreview(copy, notes);
}

void CopyArchive(const Path& file, const Path& copy, const ReadContext& context) {
    ArchiveNoteReader reader(context);
    reader.Open(file);
    std::vector<ArchiveNote> entries;
    for (ArchiveNote entry; reader.Next(entry);)
        entries.push_back(entry);
    if (reader.SourcesNote())
        entries.insert(entries.begin(), *reader.SourcesNote());
    RecordWriter stream;
    WriteArchiveHead(stream, reader.ExportDate(), static_cast<int32_t>(entries.size()));
    for (const ArchiveNote& entry : entries) {
        AuthorList authors;
        for (const CSource& source : entry.sources) {
            for (const CAuthor& author : source.EmbeddedAuthors)
                authors.AddAuthor(author);
        }
        WriteArchiveNote(stream, entry, authors);
    }
    PutBytes(copy, stream.DiskBytes());
}

void CopyNotes(const Path& file, const Path& copy, const ReadContext& context) {
    SaveNoteFile(copy, NotesOfFile(file, context));
}

}  // namespace

const std::vector<RecordKind>& RecordKinds() {
    static const std::vector<RecordKind> kinds = {
        {"authors", CopyAuthors, CopyAuthors, true},
        {"sources", CopySources, CopySources, true},
        {"sources_text_date", CopySources, CopySources, false},
        {"sources_oldest", CopySources, CopySources, false},
        {"types", CopyTypes, CopyTypes, true},
        {"categories", CopyCategories, CopyCategories, true},
        {"categories_old", CopyOldCategories, CopyCategories, false},
        {"notebooks", CopyNoteBooks, CopyNoteBooks, true},
        {"last_list", CopyLastList, CopyLastList, true},
        {"sync", CopySyncLog, CopySyncLog, true},
        {"events", CopyEvents, CopyEvents, true},
        {"reminders", CopyReminders, CopyReminders, true},
        {"bibliography", CopyBibliography, CopyBibliography, true},
        {"preview", CopyPreview, CopyPreview, true},
        {"archive", CopyArchive, nullptr, true},
        {"notes", CopyNotes, CopyNotes, true},
        {"notes_old", CopyNotes, CopyNotes, false},
        {"notes_first", CopyNotes, CopyNotes, false},
        {"shown", CopyShown, CopyShown, true},
    };
    return kinds;
}

}  // namespace lore
