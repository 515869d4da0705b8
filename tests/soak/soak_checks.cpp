#include <algorithm>

#include "base/text.h"
#include "bibliography/citation.h"
#include "bibliography/citation_field.h"
#include "calendar/reminder_list.h"
#include "notes/attachment_kind.h"
#include "notes/attachment_path.h"
#include "notes/check_notebook.h"
#include "notes/note_finder.h"
#include "rtf/rtf.h"
#include "soak/soak_world.h"

namespace lore {

namespace {

Path NamesOf(const CProCategoryTree& tree) {
    Path path;
    if (tree.IsEmptyPath())
        return path;
    for (const CProCategoryTree* node = &tree; node; node = node->children.empty() ? nullptr : &node->children.front())
        path.push_back(node->name);
    return path;
}

void CollectPaths(const CProCategoryTree& node, Path above, std::set<Path>& paths) {
    above.push_back(node.name);
    if (!node.IsUnassigned())
        paths.insert(above);
    for (const CProCategoryTree& child : node.children)
        CollectPaths(child, above, paths);
}

std::set<Path> PathsOf(const CProCategoryList& forest) {
    std::set<Path> paths;
    for (const CProCategoryTree& root : forest.Roots())
        CollectPaths(root, {}, paths);
    return paths;
}

std::string Text(const Path& path) {
    std::string text;
    for (const std::string& name : path)
        text += "/" + name;
    return text;
}

std::string Text(const ModelSource& source) {
    std::string text = " \"" + source.title + "\" of type " + std::to_string(source.type) + " by";
    for (const std::string& author : source.authors)
        text += " " + author;
    return text;
}

std::string Text(const ModelEvent& event) {
    std::string text = event.label + ", " + DateTime::FromSeconds(event.start).Format("%Y-%m-%d %H:%M:%S to ") +
                       DateTime::FromSeconds(event.end).Format("%Y-%m-%d %H:%M:%S") + ", series " + event.series +
                       ", colour " + std::to_string(event.color) + ", " + event.description + ", popups";
    for (const int32_t minutes : event.popups)
        text += " " + std::to_string(minutes);
    return text;
}

std::string JoinedKeyWords(const ModelNote& note) {
    std::string line;
    for (const std::string& keyWord : note.keyWords)
        line += (line.empty() ? "" : ", ") + ToUtf8(keyWord);
    return line;
}

ModelFile FileOf(const CAttachment& attachment, const std::filesystem::path& folder) {
    const bool isLink = attachment.type == kWebLink;
    return {attachment.title, isLink ? attachment.sourceFile : BytesOf(folder / StoredName(attachment)), isLink};
}

ModelSource SourceOf(const CSource& source, const AuthorList& authors) {
    ModelSource made{std::string(FieldText(source, 0)), source.SourceType, {}};
    for (const int32_t id : source.AuthorIDs) {
        // Of deleted authors that stand side by side, one may stay in the record; it shows nowhere.
        if (const CAuthor* const author = authors.FindAuthorByID(id))
            made.authors.push_back(author->last);
    }
    return made;
}

/// The citation as it stands. Of deleted authors side by side each format leaves one out; then it is what comes of all.
std::string TextOf(const CSource& source, const AuthorList& authors) {
    CSource copy = source;
    const auto isUnknown = [&](int32_t id) { return !authors.FindAuthorByID(id); };
    while (std::any_of(copy.AuthorIDs.begin(), copy.AuthorIDs.end(), isUnknown))
        FormatSource(copy, authors);
    return copy.FormattedText;
}

/// The picture of a NoteBook in a form that can be compared: everything sorted, in words.
std::set<std::string> PictureOf(const OpenNoteBook& book) {
    std::set<std::string> picture;
    const auto add = [&](const std::string& name, const LongList& notes) {
        std::vector<int32_t> ids = notes.Values();
        std::sort(ids.begin(), ids.end());
        std::string line = name + ":";
        for (const int32_t id : ids)
            line += " " + std::to_string(id);
        picture.insert(line);
    };
    for (const CSource& source : book.sources)
        add("source " + source.SourceGUID + " " + TextOf(source, book.authors), source.NoteIDs);
    for (const CKeyWord& keyWord : book.keyWords.Entries())
        add("key word " + ToUtf8(keyWord.name), keyWord.notes);
    for (const CSearchColor& color : book.colors.Entries())
        add("color " + std::to_string(color.color), color.notes);
    add("without source", book.notesWithoutSource);
    const std::function<void(const CProCategoryTree&, const std::string&)> addTree = [&](const CProCategoryTree& node,
                                                                                         const std::string& above) {
        const std::string name = above + "/" + node.name + " " + std::to_string(node.id);
        for (size_t set = 0; set < kSetCount; ++set)
            add("category " + name + " set " + std::to_string(set + 1), node.notes[set]);
        for (const CProCategoryTree& child : node.children)
            addTree(child, name);
    };
    for (const CProCategoryTree& root : book.categories.Roots())
        addTree(root, "");
    for (const CNoteIDsPath& file : book.index.Entries())
        for (const int32_t id : file.ids)
            picture.insert("note " + std::to_string(id) + " in " + file.path);
    return picture;
}

std::string FirstDifference(const std::set<std::string>& now, const std::set<std::string>& wanted) {
    std::vector<std::string> more, less;
    std::set_difference(now.begin(), now.end(), wanted.begin(), wanted.end(), std::back_inserter(more));
    std::set_difference(wanted.begin(), wanted.end(), now.begin(), now.end(), std::back_inserter(less));
    return (more.empty() ? "" : "holds \"" + more.front() + "\"") +
           (less.empty() ? "" : " lacks \"" + less.front() + "\"");
}

}  // namespace

void Soak::CompareNote(const CNote& note, const ModelNote& wanted, const OpenNoteBook& book) const {
    const std::string where = "note " + std::to_string(note.id) + " " + wanted.guid + ": ";
    const std::string words = ReplaceAll(ToUtf8(wanted.words), "\n", "\r\n");
    Require(note.guid == wanted.guid, where + "GUID " + note.guid);
    Require(ToUtf8(note.plainText) == words, where + "text " + note.plainText + "\ninstead of " + words);
    Require(WithCrLf(PlainText(note.rtfText)) == words, where + "rich text " + note.rtfText);
    Require(ToUtf8(note.keyWords) == JoinedKeyWords(wanted),
            where + "key words " + note.keyWords + " instead of " + JoinedKeyWords(wanted));
    Require(note.borderColor == wanted.color, where + "colour");
    Require(
        note.dateEdited.Seconds() == wanted.edited && note.dateCreated.Seconds() == wanted.created,
        where + "dates " + note.dateCreated.Format("%Y-%m-%d %H:%M:%S") + note.dateEdited.Format(" %Y-%m-%d %H:%M:%S"));
    std::vector<std::string> sources;
    for (const int32_t id : note.sources) {
        const CSource* const source = book.sources.FindSourceByID(id);
        sources.push_back(source ? source->SourceGUID : "unknown");
    }
    Require(sources == wanted.sources, where + "sources");
    std::map<std::string, std::string> remarks;
    for (const CNoteSourceInfo& info : note.sourceInfo)
        remarks.emplace(info.key, info.text);
    Require(remarks == wanted.remarks && remarks.size() == note.sourceInfo.size(), where + "remarks");
    for (size_t set = 0; set < kSetCount; ++set) {
        const Path path = NamesOf(note.categories[set]);
        Require(path == wanted.paths[set], where + "category " + Text(path) + " instead of " + Text(wanted.paths[set]));
        const CProCategoryTree* const node =
            path.empty() ? nullptr : book.categories.FindByID(DeepestCategoryID(note.categories[set]));
        Require(path.empty() || (node && node->name == path.back()), where + "no category " + Text(path));
    }
    std::vector<ModelFile> files;
    for (const CAttachment& attachment : note.attachments)
        files.push_back(FileOf(attachment, book.paths.Attachments()));
    Require(files == wanted.files, where + "attachments");
}

void Soak::CheckNote(const std::string& guid) {
    const ModelNote& wanted = Open().notes.at(guid);
    const OpenNoteBook& book = app_->NoteBook();
    const std::vector<CNote> found = FindNotes(book.index, LongList{wanted.id}, app_->Context(), faults);
    Require(found.size() == 1, "note " + std::to_string(wanted.id) + " " + guid + " isn't there");
    CompareNote(found.front(), wanted, book);
    if (const CNote* const listed = app_->List().Find(wanted.id))
        CompareNote(*listed, wanted, book);
}

void Soak::CheckList() {
    const LongList ids = app_->List().GetNoteIDs();
    const std::set<int32_t> listed(ids.begin(), ids.end());
    Require(listed.size() == app_->List().Count(), "a note stands twice in the list");
    if (listed == Open().listed)
        return;
    std::string text = "the list holds " + std::to_string(listed.size()) + " notes instead of " +
                       std::to_string(Open().listed.size()) + ":";
    for (const int32_t id : listed)
        text += Open().listed.contains(id) ? "" : " +" + std::to_string(id);
    for (const int32_t id : Open().listed)
        text += listed.contains(id) ? "" : " -" + std::to_string(id);
    throw Difference(text);
}

void Soak::CheckBook(ModelBook& wanted) {
    OpenNoteBook book = OpenNoteBook::At(app_->Data(), wanted.record);
    IdCounters counters;
    LoadOptions options;
    options.mode = LoadMode::ReadOnly;
    LoadNoteBook(book, counters, app_->Context(), faults, options);
    const std::string name = "NoteBook " + wanted.record.name + ": ";
    for (const CNote& note : FindNotes(book.index, book.index.AllIDs(), app_->Context(), faults)) {
        const auto found = wanted.notes.find(note.guid);
        Require(found != wanted.notes.end(), name + "note " + note.guid + " " + note.plainText + " is too much");
        Require(found->second.id < 0 || found->second.id == note.id, name + "id of " + note.guid);
        found->second.id = note.id;
        CompareNote(note, found->second, book);
    }
    Require(book.index.Count() == wanted.notes.size(),
            name + std::to_string(book.index.Count()) + " notes instead of " + std::to_string(wanted.notes.size()));
    book.sources.FormatAll(book.authors);
    ModelSources sources;
    for (const CSource& source : book.sources)
        sources.emplace(source.SourceGUID, SourceOf(source, book.authors));
    for (const auto& [guid, source] : sources) {
        const auto known = wanted.sources.find(guid);
        Require(known != wanted.sources.end(), name + "source " + guid + " is too much");
        Require(source == known->second, name + "source " + guid + Text(source) + " instead of" + Text(known->second));
    }
    Require(sources.size() == wanted.sources.size() && sources.size() == book.sources.Count(),
            name + "number of sources");
    const std::set<Path> categories = PathsOf(book.categories);
    for (const Path& path : categories)
        Require(wanted.categories.contains(path), name + "category " + Text(path) + " is too much");
    for (const Path& path : wanted.categories)
        Require(categories.contains(path), name + "category " + Text(path) + " is missing");
    for (const Finding& finding : CheckNoteBook(book.paths, app_->Context(), faults))
        Require(finding.kind == FindingKind::AttachmentUnused, name + finding.file + ": " + finding.text);
    if (wanted.record.guid != app_->NoteBook().database.guid)
        return;
    const std::set<std::string> now = PictureOf(app_->NoteBook()), anew = PictureOf(book);
    Require(now == anew, "the open NoteBook " + FirstDifference(now, anew));
}

void Soak::CheckAll() {
    const std::vector<CDatabase>& listed = app_->NoteBooks();
    Require(listed.size() + 1 == books.size(), "number of NoteBooks");
    for (size_t i = 0; i < listed.size(); ++i)
        Require(listed[i].guid == books[i + 1].record.guid && listed[i].name == books[i + 1].record.name,
                "NoteBook " + listed[i].name);
    for (ModelBook& book : books)
        CheckBook(book);
    CheckList();
    for (const ListedNote& entry : app_->List().Notes())
        CompareNote(*entry.note, *Open().FindByID(entry.Id()), app_->NoteBook());
    CheckEvents();
}

void Soak::CheckEvents() {
    EventList stored;
    ReminderList reminders;
    Require(LoadEvents(Calendar(), stored) && LoadReminders(Calendar(), reminders), "the calendar's files");
    Require(stored.size() == events.size(),
            std::to_string(stored.size()) + " events instead of " + std::to_string(events.size()));
    size_t popups = 0;
    for (const CTmEvent& event : stored) {
        const auto found = events.find(event.EventId);
        Require(found != events.end(), "event " + event.Label + " is too much");
        ModelEvent now{
            event.Label, event.Description, event.SeriesId, event.Start.Seconds(), event.End.Seconds(), event.BarColor,
            {}};
        for (const CTmReminder& reminder : RemindersOfEvent(reminders, event.EventId)) {
            now.popups.insert(reminder.PriorMinutes);
            Require(reminder.SendTime.Seconds() == now.start - 60 * reminder.PriorMinutes,
                    "moment of a reminder of " + event.Label);
        }
        popups += now.popups.size();
        Require(now == found->second, "event " + Text(now) + "\ninstead of " + Text(found->second));
    }
    Require(popups == reminders.size(), "reminders without event");
}

}  // namespace lore
