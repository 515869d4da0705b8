#include "ui/online/select_online_notebook_dlg.h"

#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "ui/controls/dialog_parts.h"
#include "ui/controls/quiet_view.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/options/option_controls.h"

namespace lore {

namespace {
constexpr int kListChars = 48;
constexpr int kListRows = 12;
}  // namespace

CSelectOnlineNoteBookDlg::CSelectOnlineNoteBookDlg(OnlineNoteBookChoice& choice, const Theme& theme,
                                                   SettingsStore& store, QWidget* parent)
    : DialogFrame(tr("Select Online NoteBook"), "SelectOnlineNoteBook", store, parent), choice_(choice) {
    list_ = new QuietView<QListWidget>(this);
    list_->setObjectName("onlineNoteBooks");
    list_->setAccessibleName(tr("Online NoteBooks"));
    list_->setMinimumSize(list_->fontMetrics().averageCharWidth() * kListChars,
                          list_->fontMetrics().height() * kListRows);
    empty_ = MakeRemark(tr("There is no NoteBook in this online account yet. Create the first one here."), theme, this);
    empty_->setObjectName("empty");
    KeepWhole(*empty_, kListChars);
    auto* const column = new QVBoxLayout;
    column->setSpacing(kSpace);
    column->addWidget(MakeLabel(tr("Online Note&Books:"), list_, this));
    column->addWidget(list_, 1);
    column->addWidget(empty_);
    Content()->addLayout(column, 1);
    QPushButton* const create = AddSideButton(tr("Create &New NoteBook..."));
    create->setObjectName("create");
    QPushButton* const ok = AddButton(tr("&OK"));
    ok->setObjectName("ok");
    SetMainButton(ok);
    connect(ok, &QPushButton::clicked, this, &CSelectOnlineNoteBookDlg::TakeChoice);
    connect(AddButton(tr("&Cancel")), &QPushButton::clicked, this, &QDialog::reject);
    connect(create, &QPushButton::clicked, this, &CSelectOnlineNoteBookDlg::Create);
    connect(list_, &QListWidget::itemActivated, this, &CSelectOnlineNoteBookDlg::TakeChoice);
    // Not the current row: a list that gets the focus makes its first row that, which chooses nothing.
    connect(list_, &QListWidget::itemSelectionChanged, this, [this] {
        choice_.Select(list_->selectedItems().isEmpty() ? -1 : list_->row(list_->selectedItems().first()));
    });
    Refill();
    list_->setFocus();
}

void CSelectOnlineNoteBookDlg::Refill() {
    const QSignalBlocker quiet(list_);
    list_->clear();
    for (const NoteBookInfo& noteBook : choice_.NoteBooks())
        list_->addItem(ToQString(noteBook.name));
    list_->setCurrentRow(choice_.Selected());
    empty_->setVisible(choice_.NoteBooks().empty());
}

void CSelectOnlineNoteBookDlg::Create() {
    if (choice_.Create())
        Refill();
    list_->setFocus();
}

void CSelectOnlineNoteBookDlg::TakeChoice() {
    if (choice_.Accept())
        accept();
}

}  // namespace lore
