#include "edit/value_changes.h"

#include <unordered_map>
#include <utility>

#include "classify/category_edit.h"
#include "notes/note_file.h"
#include "notes/note_filing.h"
#include "notes/note_finder.h"
#include "notes/note_record.h"
#include "notes/note_store.h"
#include "notes/sync_stamp.h"

namespace lore {

ChangedNotes ValueChanges::SetNotesColor(const LongList& ids, Rgb color) {
    const DateTime now = world_.clock.Now();
    const NoteChange change{[&](CNote& note) {
                                if (note.borderColor == color)
                                    return false;
                                note.borderColor = color;
                                note.dateEdited = now;
                                return true;
                            },
                            [](CSyncInfo& info, const DateTime& nowUtc) { info.Change1 = nowUtc; }};
    ChangedNotes result = ChangeNotes(world_, ids, change, &list_);
    world_.book.colors.SetNotesColor(color, result.changed);
    return result;
}

ChangedNotes ValueChanges::AttachKeyWord(const LongList& ids, const std::string& name) {
    return ChangeKeyWords(ids, name, WithKeyWord);
}

ChangedNotes ValueChanges::RemoveKeyWord(const LongList& ids, const std::string& name) {
    return ChangeKeyWords(ids, name, WithoutKeyWord);
}

ChangedNotes ValueChanges::ChangeKeyWords(const LongList& ids, const std::string& name,
                                          std::string (*changed)(std::string_view, std::string_view)) {
    const DateTime now = world_.clock.Now();
    std::unordered_map<int32_t, std::string> lines;
    const NoteChange change{[&](CNote& note) {
                                std::string line = changed(note.keyWords, name);
                                if (line == note.keyWords)
                                    return false;
                                note.keyWords = lines[note.id] = std::move(line);
                                note.dateEdited = now;
                                return true;
                            },
                            [](CSyncInfo& info, const DateTime& nowUtc) { info.KeyWordsChanged = nowUtc; }};
    ChangedNotes result = ChangeNotes(world_, ids, change, &list_);
    CKeyWordList& keyWords = world_.book.keyWords;
    keyWords.RemoveNotes(result.changed);
    for (const int32_t id : result.changed)
        keyWords.AddKeyWordsOfNote(lines[id], id);
    keyWords.SortKeyWords();
    return result;
}

ChangedNotes ValueChanges::FileInCategory(const LongList& ids, int32_t category, int set) {
    CProCategoryList& forest = world_.book.categories;
    const CProCategoryTree* const node = std::as_const(forest).FindByID(category);
    if (!node)
        return {};
    const DateTime now = world_.clock.Now();
    const CProCategoryTree path = PathTo(*node);
    const NoteChange change{[&](CNote& note) {
                                CProCategoryTree& stored = note.categories[static_cast<size_t>(set - 1)];
                                if (stored.IsSameTree(path))
                                    return false;
                                stored = path;
                                note.dateEdited = now;
                                return true;
                            },
                            [](CSyncInfo& info, const DateTime& nowUtc) { info.CategoriesChanged = nowUtc; }};
    ChangedNotes result = ChangeNotes(world_, ids, change, &list_);
    forest.RemoveNotes(result.changed, set);
    for (const int32_t id : result.changed)
        forest.IndexNote(id, path, set);
    return result;
}

bool ValueChanges::AddSource(int32_t id, int32_t source) {
    const ReadContext context = world_.Context();
    OpenNoteBook& book = world_.book;
    std::vector<CNote> notes = FindNotes(book.index, LongList{id}, context, world_.faults);
    if (notes.empty() || !book.sources.FindSourceByID(source))
        return false;
    const CNote before = notes.front();
    CNote& note = notes.front();
    if (!note.sources.AddUnique(source))
        return false;
    note.dateEdited = world_.clock.Now();
    if (!NoteStore(book, context, world_.faults, world_.texts).SaveNote(note))
        return false;
    UnfileNote(book, before);
    FileNote(book, note);
    const bool stamped = StampSyncRecord(book.syncLog, note.guid, [&](CSyncInfo& info) {
        info.SourcesChanged = context.nowUtc;
        info.NoteFile = GetNoteFileName(note);
    });
    if (stamped)
        WriteSyncLog(book, world_.faults);
    return true;
}

}  // namespace lore
