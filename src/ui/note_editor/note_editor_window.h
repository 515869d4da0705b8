#pragma once

#include <QDialog>
#include <memory>

#include "app/writing_commands.h"
#include "edit/category_assignment.h"
#include "edit/source_rows.h"
#include "ui/controls/bar_faults.h"
#include "ui/controls/fault_bar.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QSplitter;
class QTabWidget;
class QVBoxLayout;

namespace lore {

class AttachmentPanel;
class CategoryPanel;
class ColorPanel;
class DraftWriter;
class KeyWordPanel;
class NoteTextPane;
class SourcePanel;
class Theme;
struct TextPicture;

/// The window in which a note is written and changed. Nothing reaches the NoteBook before "Save"; "Cancel" leaves
/// everything as it was. Meanwhile a draft of the note is kept beside the data.
class NoteEditorWindow : public QDialog {
    Q_OBJECT

public:
    /// All but the session outlive the window.
    NoteEditorWindow(EditNoteSession session, WritingCommands& commands, CLorebinderApp& app, Theme& theme,
                     QWidget* parent = nullptr);
    ~NoteEditorWindow() override;

    /// A text that isn't the note's stored one, such as a captured one or that of a draft; it counts as a change.
    void SetUnsavedText(const std::string& rtf);
    /// Takes the clipboard into the text at its cursor, and goes there.
    void PasteClipboard();
    /// The note as the save left it.
    const CNote& Note() const { return session_.note; }
    const EditNoteSession& Session() const { return session_; }

    void SaveNote();
    void CancelNote();

    NoteTextPane* Text() const { return text_; }
    SourcePanel* Sources() const { return sources_; }
    CategoryPanel* Categories() const { return categories_; }
    KeyWordPanel* KeyWords() const { return keyWords_; }
    AttachmentPanel* Attachments() const { return attachments_; }
    ColorPanel* Color() const { return color_; }
    DraftWriter* Drafts() const { return drafts_; }
    FaultBar* Faults() const { return faultBar_; }

    void reject() override;

signals:
    /// The options are to be shown over this window; it takes what they say about spelling once they are closed.
    void OptionsRequested(QWidget* over);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void MakeLayout();
    void MakeHeader(QVBoxLayout& layout);
    QWidget* MakeSide();
    QTabWidget* MakeTabs(QWidget* parent);
    const CSource* SourceToEdit(int32_t id);
    void MakeBoxes(QVBoxLayout& layout, QWidget* parent);
    void MakeButtons(QVBoxLayout& layout);
    void ConnectParts();
    void OrderTabs();
    void RestorePlace();
    void StorePlace();

    void TakeFields(CNote& note) const;
    bool SomethingWouldBeLost();
    bool MakeTextFit();
    bool MovePictures(size_t size);
    bool AttachPicture(const TextPicture& picture);
    void TouchDraft();
    void StartDrafts();
    void FinishDraft();
    bool KeepDraft();
    Draft DraftOf(std::string rtf, std::string plain);
    void CollectDraft(std::function<void(Draft)> whenReady);
    void TakeSpellOptions();
    void SpellBoxToggled(bool disabled);
    void RunSpellTimer(bool starts);
    void TellSize(bool tooLarge, qint64 bytes);
    void FillPaths();

    EditNoteSession session_;
    WritingCommands& commands_;
    CLorebinderApp& app_;
    Theme& theme_;
    SourceRows rows_;
    CategoryAssignment paths_;
    BarFaults faults_;
    FaultNotice* before_ = nullptr;
    CNote opened_;  // the fields as they were when the window opened
    bool openedSync_ = false;
    bool unsavedText_ = false;
    int movedPictures_ = 0;

    FaultBar* faultBar_ = nullptr;
    QSplitter* split_ = nullptr;
    NoteTextPane* text_ = nullptr;
    QTabWidget* tabs_ = nullptr;
    SourcePanel* sources_ = nullptr;
    CategoryPanel* categories_ = nullptr;
    KeyWordPanel* keyWords_ = nullptr;
    AttachmentPanel* attachments_ = nullptr;
    ColorPanel* color_ = nullptr;
    QCheckBox* sync_ = nullptr;
    QCheckBox* spelling_ = nullptr;
    QLabel *headerTitle_ = nullptr, *sizeText_ = nullptr;
    QPushButton *cancel_ = nullptr, *save_ = nullptr;
    DraftWriter* drafts_ = nullptr;
};

}  // namespace lore
