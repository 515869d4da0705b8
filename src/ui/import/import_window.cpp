#include "ui/import/import_window.h"

#include <QAction>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <algorithm>

#include "exchange/import_editing.h"
#include "ui/controls/empty_line.h"
#include "ui/controls/list_columns.h"
#include "ui/controls/quiet_view.h"
#include "ui/import/differences_window.h"
#include "ui/import/import_categories_dialog.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/note_editor/note_editor_window.h"
#include "ui/ports/quit_guard.h"

namespace lore {

namespace {

constexpr char kCancelTitle[] = "Continue?";
constexpr char kCancelText[] =
    "Are you sure you wish to cancel?\n\nNo note of the archive will be imported, and the changes that you have made "
    "to them here will be lost!";
constexpr int kListChars = 160, kListRows = 30;  // at first
constexpr int kLeastChars = 50, kLeastRows = 8;
constexpr int kStatusColumn = 0, kSourceColumn = 1, kFirstLevelColumn = 2, kLevels = 4, kAttachmentColumn = 6;

/// The list's own words say the same, so that nothing hangs on the colour. Red and blue that are legible on the ground.
QColor StatusColor(ImportStatus status, const Theme& theme) {
    const bool dark = theme.IsDark();
    switch (status) {
        case ImportStatus::Older:
            return dark ? QColor(255, 138, 128) : QColor(176, 0, 32);
        case ImportStatus::Newer:
            return dark ? QColor(138, 180, 248) : QColor(21, 72, 180);
        case ImportStatus::New:
        case ImportStatus::Same:
            break;
    }
    return theme.Color(ColorRole::Text);
}

size_t PositionOf(const QTreeWidgetItem& item) {
    return item.data(kStatusColumn, Qt::UserRole).toULongLong();
}

}  // namespace

ImportWindow::ImportWindow(ImportComparison& comparison, ImportNoteCommands commands, const Theme& theme,
                           Prompts& prompts, SettingsStore& store, QWidget* parent)
    : DialogFrame(tr("Import Notes"), "ImportNotes", store, parent),
      comparison_(comparison),
      commands_(std::move(commands)),
      theme_(theme),
      prompts_(prompts),
      store_(store) {
    MakeList();
    MakeActions();
    MakeOptions();
    MakeButtons();
    Refill();
    resize(std::max(fontMetrics().averageCharWidth() * kListChars, list_->header()->length() + kSpace * 14),
           fontMetrics().height() * kListRows * 3 / 2);
    list_->setFocus();
    connect(&theme_, &Theme::Changed, this, &ImportWindow::RefreshRows);
}

void ImportWindow::MakeButtons() {
    QPushButton* const all = AddSideButton(tr("Select &All"));
    QPushButton* const none = AddSideButton(tr("&Clear All"));
    connect(all, &QPushButton::clicked, this, [this] { TickAll(true); });
    connect(none, &QPushButton::clicked, this, [this] { TickAll(false); });
    connect(AddSideButton(tr("Change Categories of Selected &Notes")), &QPushButton::clicked, this,
            &ImportWindow::ChangeCategories);
    QPushButton* const ok = AddButton(tr("&OK"));
    SetMainButton(ok);
    connect(ok, &QPushButton::clicked, this, &ImportWindow::accept);
    connect(AddButton(tr("Cancel")), &QPushButton::clicked, this, &ImportWindow::reject);
}

void ImportWindow::MakeList() {
    list_ = new QuietView<QTreeWidget>(this);
    list_->setObjectName("importList");
    list_->setAccessibleName(tr("Notes of the archive"));
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    list_->setHeaderLabels({tr("Selection/Status"), tr("Main Source Title"), tr("L1 Category"), tr("L2 Category"),
                            tr("L3 Category"), tr("L4 Category"), tr("Attachments")});
    columns_ = new ListColumns(*list_, store_, "ImportNotesColumns");
    list_->setMinimumSize(list_->fontMetrics().averageCharWidth() * kLeastChars,
                          list_->fontMetrics().height() * kLeastRows);
    empty_ = new EmptyLine(*list_);
    connect(list_, &QTreeWidget::itemChanged, this, &ImportWindow::Ticked);
    connect(list_, &QTreeWidget::currentItemChanged, this, &ImportWindow::UpdateActions);
    connect(list_, &QTreeWidget::itemActivated, this, &ImportWindow::EditNote);
    Content()->addWidget(list_, 1);
}

void ImportWindow::MakeActions() {
    edit_ = new QAction(tr("&View/Edit Import Note"), list_);
    edit_->setShortcut(QKeySequence(Qt::Key_F2));
    differences_ = new QAction(tr("Show &Differences..."), list_);
    differences_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_D));
    list_->addActions({edit_, differences_});
    list_->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(edit_, &QAction::triggered, this, &ImportWindow::EditNote);
    connect(differences_, &QAction::triggered, this, &ImportWindow::ShowDifferences);
}

void ImportWindow::MakeOptions() {
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 4);
    auto* const same = new QCheckBox(tr("Show existing (&same) notes"), this);
    same->setObjectName("showSame");
    same->setChecked(comparison_.ShowsSame());
    displayAfter_ = new QCheckBox(tr("&Display imported notes after import"), this);
    displayAfter_->setObjectName("displayAfter");
    displayAfter_->setChecked(comparison_.displayAfter);
    auto* const legend = new QLabel(tr("Older notes stand in red, newer ones in blue."), this);
    legend->setForegroundRole(QPalette::PlaceholderText);
    legend->setWordWrap(true);
    legend->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    row->addWidget(same);
    row->addWidget(displayAfter_);
    row->addWidget(legend, 1);
    Content()->addLayout(row);
    connect(same, &QCheckBox::toggled, this, [this](bool on) {
        comparison_.SetShowSame(on);
        Refill();
    });
}

/// What stands in the list where it is empty.
QString ImportWindow::EmptyText() const {
    const size_t notes = comparison_.Rows().size();
    if (notes == 0)
        return tr("The archive holds no notes.");
    const QString here = notes == 1 ? tr("The one note of the archive is already here.")
                                    : tr("All %1 notes are already here.").arg(notes);
    return here + QLatin1Char(' ') + tr("Tick \"Show existing (same) notes\" to see them.");
}

void ImportWindow::Refill() {
    const QSignalBlocker quiet(list_);
    empty_->SetText(EmptyText());
    list_->clear();
    QList<QTreeWidgetItem*> items;
    for (const size_t position : comparison_.Shown()) {
        auto* const item = new QTreeWidgetItem;
        item->setData(kStatusColumn, Qt::UserRole, QVariant::fromValue<qulonglong>(position));
        ShowRow(*item, position);
        items.append(item);
    }
    list_->addTopLevelItems(items);
    columns_->Fit();
    if (!items.isEmpty())
        list_->setCurrentItem(items.front());
    UpdateActions();
}

void ImportWindow::ShowRow(QTreeWidgetItem& item, size_t position) const {
    const ImportRow& row = comparison_.Rows()[position];
    item.setText(kStatusColumn, ToQString(ImportComparison::StatusText(row)).trimmed());
    item.setText(kSourceColumn, ToQString(ImportComparison::MainSourceTitle(row)));
    for (int level = 0; level < kLevels; ++level)
        item.setText(kFirstLevelColumn + level, ToQString(ImportComparison::CategoryName(row, level)));
    item.setText(kAttachmentColumn, ToQString(ImportComparison::AttachmentText(row)));
    item.setCheckState(kStatusColumn, row.ticked ? Qt::Checked : Qt::Unchecked);
    for (int column = 0; column <= kAttachmentColumn; ++column)
        item.setForeground(column, StatusColor(row.status, theme_));
}

void ImportWindow::Ticked(QTreeWidgetItem* item, int column) {
    if (column == kStatusColumn)
        comparison_.Row(PositionOf(*item)).ticked = item->checkState(kStatusColumn) == Qt::Checked;
}

void ImportWindow::TickAll(bool ticked) {
    comparison_.TickAll(ticked);
    const QSignalBlocker quiet(list_);
    for (int i = 0; i < list_->topLevelItemCount(); ++i)
        list_->topLevelItem(i)->setCheckState(kStatusColumn, ticked ? Qt::Checked : Qt::Unchecked);
    list_->viewport()->update();
}

void ImportWindow::UpdateActions() {
    const QTreeWidgetItem* const item = list_->currentItem();
    edit_->setEnabled(item);
    const ImportStatus status = item ? comparison_.Rows()[PositionOf(*item)].status : ImportStatus::New;
    differences_->setEnabled(status == ImportStatus::Older || status == ImportStatus::Newer);
}

void ImportWindow::ShowDifferences() {
    const QTreeWidgetItem* const item = list_->currentItem();
    if (!item)
        return;
    const size_t position = PositionOf(*item);
    const auto existing = comparison_.Existing(position);
    if (existing)
        DifferencesWindow(CompareForImport(comparison_.Rows()[position].entry, *existing), theme_, store_, this).exec();
}

void ImportWindow::EditNote() {
    const QTreeWidgetItem* const item = list_->currentItem();
    if (item && commands_.edit(PositionOf(*item), this))
        NotesChanged();
}

void ImportWindow::ChangeCategories() {
    if (comparison_.Accept(prompts_) && commands_.changeCategories(this))
        NotesChanged();
}

void ImportWindow::NotesChanged() {
    changed_ = true;
    RefreshRows();
}

/// What the rows say now; the list keeps its place.
void ImportWindow::RefreshRows() {
    const QSignalBlocker quiet(list_);
    for (int i = 0; i < list_->topLevelItemCount(); ++i)
        ShowRow(*list_->topLevelItem(i), PositionOf(*list_->topLevelItem(i)));
    UpdateActions();
}

void ImportWindow::accept() {
    comparison_.displayAfter = displayAfter_->isChecked();
    if (comparison_.Accept(prompts_))
        DialogFrame::accept();
}

void ImportWindow::reject() {
    if (IsQuitting())
        return DialogFrame::reject();  // drafts of notes that were edited stay; categories that were given go
    if (changed_ && prompts_.Ask(kCancelText, kCancelTitle) != PromptAnswer::Yes)
        return;
    if (changed_)
        commands_.dropChanges();
    DialogFrame::reject();
}

bool WindowChooser::ChooseNotes(ImportComparison& comparison, ImportArchive& archive) {
    editing_.emplace(comparison, archive, commands_.World(), app_.Counters(), app_.Data().ImportTemp());
    ImportNoteCommands commands;
    commands.edit = [this](size_t position, QWidget* parent) {
        std::optional<NoteEditorWindow> editor(std::in_place, editing_->Open(position), commands_, app_, theme_,
                                               parent);
        const bool saved = editor->exec() == QDialog::Accepted;
        if (saved)
            editing_->Take(position, editor->Session());
        editor.reset();  // with what writes its draft
        if (!saved)
            editing_->Leave(position);
        return saved;
    };
    commands.changeCategories = [this](QWidget* parent) {
        CategoryAssignment paths = editing_->MakeAssignment();
        const bool chosen = ImportCategoriesDialog(paths, theme_, app_.Store(), parent).exec() == QDialog::Accepted;
        if (chosen)
            editing_->Assign(paths);
        return chosen;
    };
    commands.dropChanges = [this] { editing_->DropDrafts(); };
    ImportWindow window(comparison, commands, theme_, app_.Ports().prompts, app_.Store(), parent_);
    return window.exec() == QDialog::Accepted;
}

}  // namespace lore
