#include "app/undo_history.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <unordered_map>
#include <utility>

#include "app/lorebinder_app.h"
#include "edit/edit_world.h"
#include "exchange/bring_back.h"
#include "notes/sort_order.h"

namespace lore {

namespace {

/// What is said of the undo of a change of values, in the order of NoteValue.
struct UndoTexts {
    NextUndo next;
    const char* title;
    const char *one, *several;  ///< after the number of notes that aren't put back
};
constexpr UndoTexts kUndoTexts[] = {
    {NextUndo::Colors, "Undo Border Color", " of the notes has got another border color since, and keeps what it has.",
     " of the notes have got another border color since, and keep what they have."},
    {NextUndo::KeyWords, "Undo Key Word", " of the notes has got other key words since, and keeps what it has.",
     " of the notes have got other key words since, and keep what they have."},
    {NextUndo::Category, "Undo Category",
     " of the notes has been filed elsewhere since, or the category that it came from has gone.  It stays where it is.",
     " of the notes have been filed elsewhere since, or the category that they came from has gone.  They stay where "
     "they are."},
    {NextUndo::Sources, "Undo Source", " of the notes has got other sources since, and keeps what it has.",
     " of the notes have got other sources since, and keep what they have."}};
static_assert(std::size(kUndoTexts) == std::variant_size_v<NoteValue>);

const UndoTexts& TextsOf(const ReplacedValues& values) {
    return kUndoTexts[values.begin()->second.given.index()];
}

/// An order, as positions of the list, in which each note of `back` stands directly behind its neighbour of before, the
/// id at the same place of `behind`, or in front for 0. All others stay where they stand, and so does a note whose
/// neighbour isn't listed, or one that was `listed` all along.
std::vector<uint32_t> OrderBehind(const CNoteList& list, const LongList& back, const LongList& behind,
                                  const LongList& listed) {
    std::unordered_map<int32_t, int32_t> followers;
    std::unordered_map<int32_t, uint32_t> placed;
    for (size_t i = 0; i < behind.Count(); ++i) {
        const int32_t id = back[i], neighbour = behind[i];
        if (listed.Contains(id) || !list.Contains(id) || (neighbour != 0 && !list.Contains(neighbour)))
            continue;
        if (followers.emplace(neighbour, id).second)
            placed.emplace(id, static_cast<uint32_t>(list.PositionOf(id)));
    }
    std::vector<uint32_t> order;
    const auto addFollowersOf = [&](int32_t id) {
        for (auto next = followers.find(id); next != followers.end(); next = followers.find(next->second))
            order.push_back(placed.at(next->second));
    };
    addFollowersOf(0);
    for (uint32_t position = 0; position < list.Count(); ++position) {
        if (const auto moved = placed.find(list[position].id); moved != placed.end() && moved->second == position)
            continue;
        order.push_back(position);
        addFollowersOf(list[position].id);
    }
    return order;
}

/// A list, and behind it what of another one passes.
template <typename Passes>
LongList Behind(LongList list, const LongList& others, Passes passes) {
    LongList more;
    for (const int32_t id : others) {
        if (passes(id))
            more.AddTail(id);
    }
    list.Merge(more);
    return list;
}

}  // namespace

UndoHistory::~UndoHistory() {
    for (const NoteBookPaths& paths : withKeptFiles_)
        NoteRemoval::DiscardKeptFiles(paths, world_.faults);
}

void UndoHistory::Add(std::variant<Deletion, Import, ReplacedValues> what) {
    steps_.push_back({app_.NoteBook().database.guid, std::move(what)});
}

void UndoHistory::NotesDeleted(DeletedNotes deleted) {
    RememberKeptFiles();
    LongList gone, listed, behind;
    for (const CNote& note : deleted.notes)
        gone.AddTail(note.id);
    int32_t previous = 0;
    for (const ListedNote& entry : app_.List().Notes()) {
        if (gone.Contains(entry.Id())) {
            listed.AddTail(entry.Id());
            if (!IsSortingId(app_.SortOrder()))
                behind.AddTail(previous);
        }
        previous = entry.Id();
    }
    std::vector<CSource> sources = SourcesOfNotes(deleted.notes, app_.NoteBook());
    Add(Deletion{std::move(deleted), std::move(sources), std::move(listed), std::move(behind)});
}

/// The open NoteBook holds files that go when the program ends.
void UndoHistory::RememberKeptFiles() {
    const NoteBookPaths& open = app_.NoteBook().paths;
    const bool known = std::any_of(withKeptFiles_.begin(), withKeptFiles_.end(),
                                   [&](const NoteBookPaths& paths) { return paths.Folder() == open.Folder(); });
    if (!known)
        withKeptFiles_.push_back(open);
}

void UndoHistory::ImportDone(ImportChanges changes, std::optional<LongList> former) {
    RememberKeptFiles();
    Add(Import{std::move(changes), std::move(former)});
}

void UndoHistory::ValuesChanged(ReplacedValues replaced) {
    if (!replaced.empty())
        Add(std::move(replaced));
}

const UndoHistory::Step* UndoHistory::LastStep() const {
    const std::string& open = app_.NoteBook().database.guid;
    const auto last =
        std::find_if(steps_.rbegin(), steps_.rend(), [&](const Step& step) { return step.noteBook == open; });
    return last == steps_.rend() ? nullptr : &*last;
}

NextUndo UndoHistory::Next() const {
    const Step* const last = LastStep();
    if (!last)
        return NextUndo::None;
    if (const auto* const replaced = std::get_if<ReplacedValues>(&last->what))
        return TextsOf(*replaced).next;
    return std::holds_alternative<Import>(last->what) ? NextUndo::Import : NextUndo::Deletion;
}

/// True if all is back; what isn't is left in `deletion`.
bool UndoHistory::TakeBack(Deletion& deletion) {
    const ReadContext context = app_.Context();
    DeletedNotes& deleted = deletion.deleted;
    DeletedNotes gone{{}, deleted.keptFiles}, back = gone;  // an earlier try may have left files behind
    for (const CNote& note : deleted.notes)
        (app_.NoteBook().index.Contains(note.id) ? back : gone).notes.push_back(note);
    IdCounters counters = app_.Counters();
    if (!BringBackWhatNotesName(gone.notes, deletion.sources, app_.NoteBook(), counters, world_.faults))
        return false;
    app_.StoreCounters(counters);
    NoteRemoval removal(app_.NoteBook(), context, world_.faults, &app_.Texts());
    Unrestored failed = removal.RestoreNotes(gone);
    failed.withoutFiles.Merge(removal.RestoreFiles(back));
    std::erase_if(deleted.notes, [&](const CNote& note) { return !failed.Contains(note.id); });
    const LongList listed = app_.List().GetNoteIDs();
    if (app_.Gather(deletion.listed) > 0 && !IsSortingId(app_.SortOrder()))
        app_.List().SetOrder(OrderBehind(app_.List(), deletion.listed, deletion.behind, listed));
    return deleted.notes.empty();
}

/// True if all is undone; what isn't is left in `import`.
bool UndoHistory::TakeBack(Import& import) {
    ImportChanges& changes = import.changes;
    const size_t leaving = NotesThatLeave(changes, app_.NoteBook()), all = app_.NoteBook().TotalNoteCount();
    if (IsLargeShare(leaving, all) &&
        world_.prompts.Ask("Undoing the import takes  *" + std::to_string(leaving) + "*  of the  *" +
                               std::to_string(all) + "*  notes out of this NoteBook.\n\nDo you wish to continue?",
                           "Undo Import?") != PromptAnswer::Yes)
        return false;
    const LongList listed = app_.List().GetNoteIDs();
    const auto imported = changes.landed;
    const ReadContext context = app_.Context();
    IdCounters counters = app_.Counters();
    const std::optional<LongList> changed = UndoImport(
        changes, app_.NoteBook(), counters, [&] { app_.StoreCounters(counters); }, context, world_.faults,
        &app_.Texts());
    if (!changed)
        return false;
    const auto stays = [&](int32_t id) { return changed->Contains(id) || changes.landed.contains(id); };
    app_.ReloadNotes(
        import.former ? Behind(*import.former, listed, [&](int32_t id) { return stays(id) || !imported.contains(id); })
                      : listed);
    if (const size_t count = changed->Count())
        world_.prompts.Message(
            std::to_string(count) + (count == 1
                                         ? " of the imported notes has been changed since, and stays as it is."
                                         : " of the imported notes have been changed since, and stay as they are."),
            "Undo Import", PromptIcon::Information);
    return changes.IsEmpty();
}

/// True if all is undone; what isn't is left in `replaced`.
bool UndoHistory::TakeBack(ReplacedValues& replaced) {
    const UndoTexts& texts = TextsOf(replaced);
    LongList ids;
    for (const auto& [id, value] : replaced)
        ids.AddTail(id);
    world_.progress.ShowStandBy("Updating notes.....");
    const size_t staying = ValueChanges(world_, app_.List()).PutBack(replaced);
    world_.progress.HideStandBy();
    if (texts.next == NextUndo::Sources) {
        for (const int32_t id : ids)
            app_.RefreshNote(id);
    }
    app_.SortList();
    if (staying > 0)
        world_.prompts.Message(std::to_string(staying) + (staying == 1 ? texts.one : texts.several), texts.title,
                               PromptIcon::Information);
    return replaced.empty();
}

void UndoHistory::Undo() {
    const Step* const next = LastStep();
    if (!next)
        return;
    const auto place = next - steps_.data();
    Step step = std::move(steps_[static_cast<size_t>(place)]);
    steps_.erase(steps_.begin() + place);
    if (!std::visit([this](auto& what) { return TakeBack(what); }, step.what))
        steps_.insert(steps_.begin() + std::min<std::ptrdiff_t>(place, std::ssize(steps_)), std::move(step));
}

}  // namespace lore
