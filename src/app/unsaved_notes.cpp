#include "app/unsaved_notes.h"

#include "app/lorebinder_app.h"
#include "base/file_copy.h"
#include "base/text.h"
#include "edit/edit_world.h"
#include "notes/file_faults.h"
#include "notes/note_finder.h"

namespace lore {

namespace {

using Answer = UnsavedOffer::Answer;

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

}  // namespace

DraftStore UnsavedNotes::Drafts() const {
    return DraftStore(app_.NoteBook().paths);
}

/// One that can be had, without its note.
UnsavedOffer UnsavedNotes::Read(const std::filesystem::path& file) const {
    Loaded<Draft> loaded = DraftStore::ReadDraft(file, app_.Context());
    TellFailedRead(world_.faults, "An unsaved text could not be read", file, loaded.file);
    if (loaded.ReadWhole())
        return {Answer::GoOn, {std::move(loaded.value), {}}};
    if (!loaded.file.Ok())
        return {loaded.file.Missing() ? Answer::None : Answer::Waits, {}};
    const FileResult aside = SetAside(file);
    if (aside.Ok())
        world_.faults.Tell(
            {"An unsaved text could not be read; its file was set aside", file.string(), "it is damaged"});
    else
        world_.faults.Tell(
            {"An unsaved text is damaged, and its file could not be set aside", file.string(), aside.Reason()});
    return {aside.Ok() ? Answer::None : Answer::Waits, {}};
}

UnsavedOffer UnsavedNotes::Ask(const std::filesystem::path& file, UnsavedNote unsaved) const {
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
        return {Answer::Waits, {}};
    }
    const bool asks = DraftDiffers(unsaved.draft, unsaved.stored ? &*unsaved.stored : nullptr);
    const PromptAnswer answer =
        asks ? world_.prompts.Ask(UnsavedText(unsaved), "Unsaved Note", true) : PromptAnswer::No;
    if (answer == PromptAnswer::Yes)
        return {Answer::GoOn, std::move(unsaved)};
    if (answer == PromptAnswer::No)
        Drafts().RemoveDraft(unsaved.draft.note.guid);
    std::error_code ignored;
    return {std::filesystem::exists(file, ignored) ? Answer::Waits : Answer::None, {}};
}

std::vector<UnsavedNote> UnsavedNotes::AskForAll() const {
    std::vector<UnsavedNote> wanted;
    for (const std::filesystem::path& file : Drafts().ListDrafts()) {
        UnsavedOffer offer = Read(file);
        if (offer.answer == Answer::GoOn)
            offer = Ask(file, std::move(offer.note));
        if (offer.answer == Answer::GoOn)
            wanted.push_back(std::move(offer.note));
    }
    return wanted;
}

UnsavedOffer UnsavedNotes::Offer(int32_t id) const {
    if (Drafts().ListDrafts().empty())
        return {};
    const std::optional<CNote> note = FindNote(app_.NoteBook().index, id, app_.Context(), world_.faults);
    if (!note)
        return {};
    const std::filesystem::path file = Drafts().FileOf(note->guid);
    UnsavedOffer offer = Read(file);
    if (offer.answer != Answer::GoOn)
        return offer;
    return offer.note.draft.note.guid == note->guid ? Ask(file, std::move(offer.note)) : UnsavedOffer();
}

EditNoteSession UnsavedNotes::Continue(const UnsavedNote& unsaved) const {
    return EditNoteSession::ForDraft(world_, unsaved.draft, unsaved.stored ? &*unsaved.stored : nullptr);
}

}  // namespace lore
