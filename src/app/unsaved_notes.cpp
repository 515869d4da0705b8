#include "app/unsaved_notes.h"

#include "app/lorebinder_app.h"
#include "base/file_copy.h"
#include "base/text.h"
#include "edit/edit_world.h"
#include "notes/file_faults.h"
#include "notes/note_finder.h"

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

}  // namespace

DraftStore UnsavedNotes::Drafts() const {
    return DraftStore(app_.NoteBook().paths);
}

/// False, told, if it can't be had.
bool UnsavedNotes::ReadDraft(const std::filesystem::path& file, Draft& draft) const {
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

bool UnsavedNotes::AskFor(const std::filesystem::path& file, UnsavedNote& unsaved) const {
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

std::vector<UnsavedNote> UnsavedNotes::AskForAll() const {
    std::vector<UnsavedNote> wanted;
    for (const std::filesystem::path& file : Drafts().ListDrafts()) {
        UnsavedNote unsaved;
        if (ReadDraft(file, unsaved.draft) && AskFor(file, unsaved))
            wanted.push_back(std::move(unsaved));
    }
    return wanted;
}

bool UnsavedNotes::Offer(int32_t id, std::optional<UnsavedNote>& wanted) const {
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
        if (AskFor(file, unsaved)) {
            wanted = std::move(unsaved);
            return true;
        }
    }
    return !std::filesystem::exists(file, ignored);
}

EditNoteSession UnsavedNotes::Continue(const UnsavedNote& unsaved) const {
    return EditNoteSession::ForDraft(world_, unsaved.draft, unsaved.stored ? &*unsaved.stored : nullptr);
}

}  // namespace lore
