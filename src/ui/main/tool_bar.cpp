#include "ui/main/tool_bar.h"

#include <QActionGroup>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QStyle>
#include <QToolButton>
#include <algorithm>

#include "notes/board_options.h"
#include "notes/sort_order.h"
#include "ui/controls/opening_combo.h"
#include "ui/controls/run_when_free.h"
#include "ui/controls/text_field.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/look/theme_tool_bar.h"
#include "ui/main/main_menu.h"

namespace lore {

namespace {

QComboBox* Dressed(QComboBox* combo, const QString& name, int widthChars) {
    combo->setAccessibleName(name);
    combo->setToolTip(name);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(widthChars);
    return combo;
}

/// As beside the text of a control.
void SetIconSize(QToolButton& button) {
    const int side = button.style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, &button);
    button.setIconSize(QSize(side, side));
}

QWidget* MakeGap(QToolBar* bar) {
    auto* const gap = new QWidget(bar);
    gap->setFixedWidth(kSpace * 2);
    return gap;
}

}  // namespace

MainToolBar::MainToolBar(const Theme& theme, QWidget* parent) : QToolBar(tr("Tool bar"), parent), theme_(theme) {
    setObjectName("toolBar");
    setMovable(false);
    setFloatable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setContentsMargins(kSpace * 2, kSpace, kSpace * 2, kSpace);
    AddSearch();
    AddScopeMenu();
    AddChoices();
    AddCommands();
    DressMoreButton(*this);
    SetScope(SearchScope::Database);
}

void MainToolBar::AddSearch() {
    search_ = NewTextField(this);
    search_->setObjectName("searchBox");
    search_->setAccessibleName(tr("Search"));
    OfferClearing(*search_);
    search_->setMinimumWidth(fontMetrics().averageCharWidth() * 30);
    run_ = AddLeadingIcon(*search_, theme_.Icon("search", ColorRole::DimText), tr("Search"));
    const auto run = WhereFree([this] {
        const QString text = search_->text().trimmed();
        if (!text.isEmpty())
            emit SearchRequested(text, scope_);
    });
    connect(search_, &QLineEdit::returnPressed, this, run);
    connect(run_, &QAction::triggered, this, run);
    addWidget(search_);
}

void MainToolBar::AddScopeMenu() {
    scopeMenu_ = new QMenu(tr("Search Options"), this);
    auto* const group = new QActionGroup(this);
    const std::pair<const char*, SearchScope> scopes[] = {
        {QT_TR_NOOP("Search Notes &Database"), SearchScope::Database},
        {QT_TR_NOOP("Search &Current Notes"), SearchScope::CurrentNotes}};
    for (const auto& [text, scope] : scopes) {
        QAction* const action = scopeMenu_->addAction(tr(text));
        action->setCheckable(true);
        action->setChecked(scope == scope_);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, chosen = scope] { SetScope(chosen); });
    }
    auto* const button = new QToolButton(this);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setMenu(scopeMenu_);
    SetIconSize(*button);
    button->setStyleSheet("QToolButton::menu-indicator { image: none; }");
    button->setDefaultAction(new QAction(theme_.Icon("list-filter"), tr("Search Options"), this));
    button->setAccessibleName(tr("Search Options"));
    addWidget(button);
}

void MainToolBar::AddChoices() {
    auto* const spread = new QWidget(this);
    spread->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(spread);
    noteBooks_ = Dressed(new OpeningCombo(this), tr("NoteBook"), 20);
    sort_ = Dressed(new OpeningCombo(this), tr("Order of the notes"), 24);
    zoom_ = Dressed(new OpeningCombo(this), tr("Zoom"), 5);
    for (const NoteSortChoice& choice : NoteSortChoices())
        sort_->addItem(QString::fromUtf8(choice.text), choice.id);
    for (const int percent : kBoardZooms)
        zoom_->addItem(QStringLiteral("%1%").arg(percent), percent);
    addWidget(noteBooks_);
    addWidget(MakeGap(this));
    addWidget(sort_);
    addWidget(MakeGap(this));
    addWidget(zoom_);
    connect(noteBooks_, &QComboBox::activated, this, &MainToolBar::NoteBookChosen);
    connect(sort_, &QComboBox::activated, this, [this] { emit SortChosen(sort_->currentData().toInt()); });
    connect(zoom_, &QComboBox::activated, this, [this] { emit ZoomChosen(zoom_->currentData().toInt()); });
}

QAction* MainToolBar::AddCommand(const char* icon, const QString& text, const QKeySequence& keys, const char* name,
                                 void (MainToolBar::*request)()) {
    auto* const button = new QToolButton(this);
    auto* const action = new QAction(theme_.Icon(icon), text, this);
    action->setToolTip(QStringLiteral("%1 (%2)").arg(text, keys.toString(QKeySequence::NativeText)));
    button->setObjectName(QString::fromLatin1(name));
    button->setAccessibleName(text);
    SetIconSize(*button);
    button->setDefaultAction(action);
    QAction* const place = addWidget(button);
    connect(action, &QAction::triggered, this, WhereFree([this, request] { emit(this->*request)(); }));
    connect(action, &QAction::visibleChanged, place, [action, place] { place->setVisible(action->isVisible()); });
    return action;
}

void MainToolBar::AddCommands() {
    addWidget(MakeGap(this));
    AddCommand("plus", tr("Add Note"), QKeySequence::New, "newNote", &MainToolBar::NewNoteRequested);
    AddCommand("calendar-days", tr("Event Calendar"), kCalendarKeys, "calendar", &MainToolBar::CalendarRequested);
    sync_ = AddCommand("refresh-cw", tr("< Run Sync >"), kSyncKeys, "runSync", &MainToolBar::SyncRequested);
    sync_->setVisible(false);
    findChild<QToolButton*>(QStringLiteral("runSync"))->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
}

void MainToolBar::SetScope(SearchScope scope) {
    scope_ = scope;
    const bool isDatabase = scope == SearchScope::Database;
    run_->setToolTip(isDatabase ? tr("Run Database Search") : tr("Run Current Notes Search"));
    search_->setPlaceholderText(isDatabase ? tr("Search Notes Database") : tr("Search Current Notes"));
}

void MainToolBar::SetSort(int sortId) {
    sort_->setCurrentIndex(std::max(sort_->findData(sortId), 0));
}

void MainToolBar::SetZoom(int percent) {
    zoom_->setCurrentIndex(zoom_->findData(NearestBoardZoom(percent)));
}

void MainToolBar::SetNoteBooks(const std::vector<CDatabase>& choices, const std::string& openGuid) {
    noteBooks_->clear();
    for (const CDatabase& choice : choices) {
        noteBooks_->addItem(choice.IsMain() ? QString::fromUtf8(kMainNoteBookListName) : ToQString(choice.name));
        if (choice.guid == openGuid)
            noteBooks_->setCurrentIndex(noteBooks_->count() - 1);
    }
}

void MainToolBar::FocusSearch() {
    search_->setFocus(Qt::ShortcutFocusReason);
    search_->selectAll();
}

}  // namespace lore
