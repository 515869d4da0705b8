#include "ui/note_editor/note_editor_window.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <QTextEdit>
#include <QTimer>
#include <algorithm>

#include "base/text.h"
#include "ui/editor/rich_text_edit.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/note_editor/attachment_open.h"
#include "ui/note_editor/attachment_panel.h"
#include "ui/note_editor/category_panel.h"
#include "ui/note_editor/color_panel.h"
#include "ui/note_editor/draft_writer.h"
#include "ui/note_editor/key_word_panel.h"
#include "ui/note_editor/note_text_pane.h"
#include "ui/note_editor/source_panel.h"
#include "ui/ports/quit_guard.h"

namespace lore {

namespace {

constexpr int kSpellDelay = 200;
constexpr int kSpellToggleDelay = 10;

/// The pane's text as the save takes it.
class PaneText : public NoteTextControl {
public:
    explicit PaneText(NoteTextPane& pane) : pane_(pane) {}
    std::string PlainText() override { return pane_.PlainText(); }
    std::string RtfText() override { return pane_.RtfText(); }
    void StopSpellCheck() override { pane_.SetSpellCheck(false); }

private:
    NoteTextPane& pane_;
};

}  // namespace

NoteEditorWindow::NoteEditorWindow(EditNoteSession session, WritingCommands& commands, CLorebinderApp& app,
                                   Theme& theme, QWidget* parent)
    : QDialog(parent),
      session_(std::move(session)),
      commands_(commands),
      app_(app),
      theme_(theme),
      rows_(session_.Book().sources, session_.Book().authors),
      paths_(
          session_.Book().categories,
          [&settings = app.GetSettings()](int32_t id) {
              settings.Set(Option::MaxCategoryID, std::max(settings.Int(Option::MaxCategoryID), id));
              return settings.Int(Option::MaxCategoryID);
          },
          app.Ports().prompts) {
    setWindowTitle(session_.IsImportNote() ? tr("View/Edit Import Note") : tr("Edit Note"));
    setObjectName("editNote");
    setModal(true);
    rows_.Fill(session_.note, true);
    FillPaths();
    MakeLayout();
    TakeSpellOptions();
    text_->Load(session_.note.rtfText);
    StartDrafts();
    ConnectParts();
    OrderTabs();
    RestorePlace();
    TakeFields(session_.note);
    opened_ = session_.note;
    openedSync_ = session_.syncTicked;
    faults_.SetBar(faultBar_);
    before_ = commands_.ShowFaultsIn(&faults_);
    if (session_.MayCheckSpelling() && session_.note.spellCheck)
        RunSpellTimer(true);
    text_->Edit()->setFocus();
}

NoteEditorWindow::~NoteEditorWindow() {
    drafts_->Stop();
    commands_.ShowFaultsIn(before_);
    faults_.SetBar(nullptr);
}

void NoteEditorWindow::FillPaths() {
    if (session_.IsUnsaved())
        paths_.FillUnsaved(session_.note, session_.Original());
    else
        paths_.Fill(session_.note);
}

void NoteEditorWindow::PasteClipboard() {
    activateWindow();
    text_->Edit()->setFocus();
    text_->Edit()->paste();
}

void NoteEditorWindow::SetUnsavedText(const std::string& rtf) {
    text_->Load(rtf);
    unsavedText_ = true;
    TouchDraft();
}

void NoteEditorWindow::ConnectParts() {
    const auto touch = [this] { TouchDraft(); };
    connect(text_, &NoteTextPane::Changed, this, touch);
    connect(sources_, &SourcePanel::Changed, this, touch);
    connect(categories_, &CategoryPanel::Changed, this, touch);
    connect(keyWords_->Field(), &QLineEdit::textChanged, this, touch);
    connect(attachments_, &AttachmentPanel::Changed, this, touch);
    connect(color_, &ColorPanel::Changed, this, touch);
    connect(sync_, &QCheckBox::toggled, this, touch);
    connect(text_, &NoteTextPane::FilesDropped, attachments_, &AttachmentPanel::AddDropped, Qt::QueuedConnection);
    connect(text_, &NoteTextPane::LinkOpened, this,
            [this](const QString& address) { OpenWebLink(address, app_.Ports().prompts); });
    connect(text_, &NoteTextPane::SizeLimitPassed, this, &NoteEditorWindow::TellSize);
    connect(text_, &NoteTextPane::LanguageChosen, this, [this](const QString& language) {
        app_.GetSettings().Set(Option::SpellLanguage, FromQString(language));
        app_.GetSettings().Save(app_.Store(), Option::SpellLanguage);
    });
    connect(text_, &NoteTextPane::SpellOptionsRequested, this, [this] {
        emit OptionsRequested(this);
        TakeSpellOptions();
    });
    connect(spelling_, &QCheckBox::toggled, this, &NoteEditorWindow::SpellBoxToggled);
    connect(faultBar_, &FaultBar::TryAgainRequested, this, &NoteEditorWindow::SaveNote, Qt::QueuedConnection);
    connect(save_, &QPushButton::clicked, this, &NoteEditorWindow::SaveNote);
    connect(cancel_, &QPushButton::clicked, this, &NoteEditorWindow::CancelNote);
}

void NoteEditorWindow::TakeFields(CNote& note) const {
    rows_.WriteBack(note);
    paths_.WriteBack(note);
    // Words that nobody touched keep the bytes in which they stand.
    if (const QString words = keyWords_->Field()->text(); words != ToQString(note.keyWords))
        note.keyWords = FromQString(words);
    note.borderColor = color_->Color();
    note.attachments = AttachmentRecords(session_.attachments.Items());
}

void NoteEditorWindow::SaveNote() {
    StorePlace();
    TakeFields(session_.note);
    session_.newCategories = paths_.NewCategories();
    session_.syncTicked = sync_->isChecked();
    if (!MakeTextFit())
        return;
    PaneText text(*text_);
    const SaveOutcome outcome = session_.SaveNote(text);
    if (outcome == SaveOutcome::Saved) {
        FinishDraft();
        accept();
        return;
    }
    text_->Edit()->setFocus();
    if (session_.MayCheckSpelling() && session_.note.spellCheck)
        text_->SetSpellCheck(true);
    if (outcome == SaveOutcome::NotWritten)
        TouchDraft();
}

void NoteEditorWindow::CancelNote() {
    StorePlace();
    const bool changed = SomethingWouldBeLost();
    const bool keeps = changed && IsQuitting();
    if (changed && (keeps ? !KeepDraft() : !session_.CancelNote()))
        return;
    if (!keeps)
        FinishDraft();
    QDialog::reject();
}

void NoteEditorWindow::reject() {
    CancelNote();
}

bool NoteEditorWindow::SomethingWouldBeLost() {
    Draft now;
    now.note = session_.note;
    TakeFields(now.note);
    return unsavedText_ || text_->IsModified() || sync_->isChecked() != openedSync_ || DraftDiffers(now, &opened_);
}

void NoteEditorWindow::TouchDraft() {
    drafts_->Touch();
}

void NoteEditorWindow::StartDrafts() {
    delete drafts_;
    drafts_ = new DraftWriter(
        DraftStore(app_.NoteBook().paths),
        [this](std::function<void(Draft)> whenReady) { CollectDraft(std::move(whenReady)); }, faults_, this);
}

void NoteEditorWindow::FinishDraft() {
    drafts_->Stop();
    // That of an import note, and pictures that have left its text, wait for the import.
    if (!session_.IsImportNote())
        drafts_->Store().RemoveDraft(session_.note.guid);
}

/// Keeps the note as it stands for the next start. False if the window has to stay: no draft could be written, or the
/// import that the note belongs to would drop it with the window.
bool NoteEditorWindow::KeepDraft() {
    drafts_->Stop();
    const FileResult kept = drafts_->Store().WriteDraft(DraftOf(text_->RtfText(), text_->PlainText()));
    if (kept.Ok() && !session_.IsImportNote())
        return true;
    faults_.Tell({"Lorebinder was told to quit but stays open: this note isn't saved. Save it first",
                  drafts_->Store().Folder().string(),
                  kept.Ok() ? "the changes to this note of an import are lost unless it is saved" : kept.Reason()});
    StartDrafts();
    TouchDraft();
    return false;
}

Draft NoteEditorWindow::DraftOf(std::string rtf, std::string plain) {
    Draft draft;
    draft.note = session_.note;
    TakeFields(draft.note);
    draft.note.rtfText = std::move(rtf);
    draft.note.plainText = std::move(plain);
    draft.baseEdited = session_.Original().dateEdited;
    draft.written = app_.Ports().clock.Now();
    draft.syncTicked = sync_->isChecked();
    if (session_.IsNew())
        draft.note.id = -1;
    if (session_.makeDraft)
        session_.makeDraft(draft.note);
    return draft;
}

void NoteEditorWindow::CollectDraft(std::function<void(Draft)> whenReady) {
    text_->CaptureAside([this, whenReady = std::move(whenReady)](std::string rtf, std::string plain) {
        whenReady(DraftOf(std::move(rtf), std::move(plain)));
    });
}

void NoteEditorWindow::TellSize(bool tooLarge, qint64 bytes) {
    sizeText_->setText(tr("This text takes about %L1 bytes; a note can hold %L2. Move pictures to attachments, or "
                          "divide it between two notes.")
                           .arg(bytes)
                           .arg(static_cast<qulonglong>(kLargestRtf - 1)));
    sizeText_->setVisible(tooLarge);
}

bool NoteEditorWindow::MakeTextFit() {
    while (text_->RtfSize() >= RichTextEdit::kNearLargestRtf) {
        const size_t size = text_->RtfText().size();
        if (size < kLargestRtf || text_->Pictures().empty())
            return true;
        TellSize(true, static_cast<qint64>(size));
        const QString question =
            tr("The text of this note takes %L1 bytes with its pictures; a note can hold %L2.\n\nDo you wish to move "
               "its largest pictures to the attachments of the note, and then save it? The attachments keep "
               "them whole.")
                .arg(static_cast<qulonglong>(size))
                .arg(static_cast<qulonglong>(kLargestRtf - 1));
        if (app_.Ports().prompts.Ask(FromQString(question), "Note Too Large") != PromptAnswer::Yes ||
            !MovePictures(size))
            return false;
        TellSize(text_->RtfSize() >= RichTextEdit::kLargestRtf, text_->RtfSize());
    }
    return true;
}

bool NoteEditorWindow::MovePictures(size_t size) {
    std::vector<TextPicture> pictures = text_->Pictures();
    std::sort(pictures.begin(), pictures.end(),
              [](const TextPicture& a, const TextPicture& b) { return a.bytes > b.bytes; });
    std::vector<int> positions;
    // Each byte of a picture takes two in the text.
    for (size_t spare = 0; positions.size() < pictures.size() && size - std::min(size, spare) >= kLargestRtf;) {
        spare += 2 * pictures[positions.size()].bytes;
        positions.push_back(pictures[positions.size()].position);
    }
    const auto listed = static_cast<std::ptrdiff_t>(session_.attachments.Items().size());
    bool moved = true;
    for (const TextPicture& picture : text_->TakePictures(positions)) {
        moved = AttachPicture(picture);
        if (!moved)
            break;
    }
    if (!moved) {
        // All of them stand in the text again, none of them twice.
        std::vector<EditedAttachment>& items = session_.attachments.Items();
        items.erase(items.begin() + listed, items.end());
        text_->Edit()->undo();
    }
    attachments_->Rebuild();
    return moved;
}

/// Puts a picture that has left the text into a file beside the draft, and that among the attachments.
bool NoteEditorWindow::AttachPicture(const TextPicture& picture) {
    const std::vector<EditedAttachment>& items = session_.attachments.Items();
    const std::string ending = "." + std::string(FileExtension(picture.fileName.toStdString()));
    std::string name;
    const auto isTaken = [&name](const EditedAttachment& item) {
        return std::filesystem::path(item.record.sourceFile).filename() == name;
    };
    // A draft that goes on may have brought such files along.
    do
        name = "Picture " + std::to_string(++movedPictures_) + ending;
    while (std::any_of(items.begin(), items.end(), isTaken));
    std::filesystem::path path;
    const DraftStore store(session_.Book().paths);
    const FileResult kept = store.KeepFile(session_.note.guid, name, picture.data, path);
    if (!kept.Ok()) {
        faults_.Tell({"A picture could not be moved to the attachments", path.string(), kept.Reason()});
        return false;
    }
    return session_.attachments.AddFile(path.string());
}

void NoteEditorWindow::TakeSpellOptions() {
    const bool mayCheck = session_.MayCheckSpelling();
    spelling_->setEnabled(mayCheck);
    text_->SetSpelling(commands_.Spelling(), DerivedMarkStyle(app_.GetSettings()), SkippedWordsOf(app_.GetSettings()));
    // A window that opens checks a little later.
    text_->SetSpellCheck(isVisible() && mayCheck && session_.note.spellCheck);
}

void NoteEditorWindow::SpellBoxToggled(bool disabled) {
    session_.note.spellCheck = !disabled;
    RunSpellTimer(!disabled);
    TouchDraft();
}

void NoteEditorWindow::RunSpellTimer(bool starts) {
    const int delay = starts && !isVisible() ? kSpellDelay : kSpellToggleDelay;
    QTimer::singleShot(delay, this, [this, starts] {
        Progress& progress = app_.Ports().progress;
        progress.ShowStandBy(starts ? "Running spell check...." : "Removing spell check marks....");
        text_->SetSpellCheck(starts);
        progress.HideStandBy();
    });
}

void NoteEditorWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return QDialog::keyPressEvent(event);
    // Enter in a field saves nothing; Ctrl+Enter does.
    if (auto* const button = qobject_cast<QPushButton*>(focusWidget()))
        button->click();
}

}  // namespace lore
