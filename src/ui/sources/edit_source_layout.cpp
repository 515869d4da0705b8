#include <QComboBox>
#include <QCompleter>
#include <QGridLayout>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>

#include "ui/controls/dialog_parts.h"
#include "ui/controls/opening_combo.h"
#include "ui/controls/panel_section.h"
#include "ui/controls/text_field.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/look/window_place.h"
#include "ui/sources/clamped_spin_box.h"
#include "ui/sources/edit_source_dlg.h"
#include "ui/sources/source_authors_pane.h"
#include "ui/sources/source_date_field.h"
#include "ui/sources/source_fields_pane.h"
#include "ui/sources/source_preview_wnd.h"

namespace lore {

namespace {

constexpr int kColumnChars = 58;

template <typename Box = OpeningCombo>
QComboBox* MakeCombo(const char* name, QWidget* parent) {
    auto* const box = new Box(parent);
    box->setObjectName(name);
    box->setMaxVisibleItems(20);
    return box;
}

}  // namespace

void CEditSourceDlg::MakeLayout() {
    auto* const form = new QWidget(this);
    auto* const columns = new QHBoxLayout(form);
    columns->setContentsMargins(0, 0, kSpace, 0);
    columns->setSpacing(kSpace * 6);
    auto* const left = new QVBoxLayout;
    auto* const right = new QVBoxLayout;
    for (QVBoxLayout* const column : {left, right})
        column->setSpacing(kSpace * 4);
    left->addWidget(MakeStyle());
    left->addWidget(MakeMain());
    fields_ = new SourceFieldsPane(editor_, Windows().theme, form);
    left->addWidget(fields_);
    left->addStretch(1);
    authors_ = new SourceAuthorsPane(editor_.Authors(), Windows().theme, form);
    right->addWidget(authors_, 1);
    right->addWidget(MakeGeneral());
    columns->addLayout(left, 1);
    columns->addLayout(right, 1);
    const int sides = kSpace * 14;
    if (form->minimumSizeHint().width() + sides > LargestSize().width())
        columns->setDirection(QBoxLayout::TopToBottom);
    auto* const scroll = new QScrollArea(this);
    scroll->setWidget(form);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setMinimumWidth(form->minimumSizeHint().width() + kSpace * 4);
    auto* const below = new PanelSection(tr("Formatted Preview"), Windows().theme, this);
    preview_ = new CSourcePreviewWnd(Windows().theme, below);
    below->Body()->addWidget(preview_, 1);
    auto* const split = new QSplitter(Qt::Vertical, this);
    split->setChildrenCollapsible(false);
    split->setHandleWidth(1);
    below->setContentsMargins(0, kSpace * 3, 0, 0);
    columns->setContentsMargins(0, 0, kSpace, kSpace * 3);
    split->addWidget(scroll);
    split->addWidget(below);
    split->setStretchFactor(0, 0);
    split->setStretchFactor(1, 1);
    Content()->addWidget(split, 1);
    const int width = std::max(form->sizeHint().width() + sides, fontMetrics().averageCharWidth() * 2 * kColumnChars);
    resize(width, form->sizeHint().height() + below->sizeHint().height() + fontMetrics().height() * 6);
    if (!KeepSplit(*split, Windows().store, "EditSourceSplit"))
        split->setSizes({form->sizeHint().height() + kSpace, below->minimumSizeHint().height()});
}

QWidget* CEditSourceDlg::MakeStyle() {
    auto* const section = new PanelSection(tr("Type and Style"), Windows().theme, this);
    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(kSpace * 3);
    grid->setVerticalSpacing(kSpace);
    type_ = MakeCombo("type", section);
    type_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    type_->setMinimumContentsLength(18);
    style_ = MakeCombo("style", section);
    for (const NumberedName& choice : StyleChoices())
        style_->addItem(ToQString(choice.name), choice.number);
    style_->setCurrentIndex(style_->findData(editor_.Working().FormatStyle));
    QPushButton* const types = MakeButton(tr("Edit Cust&om Types"), section);
    types->setObjectName("editTypes");
    grid->addWidget(MakeFieldLabel(tr("Source T&ype:"), type_, section), 0, 0);
    grid->addWidget(MakeFieldLabel(tr("Formattin&g Style:"), style_, section), 0, 1);
    grid->addWidget(type_, 1, 0);
    grid->addWidget(style_, 1, 1);
    grid->addWidget(types, 2, 0, Qt::AlignLeft);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    section->Body()->addLayout(grid);
    connect(types, &QPushButton::clicked, this, &CEditSourceDlg::EditTypes);
    return section;
}

QWidget* CEditSourceDlg::MakeMain() {
    auto* const section = new PanelSection(tr("Main Source Information"), Windows().theme, this);
    title_ = NewTextField(section);
    title_->setObjectName("title");
    title_->setText(ToQString(editor_.Field(0)));
    title_->setCursorPosition(0);
    publication_ = MakeCombo<QComboBox>("publication", section);
    publication_->setEditable(true);
    TakeLongText(*publication_->lineEdit());
    publication_->setInsertPolicy(QComboBox::NoInsert);
    publication_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    qobject_cast<QListView*>(publication_->view())->setUniformItemSizes(true);
    // Typed letters are kept as they are: the box would put the entry in their place that differs by case alone.
    disconnect(publication_->lineEdit(), &QLineEdit::editingFinished, publication_, nullptr);
    for (const std::string& text : editor_.Publications())
        publication_->addItem(ToQString(text).simplified(), ToQString(text));
    publication_->completer()->setCompletionMode(QCompleter::PopupCompletion);
    publication_->completer()->setCaseSensitivity(Qt::CaseInsensitive);
    publication_->completer()->setFilterMode(Qt::MatchContains);
    publication_->setEditText(ToQString(editor_.Field(1)));
    publication_->lineEdit()->setCursorPosition(0);
    date_ = new SourceDateField(editor_, section);
    publicationLabel_ = MakeFieldLabel({}, publication_, section);
    section->Body()->addWidget(MakeFieldLabel(tr("&Title:"), title_, section));
    section->Body()->addWidget(title_);
    section->Body()->addSpacing(kSpace);
    section->Body()->addWidget(publicationLabel_);
    section->Body()->addWidget(publication_);
    section->Body()->addSpacing(kSpace);
    section->Body()->addWidget(date_);
    return section;
}

QWidget* CEditSourceDlg::MakeGeneral() {
    auto* const section = new PanelSection(tr("General Formatting"), Windows().theme, this);
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    indent_ = new ClampedSpinBox(0, kMostIndentSpaces, section);
    indent_->setObjectName("indent");
    indent_->setValue(editor_.Working().IndentSpaces);
    etAl_ = new ClampedSpinBox(kLeastAuthors, kMostAuthors, section);
    etAl_->setObjectName("etAl");
    etAl_->setValue(editor_.Working().AuthorsBeforeEtAl);
    row->addWidget(MakeFieldLabel(tr("&Indent Spaces:"), indent_, section));
    row->addWidget(indent_);
    row->addSpacing(kSpace * 4);
    row->addWidget(MakeFieldLabel(tr("Aut&hors Before 'et al':"), etAl_, section));
    row->addWidget(etAl_);
    row->addStretch(1);
    section->Body()->addLayout(row);
    return section;
}

}  // namespace lore
