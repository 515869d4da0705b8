#include "ui/note_editor/key_word_panel.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "ui/controls/dialog_parts.h"
#include "ui/controls/main_button_keys.h"
#include "ui/controls/quiet_view.h"
#include "ui/controls/text_field.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {

SelectTagsDlg::SelectTagsDlg(KeyWordPicker& picker, const Theme& theme, QWidget* parent)
    : QDialog(parent), picker_(picker), list_(new QuietView<QTreeWidget>(this)) {
    setWindowTitle(tr("Select Key Words"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kSpace * 4, kSpace * 4, kSpace * 4, kSpace * 4);
    layout->setSpacing(kSpace * 2);
    auto* const filter = NewTextField(this);
    filter->setPlaceholderText(tr("Filter key words"));
    filter->setAccessibleName(filter->placeholderText());
    OfferClearing(*filter);
    AddLeadingIcon(*filter, theme.Icon("search", ColorRole::DimText), tr("Search"));
    list_->setAccessibleName(windowTitle());
    list_->setHeaderHidden(true);
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    for (size_t i = 0; i < picker.Count(); ++i) {
        auto* const item = new QTreeWidgetItem(list_, {ToQString(picker.ItemText(i))});
        item->setCheckState(0, picker.IsChecked(i) ? Qt::Checked : Qt::Unchecked);
        item->setData(0, Qt::UserRole, static_cast<qulonglong>(i));
    }
    list_->setCurrentItem(list_->topLevelItem(0));
    auto* const buttons = new QDialogButtonBox(this);
    QPushButton* const select = buttons->addButton(tr("&Select"), QDialogButtonBox::AcceptRole);
    select->setDefault(true);
    PressByCtrlEnter(select);
    buttons->addButton(tr("&Cancel"), QDialogButtonBox::RejectRole);
    layout->addWidget(filter);
    layout->addWidget(list_, 1);
    setTabOrder(filter, list_);
    layout->addWidget(buttons);
    connect(list_, &QTreeWidget::itemChanged, this, [this](const QTreeWidgetItem* item) {
        const auto position = static_cast<size_t>(item->data(0, Qt::UserRole).toULongLong());
        if (picker_.IsChecked(position) != (item->checkState(0) == Qt::Checked))
            picker_.Toggle(position);
    });
    connect(filter, &QLineEdit::textChanged, this, &SelectTagsDlg::ApplyFilter);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(fontMetrics().averageCharWidth() * 48, fontMetrics().height() * 24);
    list_->setFocus();
}

void SelectTagsDlg::ApplyFilter(const QString& text) {
    for (int i = 0; i < list_->topLevelItemCount(); ++i) {
        QTreeWidgetItem* const item = list_->topLevelItem(i);
        item->setHidden(!item->text(0).contains(text.trimmed(), Qt::CaseInsensitive));
    }
}

KeyWordPanel::KeyWordPanel(Opener open, const Theme& theme, QWidget* parent)
    : PanelSection(tr("&Key Words"), theme, parent), open_(std::move(open)), theme_(theme), field_(NewTextField(this)) {
    Title()->setBuddy(field_);
    QPushButton* const select = MakeButton(tr("Se&lect"), this);
    auto* const note = new QLabel(QString::fromLatin1(kKeyWordsNote), this);
    note->setFont(theme.Font(TextSize::Small));
    note->setWordWrap(true);
    field_->setAccessibleName(tr("Key Words"));
    field_->setAccessibleDescription(note->text());
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    row->addWidget(field_, 1);
    row->addWidget(select);
    Body()->addLayout(row);
    Body()->addWidget(note);
    connect(select, &QPushButton::clicked, this, &KeyWordPanel::SelectKeyWords);
}

void KeyWordPanel::SelectKeyWords() {
    std::optional<KeyWordPicker> picker = open_(FromQString(field_->text()));
    if (!picker)
        return;
    SelectTagsDlg dialog(*picker, theme_, this);
    if (dialog.exec() == QDialog::Accepted)
        field_->setText(ToQString(picker->FieldText()));
}

}  // namespace lore
