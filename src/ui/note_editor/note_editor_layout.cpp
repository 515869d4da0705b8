#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QTextEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "ui/controls/dialog_parts.h"
#include "ui/controls/main_button_keys.h"
#include "ui/controls/tab_keys.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/look/window_place.h"
#include "ui/note_editor/attachment_panel.h"
#include "ui/note_editor/category_panel.h"
#include "ui/note_editor/color_panel.h"
#include "ui/note_editor/key_word_panel.h"
#include "ui/note_editor/note_editor_window.h"
#include "ui/note_editor/note_text_pane.h"
#include "ui/note_editor/source_panel.h"
#include "ui/sources/source_dialogs.h"

namespace lore {

namespace {

constexpr char kSplitKey[] = "EditNoteSplit";
constexpr char kDateFormat[] = "%m/%d/%Y  -  %I:%M:%S %p";

// In average characters and lines of text.
constexpr int kDefaultColumns = 150;
constexpr int kDefaultLines = 46;
constexpr int kSideColumns = 48;

}  // namespace

void NoteEditorWindow::MakeLayout() {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kSpace * 4, kSpace * 4, kSpace * 4, kSpace * 4);
    layout->setSpacing(kSpace * 3);
    faultBar_ = new FaultBar(theme_, this);
    layout->addWidget(faultBar_);
    MakeHeader(*layout);
    split_ = new QSplitter(this);
    split_->setChildrenCollapsible(false);
    split_->setHandleWidth(1);
    text_ = new NoteTextPane(commands_.TextLook(), theme_, split_);
    text_->Edit()->setAccessibleName(tr("Note Text"));
    text_->setContentsMargins(0, 0, kSpace * 3, 0);
    text_->setMinimumWidth(fontMetrics().averageCharWidth() * 30);
    split_->addWidget(text_);
    split_->addWidget(MakeSide());
    split_->setStretchFactor(0, 1);
    split_->setStretchFactor(1, 0);
    layout->addWidget(split_, 1);
    sizeText_ = new QLabel(this);
    sizeText_->setObjectName("textSize");
    sizeText_->setWordWrap(true);
    sizeText_->hide();
    layout->addWidget(sizeText_);
    MakeButtons(*layout);
}

void NoteEditorWindow::MakeHeader(QVBoxLayout& layout) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    auto* const title = new QLabel(tr("Note &Text"), this);
    QFont font = theme_.Font(TextSize::Body);
    font.setWeight(QFont::DemiBold);
    title->setFont(font);
    const DateTime& edited = session_.Original().dateEdited;
    auto* const date = new QLabel(tr("Date/Time of Last Edit") + QStringLiteral(":  ") +
                                      (edited.IsNull() ? tr("not saved yet") : ToQString(edited.Format(kDateFormat))),
                                  this);
    date->setObjectName("lastEdit");
    row->addWidget(title);
    row->addStretch(1);
    row->addWidget(date);
    layout.addLayout(row);
    headerTitle_ = title;
}

QWidget* NoteEditorWindow::MakeSide() {
    auto* const scroll = new QScrollArea(split_);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* const side = new QWidget(scroll);
    auto* const layout = new QVBoxLayout(side);
    layout->setContentsMargins(kSpace * 3, 0, kSpace, 0);
    layout->setSpacing(kSpace * 4);
    layout->addWidget(MakeTabs(side), 1);
    keyWords_ = new KeyWordPanel(
        [this](const std::string& field) {
            return OpenKeyWordPicker(session_.Book().keyWords, field, session_.note.id, app_.Ports().prompts,
                                     app_.Ports().progress);
        },
        theme_, side);
    keyWords_->Field()->setText(ToQString(session_.note.keyWords));
    keyWords_->Field()->setCursorPosition(0);
    layout->addWidget(keyWords_);
    attachments_ = new AttachmentPanel(session_.attachments, session_.Book().paths.Attachments(), app_.Ports().prompts,
                                       theme_, side);
    layout->addWidget(attachments_);
    color_ = new ColorPanel(session_.Book().colors, session_.note.borderColor, theme_, side);
    layout->addWidget(color_);
    MakeBoxes(*layout, side);
    scroll->setWidget(side);
    scroll->setMinimumWidth(side->minimumSizeHint().width() + kSpace * 4);
    return scroll;
}

QTabWidget* NoteEditorWindow::MakeTabs(QWidget* parent) {
    tabs_ = new QTabWidget(parent);
    tabs_->setDocumentMode(true);
    tabs_->setAccessibleName(tr("Sources and categories"));
    const SourceDialogs windows(commands_, app_.Store(), theme_);
    const SourcePanelWindows opened = {[this, windows](QWidget* above) -> std::optional<int32_t> {
                                           const std::optional<int32_t> chosen = windows.SelectSource(above);
                                           return chosen && session_.bringSource ? session_.bringSource(*chosen)
                                                                                 : chosen;
                                       },
                                       [this, windows](int32_t id, QWidget* above) {
                                           if (const CSource* const source = SourceToEdit(id))
                                               windows.EditSource(source, above);
                                       }};
    sources_ = new SourcePanel(rows_, opened, theme_, tabs_);
    categories_ = new CategoryPanel(paths_, theme_, tabs_);
    tabs_->addTab(sources_, tr(" < S&OURCES > "));
    tabs_->addTab(categories_, tr(" < C&ATEGORIES > "));
    LeadTabKeys(*tabs_);
    tabs_->setMinimumHeight(fontMetrics().height() * 13);
    return tabs_;
}

/// The dialogs work on the open NoteBook, which needn't have a source of an import note yet.
const CSource* NoteEditorWindow::SourceToEdit(int32_t id) {
    const CSource* const source = session_.Book().sources.FindSourceByID(id);
    const SourceList& open = app_.NoteBook().sources;
    const CSource* const known =
        source && session_.IsImportNote() ? open.FindSourceByGUID(source->SourceGUID) : open.FindSourceByID(id);
    if (!known && source)
        app_.Ports().prompts.Message("This source comes with the import. It can be edited once it is in the NoteBook.",
                                     "Edit Source", PromptIcon::Information);
    return known;
}

void NoteEditorWindow::MakeBoxes(QVBoxLayout& layout, QWidget* parent) {
    auto* const status = new PanelSection(tr("Sync Status"), theme_, parent);
    sync_ = new QCheckBox(tr("S&ync this note with LorebinderOnline account"), status);
    sync_->setChecked(session_.syncTicked);
    status->Body()->addWidget(sync_);
    status->setVisible(session_.ShowsSyncBox());
    layout.addWidget(status);
    spelling_ = new QCheckBox(tr("Disable s&pell checker in this note."), parent);
    spelling_->setChecked(!session_.note.spellCheck);
    spelling_->setEnabled(session_.MayCheckSpelling());
    layout.addWidget(spelling_);
}

void NoteEditorWindow::MakeButtons(QVBoxLayout& layout) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    cancel_ = MakeButton(tr("&Cancel"), this);
    save_ = new QPushButton(tr("&Save"), this);
    save_->setDefault(true);
    cancel_->setToolTip(QKeySequence(Qt::Key_Escape).toString(QKeySequence::NativeText));
    save_->setToolTip(QKeySequence(Qt::CTRL | Qt::Key_Return).toString(QKeySequence::NativeText));
    row->addStretch(1);
    row->addWidget(save_);
    row->addWidget(cancel_);
    layout.addLayout(row);
    OnCtrlEnter(this, [this] { save_->click(); });
}

/// All controls of a part before those of the next one; within a part they stand in its own order.
void NoteEditorWindow::OrderTabs() {
    headerTitle_->setBuddy(text_->Edit());
    QList<QWidget*> ring;
    for (QWidget* next = nextInFocusChain(); next != this; next = next->nextInFocusChain())
        ring.append(next);
    const QList<QWidget*> parts = {text_,  text_->Edit(), tabs_,     keyWords_, attachments_,
                                   color_, sync_,         spelling_, save_,     cancel_};
    QWidget* last = nullptr;
    const auto add = [&last](QWidget* control) {
        if ((control->focusPolicy() & Qt::TabFocus) != Qt::TabFocus)
            return;
        if (last)
            setTabOrder(last, control);
        last = control->focusProxy() ? control->focusProxy() : control;  // tabs hand the focus to their bar
    };
    for (QWidget* const part : parts) {
        add(part);
        for (QWidget* const control : ring)
            if (part->isAncestorOf(control) && !control->focusProxy() && !parts.contains(control) &&
                control != tabs_->tabBar())
                add(control);
    }
}

void NoteEditorWindow::RestorePlace() {
    const int column = fontMetrics().averageCharWidth();
    const QSize wanted(column * kDefaultColumns, fontMetrics().lineSpacing() * kDefaultLines);
    if (!PutWindow(*this, app_.GetSettings().Rectangle(Option::EditNoteRect)))
        resize(wanted.boundedTo(RoomForWindow(*this).size()));
    const int side = std::min(column * kSideColumns, width() * 2 / 5);  // large letters leave the text its room
    split_->setSizes(StoredSizes(app_.Store(), kSplitKey, split_->count()).value_or(QList<int>{width() - side, side}));
}

void NoteEditorWindow::StorePlace() {
    app_.GetSettings().Set(Option::EditNoteRect, PlaceToKeep(*this));
    StoreSizes(app_.Store(), kSplitKey, split_->sizes());
}

}  // namespace lore
