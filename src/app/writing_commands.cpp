#include "app/writing_commands.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>

#include "base/file_copy.h"
#include "base/text.h"
#include "exchange/bring_back.h"
#include "notes/file_faults.h"
#include "notes/note_finder.h"
#include "notes/note_list_add.h"
#include "notes/note_list_citations.h"
#include "notes/sort_order.h"
#include "rtf/html_reader.h"
#include "rtf/rtf.h"

namespace lore {

namespace {

constexpr size_t kTitleCharacters = 60;

/// The first words of a text, for questions about a note.
std::string FirstWords(const std::string& plainText) {
    const std::string_view text = Trim(plainText);
    const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
    if (CharacterCount(line) <= kTitleCharacters)
        return std::string(line);
    return std::string(line.substr(0, ByteOfCharacter(line, kTitleCharacters))) + "...";
}

std::string UnsavedText(const UnsavedNote& unsaved) {
    const std::string words = FirstWords(unsaved.draft.note.plainText);
    std::string text = "A note was being edited when Lorebinder ended, and its text was not saved";
    if (unsaved.draft.written.IsValid())
        text += " (" + unsaved.draft.written.Format("%m/%d/%Y  -  %I:%M:%S %p") + ")";
    text += ":\n\n\"" + words + "\"\n\n";
    if (!unsaved.stored && unsaved.draft.note.id > 0)
        text += "The note itself isn't among the notes any more; the text would become a new note.\n\n";
    else if (unsaved.stored && !(unsaved.stored->dateEdited == unsaved.draft.baseEdited))
        text += "The note has been saved in another form since; going on would put this text in its place.\n\n";
    return text + "Do you wish to go on with it? \"No\" discards the unsaved text.";
}

/// What is said of the undo of a change of values, in the order of NoteValue.
struct UndoTexts {
    WritingCommands::NextUndo next;
    const char* title;
    const char *one, *several;  ///< behind the number of notes that aren't put back
};
constexpr UndoTexts kUndoTexts[] = {
    {WritingCommands::NextUndo::Colors, "Undo Border Color",
     " of the notes has got another border color since, and keeps what it has.",
     " of the notes have got another border color since, and keep what they have."},
    {WritingCommands::NextUndo::KeyWords, "Undo Key Word",
     " of the notes has got other key words since, and keeps what it has.",
     " of the notes have got other key words since, and keep what they have."},
    {WritingCommands::NextUndo::Category, "Undo Category",
     " of the notes has been filed elsewhere since, or the category that it came from has gone.  It stays where it is.",
     " of the notes have been filed elsewhere since, or the category that they came from has gone.  They stay where "
     "they are."},
    {WritingCommands::NextUndo::Sources, "Undo Source",
     " of the notes has got other sources since, and keeps what it has.",
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

}  // namespace

int32_t NoteInPlace(const CNoteList& list, int position) {
    if (list.IsEmpty() || position < 0)
        return -1;
    return list[std::min(static_cast<size_t>(position), list.Count() - 1)].id;
}

WritingCommands::WritingCommands(CLorebinderApp& app)
    : app_(app),
      faults_(app.Ports().faults),
      world_{app.NoteBook(),    app.GetSettings(), app.Ports().prompts, app.Ports().progress,         app.Ports().clock,
             app.Ports().guids, faults_,           &app.Texts(),        [&app] { app.SaveOptions(); }} {}

WritingCommands::~WritingCommands() {
    for (const NoteBookPaths& paths : withKeptFiles_)
        NoteRemoval::DiscardKeptFiles(paths, world_.faults);
}

EditNoteSession WritingCommands::NewNote() {
    const CNoteList& list = app_.List();
    const int last = list.PositionOf(lastSaved_);
    if (last < 0)
        lastSaved_ = -1;
    const CNote* const saved = last < 0 ? nullptr : &list[static_cast<size_t>(last)];
    const CNote* const lastOfList = list.IsEmpty() ? nullptr : &list[list.Count() - 1];
    return EditNoteSession::ForNewNote(world_, FillSource(app_.GetSettings(), saved, lastOfList));
}

std::optional<EditNoteSession> WritingCommands::EditNote(int32_t id) {
    const std::optional<CNote> note = FindNote(app_.NoteBook().index, id, app_.Context(), world_.faults);
    return note ? std::optional(EditNoteSession::ForNote(world_, *note)) : std::nullopt;
}

void WritingCommands::NoteSaved(const CNote& note) {
    lastSaved_ = note.id;
    CNoteList& list = app_.List();
    CitationTexts citations(app_.NoteBook().sources, app_.NoteBook().authors);
    if (!list.ReplaceNote(note, citations.For(note)))
        AddSingleNote(list, citations.Listed(note), IsSortingId(app_.SortOrder()) ? kNoSort : app_.SortOrder());
    app_.SortList();
}

bool WritingCommands::DeleteNote(int32_t id) {
    if (!app_.NoteBook().index.Contains(id) || app_.TellIfClosed() ||
        world_.prompts.Ask("Do you wish to permanently delete this note?", "Delete Note?") != PromptAnswer::Yes)
        return false;
    return Delete(LongList{id});
}

bool WritingCommands::DeleteCurrentNotes() {
    return AskTwiceAndDelete(app_.List().GetNoteIDs());
}

bool WritingCommands::DeleteNotes(const LongList& ids) {
    return ids.Count() == 1 ? DeleteNote(ids[0]) : AskTwiceAndDelete(ids);
}

bool WritingCommands::AskTwiceAndDelete(const LongList& ids) {
    if (ids.IsEmpty() || app_.TellIfClosed())
        return false;
    const bool one = ids.Count() == 1;
    const std::string first =
        one ? "Do you wish to permanently delete the current note?"
            : "Do you wish to permanently delete all " + std::to_string(ids.Count()) + " current notes?";
    const char* const second =
        one ? "Are you sure you wish to delete the note?\nThis will permanently remove it from your Lorebinder "
              "database!"
            : "Are you sure you wish to delete these notes?\nThis will permanently remove them from your Lorebinder "
              "database!";
    if (world_.prompts.Ask(first, "Delete Current Notes?") != PromptAnswer::Yes ||
        world_.prompts.Ask(second, "Delete Notes?") != PromptAnswer::Yes)
        return false;
    world_.progress.ShowStandBy("Deleting current notes....");
    const bool deleted = Delete(ids);
    world_.progress.HideStandBy();
    return deleted;
}

bool WritingCommands::Delete(const LongList& ids) {
    const ReadContext context = app_.Context();
    OpenNoteBook& book = app_.NoteBook();
    NoteRemoval removal(book, context, world_.faults, &app_.Texts(), app_.Ports().background);
    DeletedNotes deleted = removal.DeleteNotes(ids, GoneFiles::Kept);
    if (deleted.notes.empty())
        return false;
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
    app_.TakeOut(gone);
    KeepsFiles();
    std::vector<CSource> sources = SourcesOfNotes(deleted.notes, book);
    undoables_.push_back({book.database.guid, std::move(deleted), listed, std::move(sources), behind});
    return true;
}

/// The open NoteBook holds files that go when the program ends.
void WritingCommands::KeepsFiles() {
    const NoteBookPaths& open = app_.NoteBook().paths;
    const bool known = std::any_of(withKeptFiles_.begin(), withKeptFiles_.end(),
                                   [&](const NoteBookPaths& paths) { return paths.Folder() == open.Folder(); });
    if (!known)
        withKeptFiles_.push_back(open);
}

void WritingCommands::ImportDone(ImportChanges changes, const LongList& listed) {
    KeepsFiles();
    undoables_.push_back({app_.NoteBook().database.guid, std::move(changes), listed});
}

void WritingCommands::ValuesChanged(ReplacedValues replaced) {
    if (!replaced.empty())
        undoables_.push_back({app_.NoteBook().database.guid, std::move(replaced)});
}

const WritingCommands::Undoable* WritingCommands::LastUndoable() const {
    const std::string& open = app_.NoteBook().database.guid;
    const auto last = std::find_if(undoables_.rbegin(), undoables_.rend(),
                                   [&](const Undoable& undoable) { return undoable.noteBook == open; });
    return last == undoables_.rend() ? nullptr : &*last;
}

WritingCommands::NextUndo WritingCommands::WhatToUndo() const {
    const Undoable* const last = LastUndoable();
    if (!last)
        return NextUndo::None;
    if (const auto* const replaced = std::get_if<ReplacedValues>(&last->what))
        return TextsOf(*replaced).next;
    return std::holds_alternative<ImportChanges>(last->what) ? NextUndo::Import : NextUndo::Deletion;
}

/// True if all is back; what isn't is left in `undoable`.
bool WritingCommands::UndoDeletion(Undoable& undoable) {
    const ReadContext context = app_.Context();
    auto& deleted = std::get<DeletedNotes>(undoable.what);
    DeletedNotes gone{{}, deleted.keptFiles}, back = gone;  // an earlier try may have left files behind
    for (const CNote& note : deleted.notes)
        (app_.NoteBook().index.Contains(note.id) ? back : gone).notes.push_back(note);
    IdCounters counters = app_.Counters();
    if (!BringBackWhatNotesName(gone.notes, undoable.sources, app_.NoteBook(), counters, world_.faults))
        return false;
    app_.StoreCounters(counters);
    NoteRemoval removal(app_.NoteBook(), context, world_.faults, &app_.Texts());
    Unrestored failed = removal.RestoreNotes(gone);
    failed.withoutFiles.Merge(removal.RestoreFiles(back));
    std::erase_if(deleted.notes, [&](const CNote& note) { return !failed.Contains(note.id); });
    const LongList listed = app_.List().GetNoteIDs();
    if (app_.Gather(undoable.listed) > 0 && !IsSortingId(app_.SortOrder()))
        app_.List().SetOrder(OrderBehind(app_.List(), undoable.listed, undoable.behind, listed));
    return deleted.notes.empty();
}

/// True if all is undone; what isn't is left in `undoable`.
bool WritingCommands::UndoImportOf(Undoable& undoable) {
    auto& changes = std::get<ImportChanges>(undoable.what);
    const size_t leaving = NotesThatLeave(changes, app_.NoteBook()), all = app_.NoteBook().TotalNoteCount();
    if (IsLargeShare(leaving, all) &&
        world_.prompts.Ask("Undoing the import takes  *" + std::to_string(leaving) + "*  of the  *" +
                               std::to_string(all) + "*  notes out of this NoteBook.\n\nDo you wish to continue?",
                           "Undo Import?") != PromptAnswer::Yes)
        return false;
    const ReadContext context = app_.Context();
    IdCounters counters = app_.Counters();
    const std::optional<size_t> changed = UndoImport(
        changes, app_.NoteBook(), counters, [&] { app_.StoreCounters(counters); }, context, world_.faults,
        &app_.Texts());
    if (!changed)
        return false;
    app_.ReloadNotes(undoable.listed);
    if (*changed > 0)
        world_.prompts.Message(
            std::to_string(*changed) + (*changed == 1
                                            ? " of the imported notes has been changed since, and stays as it is."
                                            : " of the imported notes have been changed since, and stay as they are."),
            "Undo Import", PromptIcon::Information);
    return changes.IsEmpty();
}

/// True if all is undone; what isn't is left in `replaced`.
bool WritingCommands::UndoValues(ReplacedValues& replaced) {
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

void WritingCommands::Undo() {
    const Undoable* const next = LastUndoable();
    if (!next)
        return;
    const auto last = undoables_.begin() + (next - undoables_.data());
    auto* const replaced = std::get_if<ReplacedValues>(&last->what);
    const bool isDeletion = std::holds_alternative<DeletedNotes>(last->what);
    if (replaced ? UndoValues(*replaced) : isDeletion ? UndoDeletion(*last) : UndoImportOf(*last))
        undoables_.erase(last);
}

/// False, told, if it can't be had.
bool WritingCommands::ReadDraft(const std::filesystem::path& file, Draft& draft) {
    bool isWhole = false;
    const FileResult read = DraftStore::ReadDraft(file, app_.Context(), draft, isWhole);
    TellFailedRead(world_.faults, "An unsaved text could not be read", file, read);
    if (!read.Ok() || isWhole)
        return isWhole;
    const FileResult aside = SetAside(file);
    if (aside.Ok())
        world_.faults.Tell(
            {"An unsaved text could not be read; its file was set aside", file.string(), "it is damaged"});
    else
        world_.faults.Tell(
            {"An unsaved text is damaged, and its file could not be set aside", file.string(), aside.Reason()});
    return false;
}

bool WritingCommands::AskForUnsavedNote(const std::filesystem::path& file, UnsavedNote& unsaved) {
    const int32_t id = unsaved.draft.note.id;
    const NoteIndex& index = app_.NoteBook().index;
    unsaved.stored = FindNote(index, id, app_.Context(), world_.faults);
    // The index holds a note too whose file can't be read any more, and lacks those of files that couldn't be read.
    const bool isUnread = (!unsaved.stored && index.Contains(id)) || !app_.IsWhole();
    if (unsaved.stored && unsaved.stored->guid != unsaved.draft.note.guid)
        unsaved.stored.reset();
    if (!unsaved.stored && id > 0 && isUnread) {
        world_.faults.Tell({"An unsaved text waits until its note can be read", file.string(),
                            "not all notes of this NoteBook could be read"});
        return false;
    }
    const bool asks = DraftDiffers(unsaved.draft, unsaved.stored ? &*unsaved.stored : nullptr);
    const PromptAnswer answer =
        asks ? world_.prompts.Ask(UnsavedText(unsaved), "Unsaved Note", true) : PromptAnswer::No;
    if (answer == PromptAnswer::No)
        Drafts().RemoveDraft(unsaved.draft.note.guid);
    return answer == PromptAnswer::Yes;
}

std::vector<UnsavedNote> WritingCommands::AskForUnsavedNotes() {
    std::vector<UnsavedNote> wanted;
    for (const std::filesystem::path& file : Drafts().ListDrafts()) {
        UnsavedNote unsaved;
        if (ReadDraft(file, unsaved.draft) && AskForUnsavedNote(file, unsaved))
            wanted.push_back(std::move(unsaved));
    }
    return wanted;
}

bool WritingCommands::OfferUnsavedNote(int32_t id, std::optional<UnsavedNote>& wanted) {
    if (Drafts().ListDrafts().empty())
        return true;
    const std::optional<CNote> note = FindNote(app_.NoteBook().index, id, app_.Context(), world_.faults);
    if (!note)
        return true;
    const std::filesystem::path file = Drafts().FileOf(note->guid);
    std::error_code ignored;
    if (!std::filesystem::exists(file, ignored))
        return true;
    UnsavedNote unsaved;
    if (ReadDraft(file, unsaved.draft)) {
        if (unsaved.draft.note.guid != note->guid)
            return true;
        if (AskForUnsavedNote(file, unsaved)) {
            wanted = std::move(unsaved);
            return true;
        }
    }
    return !std::filesystem::exists(file, ignored);
}

EditNoteSession WritingCommands::ContinueNote(const UnsavedNote& unsaved) {
    return EditNoteSession::ForDraft(world_, unsaved.draft, unsaved.stored ? &*unsaved.stored : nullptr);
}

std::string WritingCommands::CapturedText(const ClipboardText& clipboard) const {
    const NewTextLook look = TextLook();
    std::string rtf = CleanRtf(clipboard.rtf);
    if (!PlainText(rtf).empty())
        return rtf;
    if (!Trim(clipboard.html).empty())
        return WriteRtf(ReadHtml(clipboard.html, {look.font, look.halfPoints}));
    return Trim(clipboard.plain).empty() ? std::string() : RtfFromText(clipboard.plain, look);
}

}  // namespace lore
