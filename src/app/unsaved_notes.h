#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "edit/draft_store.h"
#include "edit/edit_note_session.h"
#include "edit/edit_world.h"

namespace lore {

class CLorebinderApp;

/// A text that a crash kept from being saved.
struct UnsavedNote {
    Draft draft;
    std::optional<CNote> stored;  ///< the note of the NoteBook that it continues
};

/// What a text that wasn't saved was offered for.
struct UnsavedOffer {
    enum class Answer {
        None,   ///< there is no such text, or none any more
        GoOn,   ///< the user goes on with `note`
        Waits,  ///< it waits on: an editor would write over it
    };
    Answer answer = Answer::None;
    UnsavedNote note;
};

/// The texts of the open NoteBook that were not saved, each with a question. One that the user discards is removed. A
/// damaged one is set aside and told; one that can't be read now, or whose note may stand in a file that can't, waits
/// and is told; one that the note holds already goes without a word.
class UnsavedNotes {
public:
    /// Both outlive this.
    UnsavedNotes(CLorebinderApp& app, EditWorld& world) : app_(app), world_(world) {}

    /// Where the texts of the open NoteBook are kept.
    DraftStore Drafts() const;
    /// Asks for all of them. Gives those that the user goes on with.
    std::vector<UnsavedNote> AskForAll() const;
    /// Asks for the text of one note, before it is edited.
    UnsavedOffer Offer(int32_t id) const;
    /// A session that goes on with one.
    EditNoteSession Continue(const UnsavedNote& unsaved) const;

private:
    UnsavedOffer Read(const std::filesystem::path& file) const;
    UnsavedOffer Ask(const std::filesystem::path& file, UnsavedNote unsaved) const;

    CLorebinderApp& app_;
    EditWorld& world_;
};

}  // namespace lore
