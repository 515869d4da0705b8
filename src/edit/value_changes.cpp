#include "edit/value_changes.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <type_traits>
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

/// What is done with a value, for each type that it may have.
template <typename... Cases>
struct ByType : Cases... {
    using Cases::operator()...;
};
template <typename... Cases>
ByType(Cases...) -> ByType<Cases...>;

size_t PlaceOf(const FiledPath& filed) {
    return static_cast<size_t>(filed.set - 1);
}

/// What a note has in the place of a value.
NoteValue ValueBeside(const CNote& note, const NoteValue& value) {
    const ByType beside{
        [&](Rgb) -> NoteValue { return note.borderColor; },
        [&](const std::string&) -> NoteValue { return note.keyWords; },
        [&](const FiledPath& filed) -> NoteValue {
            return FiledPath{filed.set, note.categories[PlaceOf(filed)]};
        },
        [&](const TiedSources&) -> NoteValue {
            return TiedSources{note.sources, note.sourceInfo};
        },
    };
    return std::visit(beside, value);
}

void Put(CNote& note, const NoteValue& value) {
    const ByType put{
        [&](Rgb color) { note.borderColor = color; },
        [&](const std::string& keyWords) { note.keyWords = keyWords; },
        [&](const FiledPath& filed) { note.categories[PlaceOf(filed)] = filed.path; },
        [&](const TiedSources& tied) {
            note.sources = tied.sources;
            note.sourceInfo = tied.info;
        },
    };
    std::visit(put, value);
}

/// Whether a note still has what it was given. A category may have got another name or place.
bool StillHas(const CNote& note, const ReplacedValue& value) {
    if (note.guid != value.guid)
        return false;
    const NoteValue now = ValueBeside(note, value.given);
    const auto* const filed = std::get_if<FiledPath>(&now);
    return filed ? DeepestCategoryID(filed->path) == DeepestCategoryID(std::get<FiledPath>(value.given).path)
                 : now == value.given;
}

void PutFormer(CNote& note, const ReplacedValue& value) {
    Put(note, value.former);
    if (note.dateEdited == value.edited)
        note.dateEdited = value.formerEdited;
}

void Stamp(CSyncInfo& info, const NoteValue& changed, const DateTime& nowUtc) {
    const ByType stamp{
        [&](Rgb) { info.Change1 = nowUtc; },
        [&](const std::string&) { info.KeyWordsChanged = nowUtc; },
        [&](const FiledPath&) { info.CategoriesChanged = nowUtc; },
        [&](const TiedSources&) { info.SourcesChanged = nowUtc; },
    };
    std::visit(stamp, changed);
}

}  // namespace

ChangedNotes ValueChanges::SetNotesColor(const LongList& ids, Rgb color) {
    return Give(ids, [color](const CNote&) { return color; });
}

ChangedNotes ValueChanges::AttachKeyWord(const LongList& ids, const std::string& name) {
    return Give(ids, [&](const CNote& note) { return WithKeyWord(note.keyWords, name); });
}

ChangedNotes ValueChanges::RemoveKeyWord(const LongList& ids, const std::string& name) {
    return Give(ids, [&](const CNote& note) { return WithoutKeyWord(note.keyWords, name); });
}

ChangedNotes ValueChanges::FileInCategory(const LongList& ids, int32_t category, int set) {
    const CProCategoryTree* const node = std::as_const(world_.book.categories).FindByID(category);
    if (!node)
        return {};
    FiledPath given{set, PathTo(*node)};
    return Give(ids, [&](const CNote&) { return given; });
}

template <typename Wanted>
ChangedNotes ValueChanges::Give(const LongList& ids, const Wanted& wanted) {
    using Value = std::invoke_result_t<Wanted, const CNote&>;
    const DateTime now = world_.clock.Now();
    ReplacedValues met;
    ChangedNotes result = ChangeValues(ids, Value(), [&](CNote& note) {
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

/// `like` is any value of the kind.
ChangedNotes ValueChanges::ChangeValues(const LongList& ids, const NoteValue& like,
                                        const std::function<bool(CNote&)>& make) {
    const NoteChange change{make, [&](CSyncInfo& info, const DateTime& nowUtc) { Stamp(info, like, nowUtc); }};
    return ChangeNotes(world_, ids, change, &list_);
}

/// The lists of the NoteBook follow. Categories are of one set; sources are filed with their note.
void ValueChanges::Refile(const LongList& ids, const std::function<const NoteValue&(int32_t)>& valueOf) {
    if (ids.IsEmpty())
        return;
    OpenNoteBook& book = world_.book;
    const ByType refile{
        [&](Rgb) {
            std::map<Rgb, LongList> notes;
            for (const int32_t id : ids)
                notes[std::get<Rgb>(valueOf(id))].AddTail(id);
            for (const auto& [color, withColor] : notes)
                book.colors.SetNotesColor(color, withColor);
        },
        [&](const std::string&) {
            book.keyWords.RemoveNotes(ids);
            for (const int32_t id : ids)
                book.keyWords.AddKeyWordsOfNote(std::get<std::string>(valueOf(id)), id);
            book.keyWords.SortKeyWords();
        },
        [&](const FiledPath& filed) {
            book.categories.RemoveNotes(ids, filed.set);
            for (const int32_t id : ids)
                book.categories.IndexNote(id, std::get<FiledPath>(valueOf(id)).path, filed.set);
        },
        [](const TiedSources&) {},
    };
    std::visit(refile, valueOf(ids[0]));
}

size_t ValueChanges::PutBack(ReplacedValues& replaced) {
    std::erase_if(replaced, [&](const auto& note) { return !world_.book.index.Contains(note.first); });
    if (replaced.empty())
        return 0;
    const NoteValue& given = replaced.begin()->second.given;
    if (std::holds_alternative<TiedSources>(given))
        return PutBackSources(replaced);
    const size_t homeless = std::holds_alternative<FiledPath>(given) ? DropGoneCategories(replaced) : 0;
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
    LongList ids, others;
    for (const auto& [id, value] : replaced)
        ids.AddTail(id);
    const ChangedNotes result = ChangeValues(ids, replaced.begin()->second.given, [&](CNote& note) {
        const ReplacedValue& value = replaced.at(note.id);
        if (!StillHas(note, value)) {
            others.AddUnique(note.id);
            return false;
        }
        PutFormer(note, value);
        return true;
    });
    Refile(result.changed, [&](int32_t id) -> const NoteValue& { return replaced.at(id).former; });
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
        Stamp(info, TiedSources(), context.nowUtc);
        info.NoteFile = GetNoteFileName(note);
    });
    if (stamped)
        WriteSyncLog(book, world_.faults);
    return true;
}

}  // namespace lore
