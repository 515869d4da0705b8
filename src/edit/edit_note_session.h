#pragma once

#include <functional>
#include <string>

#include "base/record_file.h"
#include "edit/attachment_list.h"
#include "edit/draft_store.h"
#include "edit/edit_world.h"
#include "edit/new_category.h"
#include "notes/note.h"

namespace lore {

/// A note's rich text has to stay under this many bytes, or the readers of its file would cut it.
inline constexpr size_t kLargestRtf = kMaxStringLength;

/// The text control of an editor, as far as the save needs it.
class NoteTextControl {
public:
    virtual ~NoteTextControl() = default;
    /// "\r\n" between paragraphs, none after the last. Blanks count as text; a picture gives no character.
    virtual std::string PlainText() = 0;
    /// The stored bytes if the text was not changed.
    virtual std::string RtfText() = 0;
    /// No marks of the spelling may go into the saved text.
    virtual void StopSpellCheck() {}
};

/// A text that isn't in a window.
class FixedNoteText : public NoteTextControl {
public:
    /// The plain text is what the rich text shows.
    explicit FixedNoteText(std::string rtf);
    std::string PlainText() override { return plain_; }
    std::string RtfText() override { return rtf_; }

private:
    std::string plain_, rtf_;
};

/// What became of a save; all but Saved leave the note as it was.
enum class SaveOutcome {
    Saved,
    NoText,      ///< told; nothing has changed
    TooLong,     ///< told; nothing has changed
    NotWritten,  ///< told as a fault; the note is as it was on the disk and in the lists, and can be saved again
};

/// The one place where a note is created or changed: works on a copy of the note, and brings everything up to date in
/// one fixed sequence when it is saved.
class EditNoteSession {
public:
    /// A new note. It takes sources, the path of set 1, key words and colour of `fill`, which may be null.
    static EditNoteSession ForNewNote(EditWorld& world, const CNote* fill);
    static EditNoteSession ForNote(EditWorld& world, const CNote& note);
    /// A note of an archive, before it lands: SaveNote leaves all there is in `note` and writes nothing.
    static EditNoteSession ForImportNote(EditWorld& world, const CNote& note);
    /// A note as a draft kept it. `stored` is the note of the NoteBook that it continues; null makes it a new note.
    static EditNoteSession ForDraft(EditWorld& world, const Draft& draft, const CNote* stored);

    /// The fields that the window edits: keyWords, borderColor, spellCheck, sources, sourceInfo and categories. Texts,
    /// dates, id and attachments are set by the save.
    CNote note;
    AttachmentList attachments;
    bool syncTicked = false;
    /// Categories that the user made in the editor. The save puts those that the note uses into the forest.
    std::vector<NewCategory> newCategories;
    /// Brings a source of the open NoteBook into Book and gives its id there. Empty where both are the same.
    std::function<int32_t(int32_t openID)> bringSource;
    /// Makes of a note of Book a new one that the open NoteBook can go on with after a crash. Empty as well there.
    std::function<void(CNote&)> makeDraft;

    const CNote& Original() const { return original_; }
    bool IsNew() const { return isNew_; }
    /// The note comes from a draft.
    bool IsUnsaved() const { return isUnsaved_; }
    bool IsImportNote() const { return isImportNote_; }
    /// The NoteBook whose lists the note uses.
    const OpenNoteBook& Book() const { return world_->book; }
    /// The box "Sync this note..." stands only where the NoteBook is linked and its log has entries.
    bool ShowsSyncBox() const;
    /// The spelling may be checked at all.
    bool MayCheckSpelling() const { return world_->settings.IsOne(Option::EnableSpellCheck); }

    /// With EditWorld::unwritten, Saved says that the note waits there and stands in the lists; its file, and the sync
    /// log on the disk, are left to whoever writes it.
    SaveOutcome SaveNote(NoteTextControl& text);
    /// Asks where the warning is on. True if the window may close.
    bool CancelNote();

private:
    EditNoteSession(EditWorld& world, CNote edited, CNote original, bool isNew);

    bool TakeText(NoteTextControl& text, SaveOutcome& refused);
    bool GiveID();
    bool AddNewCategories();
    bool IsSyncWanted() const;
    void LogChange();
    SaveOutcome WriteNote();
    SaveOutcome GoBack();

    EditWorld* world_;
    CNote original_;
    bool isNew_;
    bool isUnsaved_ = false, isImportNote_ = false;
    bool isFiled_;  // the note stands in the lists of the NoteBook as original_ has it
};

/// The note that a new note is filled from: the one that was saved last, if the list holds it; else the last one of the
/// list; none where the setting is off.
const CNote* FillSource(const Settings& settings, const CNote* lastSaved, const CNote* lastOfList);

}  // namespace lore
