#include "ui/sources/view_sources_dlg.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStackedWidget>

#include "ui/controls/dialog_parts.h"
#include "ui/controls/popup_menu.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/look/window_place.h"
#include "ui/sources/source_list_model.h"
#include "ui/sources/sources_list_wnd.h"

namespace lore {

namespace {

constexpr int kDefaultChars = 110, kDefaultLines = 36;
/// The labels of the filters with their Alt keys.
constexpr const char* kFilterLabels[] = {"&Titles:", "&Authors:", "&Publications:"};

QPushButton* MakeCommand(const QString& icon, const QString& text, const Theme& theme, QWidget* parent) {
    QPushButton* const button = MakeButton(text, parent);
    button->setIcon(theme.Icon(icon));
    return button;
}

}  // namespace

CViewSourcesDlg::CViewSourcesDlg(SourceBrowser& browser, const SourceWindows& windows, QWidget* parent)
    : SourceDialog(QString::fromLatin1(browser.Title()), "ViewSources", windows, parent), browser_(browser) {
    resize(fontMetrics().averageCharWidth() * kDefaultChars, fontMetrics().height() * kDefaultLines);
    MakeFilters();
    MakeCommands();
    MakeList();
    filtersButton_ = AddSideButton({});
    filtersButton_->setObjectName("showFilters");
    connect(filtersButton_, &QPushButton::clicked, this, [this] {
        browser_.ToggleFilters();
        ShowFilters();
    });
    if (browser_.Selects()) {
        QPushButton* const select = AddButton(tr("&SELECT"));
        select->setObjectName("select");
        SetMainButton(select);
        connect(select, &QPushButton::clicked, this, &QDialog::accept);
    }
    connect(AddButton(tr("&Cancel")), &QPushButton::clicked, this, &QDialog::reject);
    FillBoxes();
    ShowFilters();
    ShowRows();
    RestoreFrame();
    list_->setFocus();
}

void CViewSourcesDlg::MakeFilters() {
    filters_ = new QWidget(this);
    auto* const grid = MakeInner<QGridLayout>(filters_, kSpace * 3, kSpace);
    for (size_t i = 0; i < kSourceFilters; ++i) {
        auto* const box = new QComboBox(filters_);
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(12);
        box->setMaxVisibleItems(20);
        qobject_cast<QListView*>(box->view())->setUniformItemSizes(true);
        grid->addWidget(MakeFieldLabel(tr(kFilterLabels[i]), box, filters_), 0, static_cast<int>(i));
        grid->addWidget(box, 1, static_cast<int>(i));
        grid->setColumnStretch(static_cast<int>(i), 1);
        connect(box, &QComboBox::activated, this, [this, i](int line) {
            browser_.Choose(static_cast<SourceFilter>(i), static_cast<size_t>(line));
            ShowRows();
            list_->scrollToTop();
        });
        boxes_[i] = box;
    }
    Content()->addWidget(filters_);
}

void CViewSourcesDlg::MakeCommands() {
    const Theme& theme = Windows().theme;
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    QPushButton* const add = MakeCommand("plus", tr("&New Source"), theme, this);
    QPushButton* const edit = MakeCommand("pencil", tr("&Edit Source"), theme, this);
    QPushButton* const remove = MakeCommand("trash-2", tr("&Delete Source"), theme, this);
    add->setObjectName("newSource");
    edit->setObjectName("editSource");
    remove->setObjectName("deleteSource");
    count_ = MakeHint({}, theme, this);
    count_->setObjectName("count");
    count_->setWordWrap(false);
    for (QPushButton* const button : {add, edit, remove})
        row->addWidget(button);
    row->addStretch(1);
    row->addWidget(count_);
    Content()->addLayout(row);
    connect(add, &QPushButton::clicked, this, &CViewSourcesDlg::NewSource);
    connect(edit, &QPushButton::clicked, this, &CViewSourcesDlg::EditSource);
    connect(remove, &QPushButton::clicked, this, &CViewSourcesDlg::DeleteSource);
}

void CViewSourcesDlg::MakeList() {
    stack_ = new QStackedWidget(this);
    model_ = new SourceListModel([this] { return browser_.Count(); },
                                 [this](size_t row) -> const CSource& { return browser_[row]; }, this);
    list_ = new CSourcesListWnd(*model_, kSourcesListBoxes, Windows().theme, stack_);
    empty_ = new QLabel(stack_);
    empty_->setObjectName("empty");
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setWordWrap(true);
    stack_->addWidget(list_);
    stack_->addWidget(empty_);
    Content()->addWidget(stack_, 1);
    connect(list_, &CSourcesListWnd::RowSelected, this,
            [this](int row) { browser_.Select(row < 0 ? std::nullopt : std::optional(static_cast<size_t>(row))); });
    connect(list_, &CSourcesListWnd::MenuRequested, this, &CViewSourcesDlg::OpenMenu);
    connect(list_, &QAbstractItemView::activated, this, [this] { browser_.Selects() ? accept() : EditSource(); });
    AddListKey(list_, QKeySequence(Qt::Key_F2), [this] { EditSource(); });
    AddListKey(list_, QKeySequence::Delete, [this] { DeleteSource(); });
    AddListKey(list_, QKeySequence::New, [this] { NewSource(); });
}

void CViewSourcesDlg::FillBoxes() {
    for (size_t i = 0; i < kSourceFilters; ++i) {
        const auto filter = static_cast<SourceFilter>(i);
        QStringList lines;
        for (const std::string& line : browser_.Entries(filter))
            lines.append(ToQString(line).simplified());
        boxes_[i]->clear();
        boxes_[i]->addItems(lines);
        boxes_[i]->setCurrentIndex(static_cast<int>(browser_.Chosen(filter)));
    }
}

void CViewSourcesDlg::ShowRows() {
    const int32_t selected = browser_.SelectedID();
    {
        const QSignalBlocker quiet(list_);
        model_->Reset();
        const std::optional<size_t> row = browser_.RowOf(selected);
        list_->SelectRow(row ? static_cast<int>(*row) : -1);
    }
    browser_.Select(browser_.RowOf(selected));
    const bool none = browser_.CountOfAll() == 0;
    empty_->setText(none ? tr("This NoteBook has no sources yet. \"New Source\" makes the first one.")
                         : tr("No source matches all three filters."));
    QWidget* const shown = browser_.Count() > 0 ? static_cast<QWidget*>(list_) : empty_;
    if (stack_->currentWidget() != shown)
        stack_->setCurrentWidget(shown);
    const QString all = browser_.CountOfAll() == 1 ? tr("1 source") : tr("%1 sources").arg(browser_.CountOfAll());
    count_->setText(browser_.Count() == browser_.CountOfAll() ? all : tr("%1 of %2").arg(browser_.Count()).arg(all));
}

void CViewSourcesDlg::ShowFilters() {
    filters_->setVisible(browser_.ShowsFilters());
    const QString text = QString::fromLatin1(browser_.FiltersText());
    filtersButton_->setText(text.left(text.indexOf(' ') + 1) + QLatin1Char('&') + text.mid(text.indexOf(' ') + 1));
}

void CViewSourcesDlg::EditorClosed(std::optional<int32_t> saved) {
    browser_.Refresh(saved.value_or(-1));
    FillBoxes();
    ShowRows();
    list_->setFocus();
}

void CViewSourcesDlg::NewSource() {
    EditorClosed(Windows().EditSource(nullptr, this));
}

void CViewSourcesDlg::EditSource() {
    if (const std::optional<CSource> source = browser_.SourceToEdit())
        EditorClosed(Windows().EditSource(&*source, this));
}

void CViewSourcesDlg::DeleteSource() {
    Faults()->Run([this] {
        if (!browser_.Delete())
            return false;
        FillBoxes();
        ShowRows();
        list_->setFocus();
        return true;
    });
}

void CViewSourcesDlg::OpenMenu(const QPoint& at) {
    auto* const menu = NewPopupMenu(this);
    menu->addAction(tr("&Edit Source"), this, &CViewSourcesDlg::EditSource);
    menu->addAction(tr("&Delete Source"), this, &CViewSourcesDlg::DeleteSource);
    menu->popup(at);
}

void CViewSourcesDlg::RestoreFrame() {
    const Settings& settings = Windows().commands.World().settings;
    if (const std::optional<QRect> place = PlaceOnScreen(settings.Rectangle(Option::ViewSrcRect)))
        resize(place->size());
}

void CViewSourcesDlg::done(int result) {
    Windows().commands.World().settings.Set(Option::ViewSrcRect, PlaceToKeep(*this));
    SourceDialog::done(result);
}

}  // namespace lore
