#include <CLI/CLI.hpp>

#include "base/text.h"
#include "bibliography/source_record.h"
#include "calendar/event_file.h"
#include "calendar/reminder_file.h"
#include "classify/category_record.h"
#include "cli/bibliography_data.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "exchange/archive_notes.h"
#include "notes/note_file.h"
#include "notes/print_preview.h"

namespace lore {

namespace {

struct Dump {
    Json version = nullptr;
    Json records = Json::array();
    Json extra = Json::object();  ///< further keys of the document
    std::string damage;           ///< what is wrong with the file, after "it"; empty if nothing is known to be
};

using Path = std::filesystem::path;

FileResult DumpNotes(const Path& path, const ReadContext& context, Dump& dump) {
    NoteFileReader reader(context);
    const FileResult result = reader.Open(path);
    while (result.Ok() && reader.Next())
        dump.records.push_back(JsonNoteRecord(reader.TakeNote()));
    dump.version = reader.Version();
    if (result.Ok() && reader.IsDamaged())
        dump.damage = reader.DamageText();
    return result;
}

/// For the readers that don't tell whether a file breaks off.
void KeepDamage(const RecordFileState& state, Dump& dump) {
    if (!state.isWhole)
        dump.damage = state.lacksID ? kRecordWithoutNumber : "breaks off, or holds more than its records";
}

FileResult DumpAuthors(const Path& path, const ReadContext&, Dump& dump) {
    AuthorList authors;
    const FileResult result = authors.LoadAuthors(path);
    for (const CAuthor& author : authors)
        dump.records.push_back(JsonAuthor(author));
    dump.version = authors.Version();
    KeepDamage(authors.State(), dump);
    return result;
}

FileResult DumpSources(const Path& path, const ReadContext& context, Dump& dump) {
    SourceList sources;
    const FileResult result = sources.LoadSources(path, context);
    for (const CSource& source : sources)
        dump.records.push_back(JsonSource(source));
    dump.version = sources.Version();
    KeepDamage(sources.State(), dump);
    return result;
}

FileResult DumpTypes(const Path& path, const ReadContext& context, Dump& dump) {
    CustomTypeList types;
    const FileResult result = types.LoadTypesUnsorted(path, context);
    for (const CCustomSourceType& type : types)
        dump.records.push_back(JsonCustomType(type));
    dump.version = types.Version();
    KeepDamage(types.State(), dump);
    return result;
}

/// A file that is a version, a count and records, each of which `read` takes from the stream; null is left out.
template <typename Read>
FileResult DumpStream(const Path& path, Dump& dump, Read read) {
    std::unique_ptr<RecordReader> stream;
    const FileResult result = OpenRecordFile(path, stream);
    if (!stream)
        return result;
    dump.version = ReadFixedDouble(stream.get());
    ReadCounted(stream.get(), [&] {
        if (Json record = read(stream.get()); !record.is_null())
            dump.records.push_back(std::move(record));
    });
    KeepDamage(stream->State(), dump);
    return result;
}

FileResult DumpCategories(const Path& path, const ReadContext&, Dump& dump) {
    return DumpStream(path, dump, [](RecordReader* stream) {
        CProCategoryTree root;
        ReadCategoryRecord(stream, root);
        root.parentID = -1;
        return JsonTree(root);
    });
}

FileResult DumpEmptyCategories(const Path& path, const ReadContext&, Dump& dump) {
    return DumpStream(path, dump, [](RecordReader* stream) {
        CCategoryTree tree;
        ReadOldPathRecord(stream, tree);
        return JsonOldTree(tree);
    });
}

FileResult DumpBibliography(const Path& path, const ReadContext& context, Dump& dump) {
    return DumpStream(path, dump, [&](RecordReader* stream) {
        CSource source;
        ReadBibliographySource(stream, context, source);
        return source.SourceID > 0 ? JsonBibliographySource(source) : Json();
    });
}

FileResult DumpNoteBooks(const Path& path, const ReadContext& context, Dump& dump) {
    std::vector<CDatabase> list;
    double version = 0;
    RecordFileState state;
    const FileResult result = LoadDatabases(path, context, list, version, &state);
    KeepDamage(state, dump);
    for (const CDatabase& noteBook : list)
        dump.records.push_back(JsonNoteBook(noteBook));
    dump.version = version;
    return result;
}

FileResult DumpLastView(const Path& path, const ReadContext&, Dump& dump) {
    LongList ids;
    const FileResult result = LoadLongListFile(ids, path);
    dump.records = JsonIds(ids);
    return result;
}

FileResult DumpSyncLog(const Path& path, const ReadContext&, Dump& dump) {
    SyncLog log;
    bool hasHead = false;
    const FileResult result = LoadSyncLogFrom(path, log, &hasHead);
    Json json = JsonSyncLog(log, hasHead);
    dump.extra["head"] = json["head"];
    dump.records = json["records"];
    KeepDamage({.isWhole = log.ReadWhole()}, dump);
    return result;
}

template <typename List, typename ToJson>
FileResult DumpCalendar(const Path& path, const ReadContext& context, Dump& dump,
                        double (*read)(RecordReader&, List&, const ReadContext&), ToJson toJson) {
    std::unique_ptr<RecordReader> stream;
    const FileResult result = OpenRecordFile(path, stream);
    if (!stream)
        return result;
    List list;
    dump.version = read(*stream, list, context);
    for (const auto& record : list)
        dump.records.push_back(toJson(record));
    KeepDamage(stream->State(), dump);
    return result;
}

FileResult DumpEvents(const Path& path, const ReadContext& context, Dump& dump) {
    return DumpCalendar<EventList>(path, context, dump, ReadEvents, JsonEvent);
}

FileResult DumpReminders(const Path& path, const ReadContext& context, Dump& dump) {
    return DumpCalendar<ReminderList>(path, context, dump, ReadReminders, JsonReminder);
}

Json WithSources(const CNote& note, const std::vector<CSource>& sources, Json (*toJson)(const CSource&)) {
    Json json = JsonNoteRecord(note);
    json["sourceRecords"] = Json::array();
    for (const CSource& source : sources)
        json["sourceRecords"].push_back(toJson(source));
    return json;
}

FileResult DumpPrintPreview(const Path& path, const ReadContext& context, Dump& dump) {
    const Loaded<PrintPreview> preview = LoadPrintPreview(path, context);
    for (const PrintNote& printed : preview.value.notes)
        dump.records.push_back(WithSources(printed.note, printed.sources, JsonBibliographySource));
    dump.version = ParseDouble(preview.value.version);
    return preview.file;
}

Json JsonExportSource(const CSource& source) {
    Json json = JsonSource(source);
    json.erase("ModifiedDate");
    json["FormattedText"] = JsonText(source.FormattedText);
    json["EmbeddedAuthors"] = Json::array();
    for (const CAuthor& author : source.EmbeddedAuthors)
        json["EmbeddedAuthors"].push_back(JsonAuthor(author));
    return json;
}

FileResult DumpExport(const Path& path, const ReadContext& context, Dump& dump) {
    ArchiveNoteReader reader(context);
    const FileResult result = reader.Open(path);
    ArchiveNote entry;
    while (result.Ok() && reader.Next(entry))
        dump.records.push_back(WithSources(entry.note, entry.sources, JsonExportSource));
    dump.version = reader.Version();
    dump.extra["exportDate"] = JsonDate(reader.ExportDate());
    std::optional<ArchiveNote> sourcesNote = reader.SourcesNote();
    if (result.Ok() && !reader.IsWhole()) {
        dump.damage = reader.IsLaterVersion() ? "comes from a later version" : reader.DamageText();
        if (std::optional<PlainArchive> plain = reader.ReadPlain()) {
            dump.damage.clear();
            dump.records = Json::array();
            for (const ArchiveNote& note : plain->notes)
                dump.records.push_back(WithSources(note.note, note.sources, JsonExportSource));
            sourcesNote = std::move(plain->sourcesNote);
        }
    }
    if (sourcesNote)
        dump.extra["sourcesNote"] = WithSources(sourcesNote->note, sourcesNote->sources, JsonExportSource);
    return result;
}

/// The kinds of record files, told by the name of the file.
struct NamedDump {
    const char* name;
    FileResult (*run)(const Path&, const ReadContext&, Dump&);
};
constexpr NamedDump kDumps[] = {
    {"Authors.dat", DumpAuthors},
    {"Sources.dat", DumpSources},
    {"SourceTypes.dat", DumpTypes},
    {"Categories.dat", DumpCategories},
    {"Empty1Cats.dat", DumpEmptyCategories},
    {"Empty2Cats.dat", DumpEmptyCategories},
    {"Empty3Cats.dat", DumpEmptyCategories},
    {"Databases.dat", DumpNoteBooks},
    {"LastViewList.dat", DumpLastView},
    {"Sync.dat", DumpSyncLog},
    {"Events.dat", DumpEvents},
    {"Rem.dat", DumpReminders},
    {"Bib.dat", DumpBibliography},
    {"PrintPreview.nbf", DumpPrintPreview},
    {"_ExpNotes.dat", DumpExport},
};

class DumpCommand : public Command {
public:
    const char* Name() const override { return "dump"; }
    const char* Help() const override { return "Shows any record file with every field"; }
    void Declare(CLI::App& app) override { app.add_option("FILE", file_, "The file, told by its name")->required(); }
    ExitStatus Run(Session& session) override {
        const Path path = file_;
        auto run = DumpNotes;
        for (const NamedDump& named : kDumps)
            run = EqualNoCase(path.filename().string(), named.name) ? named.run : run;
        Dump dump;
        if (const FileResult result = run(path, session.Context(), dump); !result.Ok()) {
            PrintError(file_ + " could not be read: " + result.Reason());
            return ExitStatus::NothingFound;
        }
        if (!dump.damage.empty())
            PrintError(file_ + " was not read whole: it " + dump.damage);
        Json json = {{"version", std::move(dump.version)}};
        json.update(dump.extra);
        json["records"] = std::move(dump.records);
        PrintJson(json);
        return ExitStatus::Done;
    }

private:
    std::string file_;
};

}  // namespace

void AddDumpCommands(Commands& commands) {
    commands.push_back(std::make_unique<DumpCommand>());
}

}  // namespace lore
