#include "edit/edit_note_session.h"

#include <algorithm>
#include <utility>

#include "base/free_ids.h"
#include "base/record_file.h"
#include "base/text.h"
#include "edit/sync_record.h"
#include "notes/note_filing.h"
#include "notes/note_store.h"
#include "notes/notebook_lists.h"
#include "notes/sync_stamp.h"
#include "rtf/rtf.h"

namespace lore {

namespace {

constexpr char kCancelTitle[] = "Continue?";
constexpr char kCancelText[] =
    "Are you sure you wish to cancel?\n\nYour changes will be lost and not saved in your database!";
constexpr char kNoMoreWarnings[] = "Do not display this warning again.";

std::string TooLongText(size_t size) {
    return "The text of this note takes " + std::to_string(size) +
           " bytes with its pictures and formats; a note can hold " + std::to_string(kLargestRtf - 1) +
           ".\n\nNothing was saved, and your text stays here. Move pictures to attachments, or divide the text between "
           "two notes, and save again.";
}

CNote FilledNote(const CNote* fill) {
    CNote note;
    if (!fill)
        return note;
    note.sources = fill->sources;
    note.categories[0] = fill->categories[0];
    note.keyWords = fill->keyWords;
    note.borderColor = fill->borderColor;
    return note;
}

/// A wait text that goes when the work is done.
class StandBy {
public:
    explicit StandBy(Progress& progress) : progress_(progress) {}
    StandBy(const StandBy&) = delete;
    StandBy& operator=(const StandBy&) = delete;
    ~StandBy() { progress_.HideStandBy(); }
    void Show(const char* text) { progress_.ShowStandBy(text); }

private:
    Progress& progress_;
};

}  // namespace

FixedNoteText::FixedNoteText(std::string rtf)
    : plain_(FromUtf8(WithCrLf(lore::PlainText(rtf)))), rtf_(std::move(rtf)) {}

EditNoteSession EditNoteSession::ForNewNote(EditWorld& world, const CNote* fill) {
    CNote edited = FilledNote(fill);
    edited.guid = world.guids.NewGuid();
    return {world, std::move(edited), CNote(), true};
}

EditNoteSession EditNoteSession::ForNote(EditWorld& world, const CNote& note) {
    return {world, note, note, false};
}

EditNoteSession EditNoteSession::ForImportNote(EditWorld& world, const CNote& note) {
    EditNoteSession session(world, note, note, false);
    session.isImportNote_ = true;
    return session;
}

EditNoteSession EditNoteSession::ForDraft(EditWorld& world, const Draft& draft, const CNote* stored) {
    CNote edited = draft.note;
    edited.id = stored ? stored->id : -1;
    EditNoteSession session(world, std::move(edited), stored ? *stored : CNote(), !stored);
    session.isUnsaved_ = true;
    if (session.ShowsSyncBox())
        session.syncTicked = draft.syncTicked;
    return session;
}

EditNoteSession::EditNoteSession(EditWorld& world, CNote edited, CNote original, bool isNew)
    : note(std::move(edited)),
      attachments(world.prompts, world.progress, world.faults, world.book.paths.Attachments()),
      world_(&world),
      original_(std::move(original)),
      isNew_(isNew),
      isFiled_(!isNew) {
    attachments.Fill(note.attachments);
    for (EditedAttachment& attachment : attachments.Items())
        attachment.isToldOf =
            std::any_of(original_.attachments.begin(), original_.attachments.end(), [&](const CAttachment& stored) {
                return stored.storedFile.empty() && stored.sourceFile == attachment.record.sourceFile;
            });
    const CSyncInfo* const record = world.book.syncLog.FindSyncInfo(note.guid);
    syncTicked = ShowsSyncBox() && (!record || record->SyncState == kStoredTrue);
}

bool EditNoteSession::ShowsSyncBox() const {
    const SyncLog& log = world_->book.syncLog;
    return log.link.IsLinked() && !log.Records().empty();
}

SaveOutcome EditNoteSession::SaveNote(NoteTextControl& text) {
    SaveOutcome refused = SaveOutcome::NoText;
    StandBy standBy(world_->progress);
    if (!TakeText(text, refused))
        return refused;
    standBy.Show("Saving Information....");
    const DateTime now = world_->clock.Now();
    if (note.id < 0)
        note.dateCreated = now;
    note.dateEdited = now;
    note.keyWords = CleanText(Trim(note.keyWords));
    if (isImportNote_) {
        note.attachments = AttachmentRecords(attachments.Items());
        return SaveOutcome::Saved;
    }
    if (isFiled_)
        UnfileNote(world_->book, original_);
    isFiled_ = false;
    if ((note.id < 0 && !GiveID()) || !AddNewCategories())
        return GoBack();
    FileNote(world_->book, note);
    standBy.Show("Copying in new attachments....");
    CopyInNewAttachments(attachments.Items(), world_->book.paths, world_->Context(), world_->faults);
    note.attachments = AttachmentRecords(attachments.Items());
    standBy.Show("Saving Final Information....");
    LogChange();
    return WriteNote();
}

/// The only step that may refuse.
bool EditNoteSession::TakeText(NoteTextControl& text, SaveOutcome& refused) {
    std::string plain = CleanText(text.PlainText());
    if (plain.empty()) {
        world_->prompts.Message("Note must contain some text.", "No Text In Note", PromptIcon::Warning);
        refused = SaveOutcome::NoText;
        return false;
    }
    text.StopSpellCheck();
    std::string rtf = CleanText(text.RtfText());
    if (rtf.size() >= kLargestRtf || plain.size() >= kLargestRtf) {
        world_->prompts.Message(TooLongText(std::max(rtf.size(), plain.size())), "Note Too Large", PromptIcon::Warning);
        refused = SaveOutcome::TooLong;
        return false;
    }
    note.plainText = std::move(plain);
    note.rtfText = std::move(rtf);
    return true;
}

/// False, and told, if there is none.
bool EditNoteSession::GiveID() {
    Settings& settings = world_->settings;
    int last = settings.Int(Option::MaxNoteID);
    const int32_t id = world_->book.index.GiveID(last);
    if (id == 0) {
        world_->faults.Tell({"The note could not be saved", world_->book.paths.Notes().string(), kNoFreeID});
        return false;
    }
    note.id = id;
    settings.Set(Option::MaxNoteID, last);
    world_->storeSettings();
    return true;
}

/// False, and the forest as it was, if the list can't be written: no note may name a category that is missing.
bool EditNoteSession::AddNewCategories() {
    if (newCategories.empty())
        return true;
    CProCategoryList& forest = world_->book.categories;
    const CProCategoryList before = forest;
    int highest = world_->settings.Int(Option::MaxCategoryID);
    if (!AddUsedCategories(forest, newCategories, note, highest))
        return true;
    world_->settings.Set(Option::MaxCategoryID, highest);
    world_->storeSettings();
    const bool written = WriteCategories(world_->book, forest, world_->faults);
    if (!written)
        forest.Assign(before);
    return written;
}

bool EditNoteSession::IsSyncWanted() const {
    return ShowsSyncBox() ? syncTicked : world_->book.syncLog.link.IsLinked();
}

void EditNoteSession::LogChange() {
    SyncLog& log = world_->book.syncLog;
    if (!log.link.IsLinked())
        return;
    const std::optional<CSyncInfo> record =
        ChangedRecord(log.FindSyncInfo(note.guid), {note, original_, isNew_, IsSyncWanted()}, world_->clock.NowUtc());
    if (!record)
        return;
    log.ReplaceSyncInfo(*record);
    if (!world_->unwritten)
        WriteSyncLog(world_->book, world_->faults);
}

SaveOutcome EditNoteSession::WriteNote() {
    const ReadContext context = world_->Context();
    if (world_->unwritten) {
        world_->unwritten->push_back(note);
    } else if (!NoteStore(world_->book, context, world_->faults, world_->texts).SaveNote(note)) {
        UnfileNote(world_->book, note);
        return GoBack();
    }
    original_ = note;
    isNew_ = false;
    isFiled_ = true;
    return SaveOutcome::Saved;
}

/// The lists name the note as it was before the save.
SaveOutcome EditNoteSession::GoBack() {
    if (!isNew_)
        FileNote(world_->book, original_);
    isFiled_ = !isNew_;
    return SaveOutcome::NotWritten;
}

bool EditNoteSession::CancelNote() {
    Settings& settings = world_->settings;
    if (!settings.Flag(Option::szSaveWarning))
        return true;
    bool noMore = false;
    if (world_->prompts.AskWithBox(kCancelText, kCancelTitle, kNoMoreWarnings, noMore) != PromptAnswer::Yes)
        return false;
    if (noMore) {
        settings.Set(Option::szSaveWarning, 0);
        world_->storeSettings();
    }
    return true;
}

const CNote* FillSource(const Settings& settings, const CNote* lastSaved, const CNote* lastOfList) {
    if (settings.Int(Option::EnableNoteAutoFill) == 0)
        return nullptr;
    return lastSaved ? lastSaved : lastOfList;
}

}  // namespace lore
