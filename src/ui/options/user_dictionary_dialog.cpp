#include "ui/options/user_dictionary_dialog.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>

#include "ui/controls/dialog_parts.h"
#include "ui/controls/quiet_view.h"
#include "ui/controls/text_field.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme_look.h"

namespace lore {

UserDictionaryDialog::UserDictionaryDialog(UserDictionary& words, SettingsStore& store, QWidget* parent)
    : DialogFrame(tr("User Dictionary"), "UserDictionary", store, parent), words_(words) {
    word_ = NewTextField(this);
    word_->setObjectName("word");
    word_->setAccessibleName(tr("A word to add"));
    add_ = MakeButton(tr("&Add"), this);
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    row->addWidget(MakeLabel(tr("&Word:"), word_, this));
    row->addWidget(word_, 1);
    row->addWidget(add_);
    Content()->addLayout(row);
    list_ = new QuietView<QListWidget>(this);
    list_->setObjectName("words");
    list_->setAccessibleName(tr("Your own words"));
    list_->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::DoubleClicked);
    Content()->addWidget(list_, 1);
    delete_ = AddSideButton(tr("&Delete"));
    QPushButton* const close = AddButton(tr("&OK"));
    SetMainButton(close);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(add_, &QPushButton::clicked, this, &UserDictionaryDialog::AddWord);
    connect(delete_, &QPushButton::clicked, this, &UserDictionaryDialog::RemoveWord);
    AddListKey(list_, QKeySequence::Delete, [this] { RemoveWord(); });
    connect(word_, &QLineEdit::textChanged, this, [this](const QString& text) {
        const bool fits = words_.CanAdd(FromQString(text));
        add_->setEnabled(fits);
        // Enter adds what was typed, and closes once nothing is left to add.
        add_->setDefault(fits);
    });
    connect(list_, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) { ChangeWord(list_->row(item)); });
    add_->setEnabled(false);
    Refill(0);
    word_->setFocus();
}

void UserDictionaryDialog::AddWord() {
    const int row = words_.Add(FromQString(word_->text()));
    if (row < 0)
        return;
    Refill(row);
    word_->clear();
    word_->setFocus();
}

void UserDictionaryDialog::RemoveWord() {
    const int row = list_->currentRow();
    if (row < 0)
        return;
    words_.Remove(static_cast<size_t>(row));
    Refill(row);
}

void UserDictionaryDialog::ChangeWord(int row) {
    const int place = words_.Replace(static_cast<size_t>(row), FromQString(list_->item(row)->text()));
    // The list can't be filled while it still closes its field.
    QMetaObject::invokeMethod(
        this, [this, row, place] { Refill(place < 0 ? row : place); }, Qt::QueuedConnection);
}

void UserDictionaryDialog::Refill(int row) {
    const QSignalBlocker quiet(list_);
    list_->clear();
    for (const std::string& word : words_.Words()) {
        auto* const item = new QListWidgetItem(QString::fromUtf8(word.c_str()), list_);
        item->setFlags(item->flags() | Qt::ItemIsEditable);
    }
    list_->setCurrentRow(std::min(row, list_->count() - 1));
    delete_->setEnabled(list_->count() > 0);
}

}  // namespace lore
