#include "edit/value_changes.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "classify/category_edit.h"
#include "notes/note_file.h"
#include "notes/note_filing.h"
#include "notes/note_finder.h"
#include "notes/note_record.h"
#include "notes/note_store.h"
#include "notes/sync_stamp.h"

namespace lore {

namespace {

bool IsColor(const NoteValue& value) {
    return std::holds_alternative<Rgb>(value);
}

/// What a note has in the place of a value.
NoteValue ValueBeside(const CNote& note, const NoteValue& value) {
    return IsColor(value) ? NoteValue(note.borderColor) : NoteValue(note.keyWords);
}

void Put(CNote& note, const NoteValue& value) {
    if (IsColor(value))
        note.borderColor = std::get<Rgb>(value);
    else
        note.keyWords = std::get<std::string>(value);
}

}  // namespace

bool AreColors(const ReplacedValues& values) {
    return !values.empty() && IsColor(values.begin()->second.given);
}

ChangedNotes ValueChanges::SetNotesColor(const LongList& ids, Rgb color) {
    return Give(ids, true, [color](const CNote&) { return NoteValue(color); });
}

ChangedNotes ValueChanges::AttachKeyWord(const LongList& ids, const std::string& name) {
    return Give(ids, false, [&](const CNote& note) { return NoteValue(WithKeyWord(note.keyWords, name)); });
}

ChangedNotes ValueChanges::RemoveKeyWord(const LongList& ids, const std::string& name) {
    return Give(ids, false, [&](const CNote& note) { return NoteValue(WithoutKeyWord(note.keyWords, name)); });
}

ChangedNotes ValueChanges::Give(const LongList& ids, bool areColors,
                                const std::function<NoteValue(const CNote&)>& wanted) {
    const DateTime now = world_.clock.Now();
    ReplacedValues met;
    ChangedNotes result = ChangeValues(ids, areColors, [&](CNote& note) {
        NoteValue given = wanted(note), former = ValueBeside(note, given);
        if (given == former)
            return false;
        Put(note, given);
        met.try_emplace(note.id, ReplacedValue{note.guid, std::move(former), std::move(given), note.dateEdited, now});
        note.dateEdited = now;
        return true;
    });
    Refile(result.changed, [&](int32_t id) -> const NoteValue& { return met.at(id).given; });
    replaced_.clear();
    for (const int32_t id : result.changed)
        replaced_.insert(met.extract(id));
    return result;
}

ChangedNotes ValueChanges::ChangeValues(const LongList& ids, bool areColors, const std::function<bool(CNote&)>& make) {
    const NoteChange change{make, [areColors](CSyncInfo& info, const DateTime& nowUtc) {
                                (areColors ? info.Change1 : info.KeyWordsChanged) = nowUtc;
                            }};
    return ChangeNotes(world_, ids, change, &list_);
}

/// The lists of the NoteBook follow. All values are of one kind.
void ValueChanges::Refile(const LongList& ids, const std::function<const NoteValue&(int32_t)>& valueOf) {
    if (ids.IsEmpty())
        return;
    if (IsColor(valueOf(ids[0]))) {
        std::map<Rgb, LongList> notes;
        for (const int32_t id : ids)
            notes[std::get<Rgb>(valueOf(id))].AddTail(id);
        for (const auto& [color, withColor] : notes)
            world_.book.colors.SetNotesColor(color, withColor);
        return;
    }
    CKeyWordList& keyWords = world_.book.keyWords;
    keyWords.RemoveNotes(ids);
    for (const int32_t id : ids)
        keyWords.AddKeyWordsOfNote(std::get<std::string>(valueOf(id)), id);
    keyWords.SortKeyWords();
}

size_t ValueChanges::PutBack(ReplacedValues& replaced) {
    std::erase_if(replaced, [&](const auto& note) { return !world_.book.index.Contains(note.first); });
    if (replaced.empty())
        return 0;
    LongList ids, others;
    for (const auto& [id, value] : replaced)
        ids.AddTail(id);
    const ChangedNotes result = ChangeValues(ids, AreColors(replaced), [&](CNote& note) {
        const ReplacedValue& value = replaced.at(note.id);
        if (note.guid != value.guid || ValueBeside(note, value.given) != value.given) {
            others.AddUnique(note.id);
            return false;
        }
        Put(note, value.former);
        if (note.dateEdited == value.edited)
            note.dateEdited = value.formerEdited;
        return true;
    });
    Refile(result.changed, [&](int32_t id) -> const NoteValue& { return replaced.at(id).former; });
    std::erase_if(replaced, [&](const auto& note) { return !result.failed.Contains(note.first); });
    const auto isDone = [&](int32_t id) { return !result.changed.Contains(id) && !result.failed.Contains(id); };
    return static_cast<size_t>(std::count_if(others.begin(), others.end(), isDone));
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
    const std::optional<CNote> before = FindNote(book.index, id, context, world_.faults);
    if (!before || !book.sources.FindSourceByID(source))
        return false;
    CNote note = *before;
    if (!note.sources.AddUnique(source))
        return false;
    note.dateEdited = world_.clock.Now();
    if (!NoteStore(book, context, world_.faults, world_.texts).SaveNote(note))
        return false;
    UnfileNote(book, *before);
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
