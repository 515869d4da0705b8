#include <algorithm>

#include "base/text.h"
#include "edit/category_assignment.h"
#include "edit/note_text_file.h"
#include "edit/source_rows.h"
#include "soak/soak_world.h"

namespace lore {

namespace {

constexpr size_t kMostNotes = 170;  // of a NoteBook

std::string Line(const std::vector<std::string>& keyWords) {
    std::string line;
    for (const std::string& keyWord : keyWords)
        line += (line.empty() ? "" : ", ") + ToUtf8(keyWord);
    return FromUtf8(line);
}

/// What stands in an editor, and what it should make of the note.
struct Editing {
    Soak& soak;
    EditNoteSession& session;
    ModelNote& next;

    void ChangeKeyWords() {
        next.keyWords.clear();
        for (size_t count = soak.Below(4); count > 0; --count)
            if (const std::string keyWord = soak.AnyKeyWord();
                std::count(next.keyWords.begin(), next.keyWords.end(), keyWord) == 0)
                next.keyWords.push_back(keyWord);
    }
    void ChangeSources() {
        const OpenNoteBook& book = session.Book();
        SourceRows rows(book.sources, book.authors);
        CNote before = session.note;
        rows.Fill(before, true);
        if (next.sources.empty() || soak.Chance(20))
            rows.ClearSources(), next.sources.clear(), next.remarks.clear();
        for (size_t count = soak.Below(3); count > 0 && book.sources.Count() > 0; --count) {
            const CSource& source = book.sources[soak.Below(book.sources.Count())];
            const size_t row = *rows.AddSource(source.SourceID);
            if (std::count(next.sources.begin(), next.sources.end(), source.SourceGUID) == 0)
                next.sources.push_back(source.SourceGUID);
            if (!soak.Chance(50))
                continue;
            rows.OpenLine(row);
            const std::string text = soak.Chance(20) ? "" : soak.Unique("p. ");
            rows.SetText(row, text);
            rows.CloseLine(row);
            next.remarks.erase(source.SourceGUID);
            if (!text.empty())
                next.remarks[source.SourceGUID] = text;
        }
        rows.WriteBack(session.note);
    }
    void ChangePaths() {
        CategoryAssignment paths(session.Book().categories, soak.App().GetSettings().Int(Option::MaxCategoryID),
                                 soak.prompts);
        paths.Fill(session.note);
        for (int set = 1; set <= kSetCount; ++set) {
            if (!next.guid.empty() && soak.Chance(50))
                continue;
            const Path path = soak.Chance(30) ? Path() : soak.AnyPath();
            paths.ClearFrom(set, 0);
            for (size_t level = 0; level < path.size(); ++level)
                Choose(paths, set, level, path[level]);
            next.paths[static_cast<size_t>(set - 1)] = path;
        }
        paths.WriteBack(session.note);
        session.newCategories = paths.NewCategories();
    }
    void Choose(CategoryAssignment& paths, int set, size_t level, const std::string& name) {
        for (const CategoryChoice& choice : paths.Choices(set, level))
            if (choice.name == name)
                return paths.Choose(set, level, choice.id);
        soak.prompts.texts = {name};
        soak.Require(paths.CreateCategory(set, level), "a category could not be made: " + name);
    }
    void ChangeFiles() {
        if (!next.files.empty() && soak.Chance(30)) {
            const size_t position = soak.Below(next.files.size());
            soak.SayYes();
            session.attachments.RemoveAttachment(position);
            next.files.erase(next.files.begin() + static_cast<std::ptrdiff_t>(position));
        } else if (soak.Chance(30)) {
            const std::string address = soak.Unique("http://example.org/");
            session.attachments.AddLink(address);
            next.files.push_back({address, address, true});
        } else {
            const char* const ending = soak.Chance(50) ? ".txt" : ".PNG";
            const std::string name = soak.Unique("file") + ending;
            const std::string content = soak.Unique("content ") + std::string(soak.Below(2000), 'x');
            PutBytes(soak.Scratch() / name, content);
            soak.Require(session.attachments.AddFile((soak.Scratch() / name).string()), "no file was attached");
            next.files.push_back({name, content, false});
        }
    }
};

void RemoveScratchFiles(Soak& soak) {
    for (const auto& entry : std::filesystem::directory_iterator(soak.Scratch()))
        if (entry.path().filename().string().starts_with("file"))
            std::filesystem::remove(entry.path());
}

void Change(Editing editing) {
    Soak& soak = editing.soak;
    const bool isNew = editing.session.IsNew();
    if (isNew || soak.Chance(40))
        editing.ChangeKeyWords();
    if (isNew)
        editing.session.note.sources = {};
    if (isNew || soak.Chance(40))
        editing.ChangeSources();
    if (isNew || soak.Chance(30))
        editing.ChangePaths();
    if (isNew || soak.Chance(30))
        editing.next.color = soak.AnyColor();
    if (soak.Chance(20))
        editing.ChangeFiles();
    if (isNew || soak.Chance(70))
        editing.next.words = soak.AnyWords();
    editing.session.note.keyWords = Line(editing.next.keyWords);
    editing.session.note.borderColor = editing.next.color;
}

void Saved(Soak& soak, const EditNoteSession& session, ModelNote next) {
    soak.Commands().NoteSaved(session.note);
    RemoveScratchFiles(soak);
    next.guid = session.note.guid;
    next.id = session.note.id;
    next.edited = soak.Now().Seconds();
    if (next.created == 0)
        next.created = next.edited;
    next.version = soak.NewVersion();
    ModelBook& book = soak.Open();
    book.AddCategoriesOf(next);
    book.listed.insert(next.id);
    const std::string guid = next.guid;
    book.notes[guid] = std::move(next);
    soak.Note("  note " + std::to_string(session.note.id) + " " + guid);
    soak.CheckNote(guid);
}

void Save(Soak& soak, EditNoteSession& session, ModelNote next) {
    FixedNoteText text(RtfFromText(next.words, soak.Commands().TextLook()));
    soak.Require(session.SaveNote(text) == SaveOutcome::Saved, "a note wasn't saved");
    Saved(soak, session, std::move(next));
}

bool SaveNew(Soak& soak) {
    if (soak.Open().notes.size() >= kMostNotes)
        return false;
    EditNoteSession session = soak.Commands().NewNote();
    ModelNote next;
    Change({soak, session, next});
    Save(soak, session, std::move(next));
    return true;
}

bool SaveChanged(Soak& soak) {
    if (soak.Open().notes.empty())
        return false;
    ModelNote next = soak.AnyOf(soak.Open().notes).second;
    std::optional<EditNoteSession> session = soak.Commands().EditNote(next.id);
    soak.Require(session.has_value(), "note " + std::to_string(next.id) + " can't be edited");
    Change({soak, *session, next});
    Save(soak, *session, std::move(next));
    return true;
}

/// The window ends while a note is edited; the next start offers the text.
bool GoOnWithDraft(Soak& soak) {
    if (soak.Open().notes.empty())
        return false;
    ModelNote next = soak.AnyOf(soak.Open().notes).second;
    const std::optional<EditNoteSession> before = soak.Commands().EditNote(next.id);
    Draft draft{before->note, before->note.dateEdited, soak.Now(), false};
    next.words = soak.AnyWords();
    draft.note.plainText = next.words;
    draft.note.rtfText = RtfFromText(next.words, soak.Commands().TextLook());
    soak.Require(soak.Commands().Unsaved().Drafts().WriteDraft(draft).Ok(), "a draft wasn't written");
    soak.SayYes();
    const std::vector<UnsavedNote> offered = soak.Commands().Unsaved().AskForAll();
    soak.Require(offered.size() == 1, "a draft isn't offered");
    EditNoteSession session = soak.Commands().Unsaved().Continue(offered.front());
    FixedNoteText text(session.note.rtfText);
    soak.Require(session.SaveNote(text) == SaveOutcome::Saved, "a draft wasn't saved");
    soak.Commands().Unsaved().Drafts().RemoveDraft(session.note.guid);
    soak.Require(soak.Commands().Unsaved().Drafts().ListDrafts().empty(), "a draft stays");
    Saved(soak, session, std::move(next));
    return true;
}

bool DeleteOne(Soak& soak) {
    if (soak.Open().notes.empty())
        return false;
    const int32_t id = soak.AnyOf(soak.Open().notes).second.id;
    soak.Note("  note " + std::to_string(id));
    soak.SayYes();
    soak.Require(soak.Commands().DeleteNote(id), "a note wasn't deleted");
    DeleteInModel(soak, {id});
    return true;
}

bool DeleteListed(Soak& soak) {
    const std::set<int32_t> listed = soak.Open().listed;
    if (listed.empty() || (listed.size() > 30 && soak.Open().notes.size() < kMostNotes - 20))
        return false;
    soak.SayYes();
    soak.Require(soak.Commands().DeleteCurrentNotes(), "the list wasn't deleted");
    DeleteInModel(soak, listed);
    return true;
}

void ComeBack(ModelBook& book, const ModelNote& note, const ModelSources& sources) {
    BringIn(book, note, sources);
    book.BlockUndoOf(note.id);  // a source or category that was made again has another id
}

void UndoDeletion(ModelBook& book, const ModelUndo& undo) {
    for (const auto& [guid, note] : undo.notes)
        ComeBack(book, note, undo.sources);
    book.listed.insert(undo.listed.begin(), undo.listed.end());
}

void UndoImport(ModelBook& book, const ModelUndo& undo) {
    std::vector<ModelNote> comeBack;
    std::set<int32_t> undone;
    for (const auto& [id, version] : undo.landed) {
        const ModelNote* const note = book.FindByID(id);
        if (!note || note->version != version)
            continue;
        undone.insert(id);
        const std::string guid = note->guid;
        const auto replaced = undo.notes.find(guid);
        if (replaced == undo.notes.end())
            book.notes.erase(guid);
        else
            comeBack.push_back(replaced->second);
    }
    for (const ModelNote& note : comeBack) {
        book.notes.erase(note.guid);
        ComeBack(book, note, undo.sources);
    }
    if (undo.isShown) {
        std::erase_if(book.listed, [&](int32_t id) { return undone.contains(id); });
        book.listed.insert(undo.listed.begin(), undo.listed.end());
    }
    std::erase_if(book.listed, [&](int32_t id) { return !book.FindByID(id); });
}

/// False if the note has something else by now.
bool PutBack(ModelNote& note, const ModelChange& change) {
    const ModelNote &former = change.former, &given = change.given;
    switch (change.What()) {
        case ModelChange::Part::Color:
            return note.color == given.color && (note.color = former.color, true);
        case ModelChange::Part::KeyWords:
            return Line(note.keyWords) == Line(given.keyWords) && (note.keyWords = former.keyWords, true);
        case ModelChange::Part::Sources:
            return note.sources == given.sources && (note.sources = former.sources, true);
        case ModelChange::Part::Paths:
            break;
    }
    if (change.formerIsGone)
        return false;
    const auto set = static_cast<size_t>(&change.FormerPath() - former.paths.data());
    return note.paths[set] == given.paths[set] && (note.paths[set] = former.paths[set], true);
}

void UndoChanges(Soak& soak, const std::vector<ModelChange>& changes) {
    for (const ModelChange& change : changes) {
        ModelNote* const note = soak.Open().FindByID(change.given.id);
        if (!note || !PutBack(*note, change))
            continue;
        if (note->edited == change.given.edited)
            note->edited = change.former.edited;
        note->version = note->version == change.given.version ? change.former.version : soak.NewVersion();
    }
}

/// Whether the model can't say what an undo does: a note that was deleted is there; or a line of key words that reads
/// as the panel has left it, or a note with sources from there, was written anew, perhaps in other bytes.
bool IsUnsure(ModelBook& book, const ModelUndo& undo) {
    for (const auto& [guid, note] : undo.notes)
        if (!undo.isImport && book.notes.contains(guid))
            return true;
    for (const ModelChange& change : undo.changes) {
        const ModelNote* const note = book.FindByID(change.given.id);
        if (!note || note->version == change.given.version)
            continue;
        const ModelChange::Part part = change.What();
        if (part == ModelChange::Part::Sources ||
            (part == ModelChange::Part::KeyWords && Line(note->keyWords) == Line(change.given.keyWords)))
            return true;
    }
    return false;
}

NextUndo KindOf(const ModelUndo& undo) {
    using Next = NextUndo;
    static constexpr Next ofChanges[] = {Next::Colors, Next::KeyWords, Next::Category, Next::Sources};
    if (!undo.changes.empty())
        return ofChanges[static_cast<size_t>(undo.changes.front().What())];
    return undo.isImport ? Next::Import : Next::Deletion;
}

bool Undo(Soak& soak) {
    ModelBook& book = soak.Open();
    if (book.undoables.empty() || book.undoIsBlocked)
        return false;
    const ModelUndo undo = book.undoables.back();
    if (IsUnsure(book, undo)) {
        book.undoIsBlocked = true;
        return false;
    }
    soak.Require(soak.Commands().History().Next() == KindOf(undo), "what is undone next");
    soak.Note(!undo.changes.empty() ? "  what a panel has given" : undo.isImport ? "  an import" : "  a deletion");
    soak.SayYes();
    soak.Commands().History().Undo();
    book.undoables.pop_back();
    if (!undo.changes.empty())
        UndoChanges(soak, undo.changes);
    else if (undo.isImport)
        UndoImport(book, undo);
    else
        UndoDeletion(book, undo);
    soak.CheckOpenBook();
    return true;
}

}  // namespace

void DeleteInModel(Soak& soak, const std::set<int32_t>& ids) {
    ModelBook& book = soak.Open();
    ModelUndo undo;
    for (const int32_t id : ids) {
        ModelNote* const note = book.FindByID(id);
        if (book.listed.erase(id) > 0)
            undo.listed.insert(id);
        undo.notes.emplace(note->guid, *note);
        for (const std::string& guid : note->sources)
            undo.sources.emplace(guid, book.sources.at(guid));
        book.notes.erase(std::string(note->guid));
        soak.Require(!soak.App().NoteBook().index.Contains(id), "a deleted note is still there");
    }
    book.undoables.push_back(std::move(undo));
}

std::span<const SoakAction> NoteActions() {
    static constexpr SoakAction actions[] = {
        {"save a new note", 180, SaveNew},         {"save a changed note", 300, SaveChanged},
        {"go on with a draft", 15, GoOnWithDraft}, {"delete a note", 50, DeleteOne},
        {"delete the list", 10, DeleteListed},     {"undo", 30, Undo}};
    return actions;
}

}  // namespace lore
