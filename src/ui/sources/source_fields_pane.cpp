#include "ui/sources/source_fields_pane.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/controls/dialog_parts.h"
#include "ui/controls/text_field.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/sources/source_dialog.h"

namespace lore {

namespace {

constexpr int kPlaces = 6;
constexpr int kGridRows = 6;

}  // namespace

SourceFieldsPane::SourceFieldsPane(SourceEditor& editor, const Theme& theme, QWidget* parent)
    : PanelSection(tr("Other Fields"), theme, parent), editor_(editor), theme_(theme) {
    Body()->setSpacing(kSpace * 2);
    standard_ = new QWidget(this);
    places_ = MakeInner<QGridLayout>(standard_, kSpace * 3, kSpace);
    for (int place = 0; place < kPlaces; ++place) {
        auto* const field = NewTextField(standard_);
        QLabel* const label = MakeLabel({}, field, standard_);
        places_->addWidget(label, place / 2 * 2, place % 2);
        places_->addWidget(field, place / 2 * 2 + 1, place % 2);
        places_->setColumnStretch(place % 2, 1);
        labels_.append(label);
        fields_.append(field);
        connect(field, &QLineEdit::textEdited, this, [this, place](const QString& text) {
            editor_.SetField(FieldOrder(editor_.Working().SourceType)[static_cast<size_t>(place)], FromQString(text));
            emit Changed();
        });
    }
    grid_ = new QTableWidget(0, 2, this);
    grid_->setObjectName("grid");
    grid_->setAccessibleName(tr("Fields of the source type"));
    grid_->horizontalHeader()->hide();
    grid_->verticalHeader()->hide();
    grid_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    grid_->horizontalHeader()->setStretchLastSection(true);
    grid_->setSelectionMode(QAbstractItemView::NoSelection);
    grid_->setFocusPolicy(Qt::NoFocus);
    grid_->setTabKeyNavigation(false);  // Tab goes from field to field, and on from the last one
    none_ = MakeHint(tr("This source type has no fields of its own."), theme, this);
    // As high for each type as for the one that has most fields.
    setMinimumHeight(Title()->sizeHint().height() + 2 * kSpace + standard_->sizeHint().height());
    Body()->addWidget(standard_);
    Body()->addWidget(grid_);
    Body()->addWidget(none_);
    Body()->addStretch(1);
    connect(&theme, &Theme::Changed, this, &SourceFieldsPane::Restyle);
    Fill();
}

void SourceFieldsPane::Fill() {
    const bool isCustom = editor_.IsCustom();
    standard_->setVisible(!isCustom);
    grid_->setVisible(isCustom && editor_.GridRows() > 0);
    none_->setVisible(isCustom && editor_.GridRows() == 0);
    isCustom ? FillGrid() : FillFields();
}

void SourceFieldsPane::FillFields() {
    const std::span<const size_t> order = FieldOrder(editor_.Working().SourceType);
    for (int place = 0; place < kPlaces; ++place) {
        const bool isUsed = static_cast<size_t>(place) < order.size();
        labels_[place]->setVisible(isUsed);
        fields_[place]->setVisible(isUsed);
        if (!isUsed)
            continue;
        const size_t slot = order[static_cast<size_t>(place)];
        const QString label = ToQString(FieldLabel(editor_.Working().SourceType, slot));
        labels_[place]->setText(label);
        fields_[place]->setAccessibleName(QString(label).remove(QLatin1Char(':')));
        fields_[place]->setObjectName(QStringLiteral("slot%1").arg(slot));
        fields_[place]->setText(ToQString(editor_.Field(slot)));
        fields_[place]->setCursorPosition(0);
    }
}

void SourceFieldsPane::FillGrid() {
    grid_->setRowCount(0);
    grid_->setRowCount(static_cast<int>(editor_.GridRows()));
    QWidget* before = fields_.last();
    for (int row = 0; row < grid_->rowCount(); ++row) {
        const CCustomSourceField& field = editor_.GridRow(static_cast<size_t>(row));
        const QString name = ToQString(field.name).simplified();
        auto* const title = new QTableWidgetItem(name);
        title->setFlags(Qt::ItemIsEnabled);
        grid_->setItem(row, 0, title);
        auto* const value = NewTextField(grid_, ToQString(field.value));
        value->setFrame(false);
        value->setCursorPosition(0);
        value->setAccessibleName(name);
        value->setObjectName(QStringLiteral("row%1").arg(row));
        grid_->setCellWidget(row, 1, value);
        setTabOrder(before, value);
        before = value;
        connect(value, &QLineEdit::textEdited, this, [this, row](const QString& text) {
            editor_.SetGridValue(static_cast<size_t>(row), FromQString(text));
            emit Changed();
        });
    }
    grid_->resizeRowsToContents();
    for (int row = 0; row < grid_->rowCount(); ++row)
        grid_->setRowHeight(row, grid_->cellWidget(row, 1)->sizeHint().height() + 1);
    // As high as its rows, the further ones scroll.
    const int rows = std::clamp(grid_->rowCount(), 1, kGridRows);
    grid_->setFixedHeight(grid_->rowHeight(0) * rows + 2 * grid_->frameWidth());
    Restyle();
}

void SourceFieldsPane::Restyle() {
    for (int row = 0; row < grid_->rowCount(); ++row) {
        grid_->item(row, 0)->setBackground(theme_.Color(ColorRole::Raised));
        grid_->item(row, 0)->setForeground(theme_.Color(ColorRole::Text));
    }
}

}  // namespace lore
