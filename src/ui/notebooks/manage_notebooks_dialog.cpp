#include "ui/notebooks/manage_notebooks_dialog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>

#include "ui/controls/dialog_parts.h"
#include "ui/controls/fault_bar.h"
#include "ui/controls/quiet_view.h"
#include "ui/controls/text_field.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/options/option_controls.h"
#include "ui/ports/quit_guard.h"

namespace lore {

namespace {

constexpr int kListChars = 30;
constexpr int kListRows = 12;

}  // namespace

ManageNoteBooksDialog::ManageNoteBooksDialog(ManageNoteBooks& model, const Theme& theme, SettingsStore& store,
                                             QWidget* parent)
    : DialogFrame(tr("Manage NoteBooks"), "ManageNoteBooks", store, parent), model_(model), theme_(theme) {
    list_ = new QuietView<QListWidget>(this);
    list_->setObjectName("noteBooks");
    list_->setAccessibleName(tr("NoteBooks"));
    list_->setMinimumWidth(list_->fontMetrics().averageCharWidth() * kListChars);
    list_->setMinimumHeight(list_->fontMetrics().height() * kListRows);
    auto* const left = new QVBoxLayout;
    left->setSpacing(kSpace);
    left->addWidget(MakeLabel(tr("Note&Books"), list_, this));
    left->addWidget(list_, 1);
    auto* const right = new QVBoxLayout;
    right->setSpacing(kSpace * 4);
    right->addWidget(MakeDetails());
    right->addWidget(MakeNew());
    right->addStretch(1);
    auto* const columns = new QHBoxLayout;
    columns->setSpacing(kSpace * 5);
    columns->addLayout(left, 1);
    columns->addLayout(right, 1);
    Content()->addLayout(columns, 1);
    restore_ = AddSideButton(tr("&Undo Delete"));
    restore_->setObjectName("undoDelete");
    connect(restore_, &QPushButton::clicked, this, &ManageNoteBooksDialog::Restore);
    QPushButton* const change = AddButton(tr("Change &NoteBook"));
    change->setObjectName("changeNoteBook");
    SetMainButton(change);
    connect(change, &QPushButton::clicked, this, &QDialog::accept);
    connect(AddButton(tr("E&xit")), &QPushButton::clicked, this, &QDialog::reject);
    connect(list_, &QListWidget::itemActivated, this, &QDialog::accept);
    AddListKey(list_, QKeySequence::Delete, [this] { Delete(); });
    connect(new QShortcut(QKeySequence(Qt::Key_F2), this), &QShortcut::activated, this, [this] {
        if (!name_->isEnabled())
            return;
        name_->setFocus();
        name_->selectAll();
    });
    connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
        model_.Select(static_cast<size_t>(std::max(row, 0)));
        Faults(theme_).TakeFailed();  // it may have been meant for another NoteBook
        ShowDetails();
    });
    Refill();
    list_->setFocus();
}

QWidget* ManageNoteBooksDialog::MakeDetails() {
    auto* const box = new QWidget(this);
    auto* const layout = MakeInner<QGridLayout>(box, kSpace * 2);
    name_ = NewTextField(box);
    name_->setObjectName("name");
    name_->setMinimumWidth(name_->fontMetrics().averageCharWidth() * kListChars);
    name_->setAccessibleName(tr("Name of the chosen NoteBook"));
    changeName_ = MakeButton(tr("C&hange Name"), box);
    delete_ = MakeButton(tr("&Delete NoteBook"), box);
    notes_ = new QLabel(box);
    notes_->setObjectName("notes");
    created_ = new QLabel(box);
    created_->setObjectName("created");
    layout->addWidget(MakeLabel(tr("N&ame"), name_, box), 0, 0, 1, 2);
    layout->addWidget(name_, 1, 0);
    layout->addWidget(changeName_, 1, 1);
    layout->addWidget(notes_, 2, 0);
    layout->addWidget(delete_, 2, 1);
    layout->addWidget(created_, 3, 0, 1, 2);
    layout->setColumnStretch(0, 1);
    connect(changeName_, &QPushButton::clicked, this, &ManageNoteBooksDialog::ChangeName);
    connect(name_, &QLineEdit::returnPressed, this, &ManageNoteBooksDialog::ChangeName);
    connect(delete_, &QPushButton::clicked, this, &ManageNoteBooksDialog::Delete);
    return box;
}

QWidget* ManageNoteBooksDialog::MakeNew() {
    auto* const box = new QWidget(this);
    auto* const layout = MakeInner<QGridLayout>(box, kSpace * 2);
    newName_ = NewTextField(box);
    newName_->setObjectName("newName");
    newName_->setPlaceholderText(tr("5 to 30 characters"));
    newName_->setAccessibleName(tr("Name of a new NoteBook"));
    QPushButton* const create = MakeButton(tr("&Create NoteBook"), box);
    create->setObjectName("create");
    layout->addWidget(MakeRule(theme_, box), 0, 0, 1, 2);
    layout->addWidget(MakeLabel(tr("Ne&w NoteBook"), newName_, box), 1, 0, 1, 2);
    layout->addWidget(newName_, 2, 0);
    layout->addWidget(create, 2, 1);
    layout->setColumnStretch(0, 1);
    connect(create, &QPushButton::clicked, this, &ManageNoteBooksDialog::Create);
    connect(newName_, &QLineEdit::returnPressed, this, &ManageNoteBooksDialog::Create);
    return box;
}

void ManageNoteBooksDialog::Refill() {
    const QSignalBlocker quiet(list_);
    list_->clear();
    for (size_t row = 0; row < model_.Count(); ++row)
        list_->addItem(ToQString(model_.RowText(row)));
    list_->setCurrentRow(static_cast<int>(model_.Selected()));
    ShowDetails();
}

void ManageNoteBooksDialog::ShowDetails() {
    const NoteBookDetails details = model_.Details();
    name_->setText(ToQString(details.name));
    name_->setCursorPosition(0);
    notes_->setText(ToQString(details.notes));
    created_->setText(ToQString(details.created));
    for (QWidget* const control :
         {static_cast<QWidget*>(name_), static_cast<QWidget*>(changeName_), static_cast<QWidget*>(delete_)})
        control->setEnabled(details.canChange);
    restore_->setEnabled(model_.CanRestore());
}

void ManageNoteBooksDialog::Create() {
    Run([this] { return model_.Create(FromQString(newName_->text())); },
        [this] {
            newName_->clear();
            newName_->setFocus();
        });
}

void ManageNoteBooksDialog::ChangeName() {
    Run([this] { return model_.ChangeName(FromQString(name_->text())); }, [] {});
}

void ManageNoteBooksDialog::Delete() {
    Run([this] { return model_.Delete(); }, [this] { list_->setFocus(); });
}

void ManageNoteBooksDialog::Restore() {
    Run([this] { return model_.Restore(); }, [this] { list_->setFocus(); });
    ShowDetails();
}

void ManageNoteBooksDialog::Run(const std::function<bool()>& command, const std::function<void()>& then) {
    Faults(theme_).Run([this, command, then] {
        const bool isDone = command();
        if (isDone) {
            Refill();
            then();
        }
        return isDone;
    });
}

bool ManageNoteBooksDialog::MayClose() {
    if (IsQuitting())
        return true;  // no more than a name is lost
    const bool hasNewName = !newName_->text().trimmed().isEmpty();
    const bool hasTypedName = name_->isModified() && name_->text() != ToQString(model_.Details().name);
    const bool may = model_.MayClose(hasTypedName, hasNewName);
    if (!may)
        (hasNewName ? newName_ : name_)->setFocus();
    return may;
}

void ManageNoteBooksDialog::accept() {
    if (MayClose())
        DialogFrame::accept();
}

void ManageNoteBooksDialog::reject() {
    if (MayClose())
        DialogFrame::reject();
}

void ManageNoteBooksDialog::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    // After a message the window isn't active yet, and none of its fields says that it has the focus.
    if (isEnter && (focusWidget() == name_ || focusWidget() == newName_))
        return event->accept();  // the field has taken it; the dialog stays
    DialogFrame::keyPressEvent(event);
}

}  // namespace lore
