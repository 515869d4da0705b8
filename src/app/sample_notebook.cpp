#include "app/sample_notebook.h"

#include <map>
#include <system_error>

#include "app/sample_builder.h"
#include "app/sample_calendar.h"
#include "app/sample_files.h"
#include "calendar/event_file.h"
#include "calendar/reminder_file.h"
#include "notebooks/notebook_list_file.h"
#include "notebooks/notebook_manager.h"
#include "notes/file_faults.h"
#include "notes/note_file.h"

namespace lore {
namespace {

namespace fs = std::filesystem;

/// True if a folder isn't there or has no entries.
bool IsEmptyFolder(const fs::path& folder) {
    std::error_code error;
    return !fs::exists(folder, error) || fs::is_empty(folder, error);
}

/// Writes and remembers whether everything went well.
class SampleWriter {
public:
    explicit SampleWriter(FaultNotice& faults) : faults_(faults) {}

    bool AllWell() const { return allWell_; }
    void Check(const FileResult& result, const char* what, const fs::path& path) {
        TellFailedWrite(faults_, what, path, result);
        Require(result.Ok());
    }
    /// For what has told its own failure.
    void Require(bool isDone) { allWell_ = allWell_ && isDone; }
    void MakeFolder(const fs::path& folder) { Check(MakeFolders(folder), "A folder could not be made", folder); }

private:
    FaultNotice& faults_;
    bool allWell_ = true;
};

void WriteAttachments(const NoteBookPaths& paths, const SampleContent& content, SampleWriter& writer) {
    for (const SampleStoredFile& file : content.files) {
        const fs::path path = paths.Attachments() / file.name;
        writer.Check(WriteFileAtomically(path, file.bytes), "An attachment could not be written", path);
    }
}

void WriteLists(const NoteBookPaths& paths, SampleContent& content, SampleWriter& writer) {
    SampleSources& lists = content.bibliography;
    writer.Check(lists.authors.SaveAuthors(paths.Authors()), "The authors could not be written", paths.Authors());
    writer.Check(lists.types.SaveTypes(paths.SourceTypes()), "The source types could not be written",
                 paths.SourceTypes());
    writer.Check(lists.sources.SaveSources(paths.Sources(), lists.authors), "The sources could not be written",
                 paths.Sources());
    writer.Check(content.categories.Save(paths.Categories()), "The categories could not be written",
                 paths.Categories());
}

void WriteNotes(const NoteBookPaths& paths, const SampleContent& content, SampleWriter& writer) {
    std::map<std::string, std::vector<CNote>> files;
    LongList ids;
    for (const CNote& note : content.notes) {
        files[GetNoteFileName(note)].push_back(note);
        ids.AddTail(note.id);
    }
    for (const auto& [name, notes] : files)
        writer.Check(SaveNoteFile(paths.NoteFile(name), notes), kNoteFileUnwritten, paths.NoteFile(name));
    writer.Check(SaveLongListFile(ids, paths.LastViewList()), "The note list could not be written",
                 paths.LastViewList());
}

void WriteNoteBook(const NoteBookPaths& paths, SampleContent& content, SampleWriter& writer) {
    writer.MakeFolder(paths.Notes());
    writer.MakeFolder(paths.Attachments());
    if (!writer.AllWell())
        return;
    WriteAttachments(paths, content, writer);
    WriteLists(paths, content, writer);
    WriteNotes(paths, content, writer);
}

/// True if the calendar holds nothing, neither records nor something that can't be read.
bool IsCalendarEmpty(const DataPaths& data, const ReadContext& context) {
    const auto isEmpty = [](const auto& loaded) {
        return loaded.value.empty() && loaded.isWhole && (loaded.file.Ok() || loaded.file.Missing());
    };
    return isEmpty(LoadAllEvents(data.Events(), context)) && isEmpty(LoadAllReminders(data.Reminders(), context));
}

void WriteCalendar(const DataPaths& data, const ReadContext& context, SampleWriter& writer, SampleResult& result) {
    if (!IsCalendarEmpty(data, context))
        return;
    const SampleCalendar calendar = ReadSampleCalendar(SampleFileBytes("events.json"), context);
    writer.Check(WriteEvents(data.Events(), calendar.events), "The events could not be written", data.Events());
    writer.Check(WriteReminders(data.Reminders(), calendar.reminders), "The reminders could not be written",
                 data.Reminders());
    result.events = calendar.events.size();
    result.reminders = calendar.reminders.size();
}

void CountContent(const SampleContent& content, SampleResult& result) {
    result.notes = content.notes.size();
    result.sources = content.bibliography.sources.Count();
    result.authors = content.bibliography.authors.Count();
    result.types = content.bibliography.types.Count();
    result.categories = content.categoryCount;
    for (const CNote& note : content.notes)
        result.attachments += note.attachments.size();
}

}  // namespace

bool IsMainNoteBookEmpty(const DataPaths& data, const ReadContext& context) {
    const NoteBookPaths paths(data, kMainNoteBookFolder);
    std::error_code error;
    if (!IsEmptyFolder(paths.Notes()) || !IsEmptyFolder(paths.Attachments()) || fs::exists(paths.SyncLog(), error))
        return false;
    AuthorList authors;
    CustomTypeList types;
    SourceList sources;
    CProCategoryList categories;
    const FileResult results[] = {authors.LoadAuthors(paths.Authors()), types.LoadTypes(paths.SourceTypes(), context),
                                  sources.LoadSources(paths.Sources(), context), categories.Load(paths.Categories())};
    // What is damaged holds something.
    return authors.Count() == 0 && types.Count() == 0 && sources.Count() == 0 && categories.Roots().size() == 1 &&
           authors.ReadWhole() && types.ReadWhole() && sources.ReadWhole() && categories.ReadWhole() &&
           std::ranges::all_of(results, [](const FileResult& result) { return result.Ok() || result.Missing(); });
}

SampleResult MakeSampleNoteBook(const DataPaths& data, const std::string& localGUID, IdCounters& counters,
                                const ReadContext& context, FaultNotice& faults) {
    SampleResult result;
    SampleContent content = BuildSampleContent(counters, context);
    SampleWriter writer(faults);
    if (IsMainNoteBookEmpty(data, context)) {
        result.database = MainNoteBook(localGUID);
        WriteNoteBook({data, result.database.folder}, content, writer);
    } else {
        NoteBookListFile file(data.DatabasesFile(), faults);
        file.Load(context);
        if (!file.IsWritable())
            return result;
        std::vector<CDatabase> list = file.List();
        result.database = NewNoteBook(data, list, 0, content.name, context);
        WriteNoteBook({data, result.database.folder}, content, writer);
        list.push_back(result.database);
        if (writer.AllWell())
            writer.Require(file.Save(std::move(list)));
    }
    CountContent(content, result);
    WriteCalendar(data, context, writer, result);
    result.made = writer.AllWell();
    return result;
}

}  // namespace lore
