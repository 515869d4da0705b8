#include "ui/bibliography/select_sources_dlg.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "bibliography/output_selection.h"
#include "bibliography/source_types.h"
#include "ui/controls/dialog_parts.h"
#include "ui/controls/empty_line.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/sources/clamped_spin_box.h"
#include "ui/sources/source_dialog.h"
#include "ui/sources/source_list_model.h"
#include "ui/sources/sources_list_wnd.h"

namespace lore {

namespace {

constexpr int kDefaultChars = 150, kDefaultLines = 42;

}  // namespace

CSelectSourcesDlg::CSelectSourcesDlg(SourceSelection& selection, const Theme& theme, SettingsStore& store,
                                     QWidget* parent)
    : DialogFrame(tr("Select Sources For Bibliography"), "SelectSources", store, parent),
      selection_(selection),
      theme_(theme) {
    resize(fontMetrics().averageCharWidth() * kDefaultChars, fontMetrics().height() * kDefaultLines);
    auto* const lists = new QHBoxLayout;
    lists->setSpacing(kSpace * 3);
    lists->addWidget(MakeSide(available_, selection_.Available(), tr("A&vailable Sources"),
                              tr("Double-Click to Select Sources For Bibliography")),
                     1);
    lists->addWidget(MakeMoves());
    lists->addWidget(
        MakeSide(selected_, selection_.Selected(), tr("Selecte&d Sources"), tr("Double-Click to Remove Sources")), 1);
    available_.list->setObjectName("available");
    available_.list->setAccessibleName(tr("Available Sources"));
    selected_.list->setObjectName("selected");
    selected_.list->setAccessibleName(tr("Selected Sources"));
    new EmptyLine(*available_.list, tr("No source is left to select."));
    new EmptyLine(*selected_.list, tr("Double-click a source under \"Available Sources\" to put it here."));
    Content()->addLayout(lists, 1);
    Content()->addWidget(MakeFormatting());
    QPushButton* const save = AddButton(tr("&Save"));
    save->setObjectName("save");
    SetMainButton(save);
    connect(save, &QPushButton::clicked, this, [this] { done(kSourcesSelected); });
    connect(AddButton(tr("&Cancel")), &QPushButton::clicked, this, &QDialog::reject);
    connect(available_.list, &QAbstractItemView::activated, this, &CSelectSourcesDlg::MoveOver);
    connect(selected_.list, &QAbstractItemView::activated, this, &CSelectSourcesDlg::MoveBack);
    AddListKey(selected_.list, QKeySequence::Delete, [this] { MoveBack(); });
    ShowLists();
    available_.list->setFocus();
}

QWidget* CSelectSourcesDlg::MakeSide(Side& side, const SourceList& sources, const QString& title, const QString& hint) {
    auto* const box = new QWidget(this);
    auto* const layout = MakeInner<QVBoxLayout>(box, kSpace);
    side.model = new SourceListModel([&sources] { return sources.Count(); },
                                     [&sources](size_t row) -> const CSource& { return sources[row]; }, this);
    side.list = new CSourcesListWnd(*side.model, kSourcesSelBoxes, theme_, box);
    side.count = MakeHint({}, theme_, box);
    side.count->setWordWrap(false);
    auto* const head = new QHBoxLayout;
    head->addWidget(MakeFieldLabel(title, side.list, box));
    head->addStretch(1);
    head->addWidget(side.count);
    layout->addLayout(head);
    layout->addWidget(side.list, 1);
    layout->addWidget(MakeHint(hint, theme_, box));
    connect(side.list, &CSourcesListWnd::RowSelected, this, [this](int) {
        add_->setEnabled(available_.list->SelectedRow() >= 0);
        remove_->setEnabled(selected_.list->SelectedRow() >= 0);
    });
    return box;
}

QWidget* CSelectSourcesDlg::MakeMoves() {
    auto* const box = new QWidget(this);
    auto* const layout = MakeInner<QVBoxLayout>(box, kSpace * 2);
    layout->addStretch(1);
    const auto make = [&](const QString& text, const char* name) {
        QPushButton* const button = MakeButton(text, box);
        button->setObjectName(QString::fromLatin1(name));
        layout->addWidget(button);
        return button;
    };
    add_ = make(tr("Select -&>"), "add");
    all_ = make(tr("Select &All ->"), "all");
    layout->addSpacing(kSpace * 3);
    remove_ = make(tr("<- &Remove"), "remove");
    none_ = make(tr("<- C&lear All"), "none");
    layout->addStretch(1);
    add_->setAccessibleName(tr("Select the source"));
    remove_->setAccessibleName(tr("Remove the source"));
    connect(add_, &QPushButton::clicked, this, &CSelectSourcesDlg::MoveOver);
    connect(remove_, &QPushButton::clicked, this, &CSelectSourcesDlg::MoveBack);
    connect(all_, &QPushButton::clicked, this, [this] {
        selection_.SelectAll();
        ShowLists();
    });
    connect(none_, &QPushButton::clicked, this, [this] {
        selection_.ClearAll();
        ShowLists();
    });
    return box;
}

QWidget* CSelectSourcesDlg::MakeFormatting() {
    auto* const box = new QWidget(this);
    auto* const grid = MakeInner<QGridLayout>(box, kSpace * 3, kSpace * 2);
    sort_ = new QCheckBox(tr("Sort Sources Alpha&betically"), box);
    individual_ = new QRadioButton(tr("&Use Sources' Individual Formatting"), box);
    common_ = new QRadioButton(tr("Set ALL Sources &Formatting"), box);
    style_ = new QComboBox(box);
    NameBox(*style_, tr("Formatting of all sources"));
    for (const NumberedName& choice : StyleChoices())
        style_->addItem(ToQString(choice.name), choice.number);
    indent_ = new ClampedSpinBox(0, kMostBibliographyIndent, box);
    authors_ = new ClampedSpinBox(1, kMostBibliographyAuthors, box);
    sort_->setObjectName("sort");
    individual_->setObjectName("individual");
    common_->setObjectName("common");
    style_->setObjectName("style");
    indent_->setObjectName("indent");
    authors_->setObjectName("authors");
    auto* const title = new QLabel(tr("Bibliography Formatting"), box);
    title->setFont(theme_.Font(TextSize::Title));
    grid->addWidget(title, 0, 0, 1, 4);
    grid->addWidget(sort_, 1, 0);
    grid->addWidget(individual_, 2, 0);
    grid->addWidget(common_, 3, 0);
    const std::pair<QString, QWidget*> fields[] = {
        {tr("S&tyle:"), style_}, {tr("&Indent Spaces:"), indent_}, {tr("Authors Before '&et al':"), authors_}};
    for (int row = 0; row < static_cast<int>(std::size(fields)); ++row) {
        grid->addWidget(MakeFieldLabel(fields[row].first, fields[row].second, box), row + 1, 2);
        grid->addWidget(fields[row].second, row + 1, 3);
    }
    grid->setColumnStretch(1, 1);
    sort_->setChecked(selection_.Sorted());
    individual_->setChecked(selection_.Individual());
    style_->setCurrentIndex(style_->findData(selection_.Style()));
    indent_->setValue(selection_.IndentSpaces());
    authors_->setValue(selection_.AuthorsBeforeEtAl());
    const auto shown = [this](auto change) {
        return [this, change](auto value) {
            (selection_.*change)(value);
            ShowLists();
        };
    };
    connect(sort_, &QCheckBox::toggled, this, shown(&SourceSelection::SetSorted));
    connect(individual_, &QRadioButton::toggled, this, shown(&SourceSelection::SetIndividual));
    connect(style_, &QComboBox::currentIndexChanged, this, [this](int) {
        selection_.SetStyle(style_->currentData().toInt());
        ShowLists();
    });
    connect(indent_, &QSpinBox::valueChanged, this, shown(&SourceSelection::SetIndentSpaces));
    connect(authors_, &QSpinBox::valueChanged, this, shown(&SourceSelection::SetAuthorsBeforeEtAl));
    return box;
}

void CSelectSourcesDlg::MoveOver() {
    const int row = available_.list->SelectedRow();
    if (row < 0)
        return;
    selection_.Select(available_.model->At(row).SourceID);
    ShowLists();
}

void CSelectSourcesDlg::MoveBack() {
    const int row = selected_.list->SelectedRow();
    if (row < 0)
        return;
    selection_.Remove(selected_.model->At(row).SourceID);
    ShowLists();
}

void CSelectSourcesDlg::ShowList(const Side& side, const SourceList& sources) {
    // The next source takes the place of one that left, so that one key moves several.
    const int row = side.list->SelectedRow();
    side.model->Reset();
    side.list->SelectRow(row < 0 ? -1 : std::min(row, static_cast<int>(sources.Count()) - 1));
    side.count->setText(QString::number(sources.Count()));
    const auto count = static_cast<int>(sources.Count());
    side.count->setAccessibleName(WithPlural(tr("%n source(s)", nullptr, count), count));
}

void CSelectSourcesDlg::ShowLists() {
    ShowList(available_, selection_.Available());
    ShowList(selected_, selection_.Selected());
    add_->setEnabled(available_.list->SelectedRow() >= 0);
    remove_->setEnabled(selected_.list->SelectedRow() >= 0);
    all_->setEnabled(selection_.Available().Count() > 0);
    none_->setEnabled(selection_.Selected().Count() > 0);
    for (QWidget* const control :
         {static_cast<QWidget*>(style_), static_cast<QWidget*>(indent_), static_cast<QWidget*>(authors_)})
        control->setEnabled(!selection_.Individual());
}

}  // namespace lore
