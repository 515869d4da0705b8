#include "ui/note_editor/source_picker.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "bibliography/citation.h"
#include "ui/qt_text.h"
#include "ui/theme.h"

namespace lore {

SourcePicker::SourcePicker(const SourceList& sources, const AuthorList& authors, const Theme& theme, QWidget* parent)
    : QDialog(parent), list_(new QListWidget(this)) {
    setWindowTitle(tr("Select Source"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kSpace * 4, kSpace * 4, kSpace * 4, kSpace * 4);
    layout->setSpacing(kSpace * 2);
    auto* const filter = new QLineEdit(this);
    filter->setPlaceholderText(tr("Filter sources"));
    filter->setAccessibleName(filter->placeholderText());
    filter->setClearButtonEnabled(true);
    filter->addAction(theme.Icon("search", ColorRole::DimText), QLineEdit::LeadingPosition);
    list_->setAccessibleName(tr("Sources"));
    list_->setWordWrap(true);
    list_->setAlternatingRowColors(true);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    for (const CSource& source : sources) {
        CSource copy = source;
        FormatSource(copy, authors);
        auto* const item = new QListWidgetItem(ToQString(copy.FormattedText).simplified(), list_);
        item->setData(Qt::UserRole, source.SourceID);
    }
    list_->sortItems();
    auto* const buttons = new QDialogButtonBox(this);
    QPushButton* const select = buttons->addButton(tr("&Select"), QDialogButtonBox::AcceptRole);
    buttons->addButton(tr("&Cancel"), QDialogButtonBox::RejectRole);
    select->setDefault(true);
    select->setEnabled(false);
    layout->addWidget(filter);
    layout->addWidget(list_, 1);
    layout->addWidget(buttons);
    connect(list_, &QListWidget::itemSelectionChanged, this,
            [this, select] { select->setEnabled(!list_->selectedItems().isEmpty()); });
    connect(list_, &QListWidget::itemActivated, this, &QDialog::accept);
    connect(filter, &QLineEdit::textChanged, this, &SourcePicker::ApplyFilter);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(fontMetrics().averageCharWidth() * 72, fontMetrics().height() * 24);
    filter->setFocus();
}

std::optional<int32_t> SourcePicker::Chosen() const {
    const QList<QListWidgetItem*> selected = list_->selectedItems();
    if (result() != Accepted || selected.isEmpty())
        return std::nullopt;
    return selected.first()->data(Qt::UserRole).toInt();
}

void SourcePicker::ApplyFilter(const QString& text) {
    for (int i = 0; i < list_->count(); ++i)
        list_->item(i)->setHidden(!list_->item(i)->text().contains(text.trimmed(), Qt::CaseInsensitive));
}

}  // namespace lore
