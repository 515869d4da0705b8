#include "edit/value_changes.h"

#include <algorithm>
#include <iterator>
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

ValueKind KindOf(const NoteValue& value) {
    return static_cast<ValueKind>(value.index());
}

CProCategoryTree& PathIn(CNote& note, int set) {
    return note.categories[static_cast<size_t>(set - 1)];
}

/// What a note has in the place of a value.
NoteValue ValueBeside(const CNote& note, const NoteValue& value) {
    switch (KindOf(value)) {
        case ValueKind::Color:
            return note.borderColor;
        case ValueKind::KeyWords:
            return note.keyWords;
        case ValueKind::Category: {
            const int set = std::get<FiledPath>(value).set;
            return FiledPath{set, note.categories[static_cast<size_t>(set - 1)]};
        }
        case ValueKind::Sources:
            break;
    }
    return TiedSources{note.sources, note.sourceInfo};
}

void Put(CNote& note, const NoteValue& value) {
    switch (KindOf(value)) {
        case ValueKind::Color:
            note.borderColor = std::get<Rgb>(value);
            return;
        case ValueKind::KeyWords:
            note.keyWords = std::get<std::string>(value);
            return;
        case ValueKind::Category:
            PathIn(note, std::get<FiledPath>(value).set) = std::get<FiledPath>(value).path;
            return;
        case ValueKind::Sources:
            note.sources = std::get<TiedSources>(value).sources;
            note.sourceInfo = std::get<TiedSources>(value).info;
    }
}

/// Whether two values of one kind, and of one set, are alike to the byte.
bool IsSame(const NoteValue& a, const NoteValue& b) {
    switch (KindOf(a)) {
        case ValueKind::Color:
            return std::get<Rgb>(a) == std::get<Rgb>(b);
        case ValueKind::KeyWords:
            return std::get<std::string>(a) == std::get<std::string>(b);
        case ValueKind::Category:
            return std::get<FiledPath>(a).path.IsSameTree(std::get<FiledPath>(b).path);
        case ValueKind::Sources:
            break;
    }
    const auto isSameInfo = [](const CNoteSourceInfo& one, const CNoteSourceInfo& other) {
        return one.key == other.key && one.text == other.text;
    };
    const TiedSources &one = std::get<TiedSources>(a), &other = std::get<TiedSources>(b);
    return one.sources == other.sources &&
           std::equal(one.info.begin(), one.info.end(), other.info.begin(), other.info.end(), isSameInfo);
}

/// Whether a note still has what it was given. A category may have got another name or place.
bool StillHas(const CNote& note, const ReplacedValue& value) {
    if (note.guid != value.guid)
        return false;
    const NoteValue now = ValueBeside(note, value.given);
    if (KindOf(now) != ValueKind::Category)
        return IsSame(now, value.given);
    return DeepestCategoryID(std::get<FiledPath>(now).path) == DeepestCategoryID(std::get<FiledPath>(value.given).path);
}

void PutFormer(CNote& note, const ReplacedValue& value) {
    Put(note, value.former);
    if (note.dateEdited == value.edited)
        note.dateEdited = value.formerEdited;
}

void Stamp(CSyncInfo& info, ValueKind kind, const DateTime& nowUtc) {
    switch (kind) {
        case ValueKind::Color:
            info.Change1 = nowUtc;
            return;
        case ValueKind::KeyWords:
            info.KeyWordsChanged = nowUtc;
            return;
        case ValueKind::Category:
            info.CategoriesChanged = nowUtc;
            return;
        case ValueKind::Sources:
            info.SourcesChanged = nowUtc;
    }
}

}  // namespace

ValueKind KindOf(const ReplacedValues& values) {
    return KindOf(values.begin()->second.given);
}

ChangedNotes ValueChanges::SetNotesColor(const LongList& ids, Rgb color) {
    return Give(ids, ValueKind::Color, [color](const CNote&) { return NoteValue(color); });
}

ChangedNotes ValueChanges::AttachKeyWord(const LongList& ids, const std::string& name) {
    return Give(ids, ValueKind::KeyWords,
                [&](const CNote& note) { return NoteValue(WithKeyWord(note.keyWords, name)); });
}

ChangedNotes ValueChanges::RemoveKeyWord(const LongList& ids, const std::string& name) {
    return Give(ids, ValueKind::KeyWords,
                [&](const CNote& note) { return NoteValue(WithoutKeyWord(note.keyWords, name)); });
}

ChangedNotes ValueChanges::FileInCategory(const LongList& ids, int32_t category, int set) {
    const CProCategoryTree* const node = std::as_const(world_.book.categories).FindByID(category);
    if (!node)
        return {};
    const FiledPath given{set, PathTo(*node)};
    return Give(ids, ValueKind::Category, [&](const CNote&) { return NoteValue(given); });
}

ChangedNotes ValueChanges::Give(const LongList& ids, ValueKind kind,
                                const std::function<NoteValue(const CNote&)>& wanted) {
    const DateTime now = world_.clock.Now();
    ReplacedValues met;
    ChangedNotes result = ChangeValues(ids, kind, [&](CNote& note) {
        NoteValue given = wanted(note), former = ValueBeside(note, given);
        if (IsSame(given, former))
            return false;
        Put(note, given);
        met.try_emplace(note.id, ReplacedValue{note.guid, std::move(former), std::move(given), note.dateEdited, now});
        note.dateEdited = now;
        return true;
    });
    Refile(result.changed, kind, [&](int32_t id) -> const NoteValue& { return met.at(id).given; });
    replaced_.clear();
    for (const int32_t id : result.changed)
        replaced_.insert(met.extract(id));
    return result;
}

ChangedNotes ValueChanges::ChangeValues(const LongList& ids, ValueKind kind, const std::function<bool(CNote&)>& make) {
    const NoteChange change{make, [kind](CSyncInfo& info, const DateTime& nowUtc) { Stamp(info, kind, nowUtc); }};
    return ChangeNotes(world_, ids, change, &list_);
}

/// The lists of the NoteBook follow. Categories are of one set.
void ValueChanges::Refile(const LongList& ids, ValueKind kind,
                          const std::function<const NoteValue&(int32_t)>& valueOf) {
    if (ids.IsEmpty())
        return;
    if (kind == ValueKind::Color) {
        std::map<Rgb, LongList> notes;
        for (const int32_t id : ids)
            notes[std::get<Rgb>(valueOf(id))].AddTail(id);
        for (const auto& [color, withColor] : notes)
            world_.book.colors.SetNotesColor(color, withColor);
    } else if (kind == ValueKind::KeyWords) {
        CKeyWordList& keyWords = world_.book.keyWords;
        keyWords.RemoveNotes(ids);
        for (const int32_t id : ids)
            keyWords.AddKeyWordsOfNote(std::get<std::string>(valueOf(id)), id);
        keyWords.SortKeyWords();
    } else if (kind == ValueKind::Category) {
        const int set = std::get<FiledPath>(valueOf(ids[0])).set;
        world_.book.categories.RemoveNotes(ids, set);
        for (const int32_t id : ids)
            world_.book.categories.IndexNote(id, std::get<FiledPath>(valueOf(id)).path, set);
    }
}

size_t ValueChanges::PutBack(ReplacedValues& replaced) {
    std::erase_if(replaced, [&](const auto& note) { return !world_.book.index.Contains(note.first); });
    if (replaced.empty())
        return 0;
    if (KindOf(replaced) == ValueKind::Sources)
        return PutBackSources(replaced);
    const size_t homeless = KindOf(replaced) == ValueKind::Category ? DropGoneCategories(replaced) : 0;
    return homeless + PutBackEach(replaced);
}

/// Former paths become those that lead to their categories now. Takes out the notes whose category has gone, and gives
/// their number.
size_t ValueChanges::DropGoneCategories(ReplacedValues& replaced) const {
    const CProCategoryList& forest = world_.book.categories;
    const size_t before = replaced.size();
    for (auto note = replaced.begin(); note != replaced.end();) {
        CProCategoryTree& path = std::get<FiledPath>(note->second.former).path;
        const CProCategoryTree* const node = path.IsEmptyPath() ? nullptr : forest.FindByID(DeepestCategoryID(path));
        if (node)
            path = PathTo(*node);
        note = node || path.IsEmptyPath() ? std::next(note) : replaced.erase(note);
    }
    return before - replaced.size();
}

size_t ValueChanges::PutBackEach(ReplacedValues& replaced) {
    if (replaced.empty())
        return 0;
    const ValueKind kind = KindOf(replaced);
    LongList ids, others;
    for (const auto& [id, value] : replaced)
        ids.AddTail(id);
    const ChangedNotes result = ChangeValues(ids, kind, [&](CNote& note) {
        const ReplacedValue& value = replaced.at(note.id);
        if (!StillHas(note, value)) {
            others.AddUnique(note.id);
            return false;
        }
        PutFormer(note, value);
        return true;
    });
    Refile(result.changed, kind, [&](int32_t id) -> const NoteValue& { return replaced.at(id).former; });
    std::erase_if(replaced, [&](const auto& note) { return !result.failed.Contains(note.first); });
    const auto isDone = [&](int32_t id) { return !result.changed.Contains(id) && !result.failed.Contains(id); };
    return static_cast<size_t>(std::count_if(others.begin(), others.end(), isDone));
}

/// One after the other, since each may go to another file.
size_t ValueChanges::PutBackSources(ReplacedValues& replaced) {
    size_t others = 0;
    std::erase_if(replaced, [&](const auto& entry) {
        const std::optional<CNote> before = FindNote(world_.book.index, entry.first, world_.Context(), world_.faults);
        if (!before)
            return false;
        if (!StillHas(*before, entry.second)) {
            ++others;
            return true;
        }
        CNote note = *before;
        PutFormer(note, entry.second);
        return SaveWithSources(*before, note);
    });
    return others;
}

bool ValueChanges::AddSource(int32_t id, int32_t source) {
    replaced_.clear();
    const std::optional<CNote> before = FindNote(world_.book.index, id, world_.Context(), world_.faults);
    if (!before || !world_.book.sources.FindSourceByID(source))
        return false;
    CNote note = *before;
    if (!note.sources.AddUnique(source))
        return false;
    note.dateEdited = world_.clock.Now();
    if (!SaveWithSources(*before, note))
        return false;
    replaced_.emplace(id,
                      ReplacedValue{note.guid, TiedSources{before->sources, before->sourceInfo},
                                    TiedSources{note.sources, note.sourceInfo}, before->dateEdited, note.dateEdited});
    return true;
}

/// False, told, if it can't be written.
bool ValueChanges::SaveWithSources(const CNote& before, const CNote& note) {
    const ReadContext context = world_.Context();
    OpenNoteBook& book = world_.book;
    if (!NoteStore(book, context, world_.faults, world_.texts).SaveNote(note))
        return false;
    UnfileNote(book, before);
    FileNote(book, note);
    const bool stamped = StampSyncRecord(book.syncLog, note.guid, [&](CSyncInfo& info) {
        Stamp(info, ValueKind::Sources, context.nowUtc);
        info.NoteFile = GetNoteFileName(note);
    });
    if (stamped)
        WriteSyncLog(book, world_.faults);
    return true;
}

}  // namespace lore
