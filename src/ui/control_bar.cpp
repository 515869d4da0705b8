#include "ui/control_bar.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QStackedWidget>
#include <QTimerEvent>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "notes/panel_entries.h"
#include "ui/panel_page.h"
#include "ui/theme.h"

namespace lore {

namespace {

struct Tab {
    PanelKind kind;
    const char* word;
    const char* icon;
};

constexpr Tab kTabs[] = {
    {PanelKind::Categories, QT_TRANSLATE_NOOP("ControlBar", "Categories"), "folder-tree"},
    {PanelKind::Sources, QT_TRANSLATE_NOOP("ControlBar", "Sources"), "book-open"},
    {PanelKind::KeyWords, QT_TRANSLATE_NOOP("ControlBar", "Key Words"), "tags"},
    {PanelKind::Colors, QT_TRANSLATE_NOOP("ControlBar", "Colors"), "palette"},
};

}  // namespace

ControlBar::ControlBar(const Theme& theme, QWidget* parent)
    : QWidget(parent), theme_(theme), stack_(new QStackedWidget(this)) {
    setObjectName("controlBar");
    setAccessibleName(tr("Filter panels"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto* const row = new QWidget(this);
    auto* const tabs = new QHBoxLayout(row);
    tabs->setContentsMargins(kSpace * 2, kSpace * 2, kSpace * 2, 0);
    tabs->setSpacing(kSpace);
    auto* const group = new QButtonGroup(this);
    for (int page = 0; page < static_cast<int>(pages_.size()); ++page) {
        AddTab(page, row);
        group->addButton(tabs_[static_cast<size_t>(page)], page);
    }
    layout->addWidget(row);
    layout->addWidget(stack_);
    connect(group, &QButtonGroup::idClicked, this, [this](int page) {
        SetPage(page);
        emit PageChanged(page);
    });
    connect(&theme_, &Theme::Changed, this, &ControlBar::Restyle);
    Restyle();
    SetPage(0);
}

void ControlBar::AddTab(int page, QWidget* row) {
    const Tab& tab = kTabs[page];
    auto* const button = new QToolButton(row);
    button->setText(tr(tab.word));
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    button->setFont(theme_.Font(TextSize::Small));
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    row->layout()->addWidget(button);
    tabs_[static_cast<size_t>(page)] = button;
    auto* const content = new PanelPage(tab.kind, theme_, stack_);
    stack_->addWidget(content);
    pages_[static_cast<size_t>(page)] = content;
    connect(content, &PanelPage::CommandRequested, this, &ControlBar::CommandRequested);
    connect(content, &PanelPage::ChoiceChanged, this,
            [this, kind = tab.kind](int number) { emit ChoiceChanged(kind, number); });
}

void ControlBar::Rebuild(const CLorebinderApp& app) {
    const Settings& settings = app.GetSettings();
    const OpenNoteBook& book = app.NoteBook();
    const int set = CategorySetOf(settings.Int(Option::CtrlBarCatSet));
    const SourceGrouping grouping = SourceGroupingOf(settings.Int(Option::CtrlBarSortSrc));
    PageAt(PanelKind::Categories)->SetChoice(set);
    PageAt(PanelKind::Sources)->SetChoice(settings.Int(Option::CtrlBarSortSrc));
    PageAt(PanelKind::Categories)->SetEntries(CategoryEntries(book.categories, set));
    PageAt(PanelKind::Sources)->SetEntries(SourceEntries(book.sources, grouping, book.notesWithoutSource));
    PageAt(PanelKind::KeyWords)->SetEntries(KeyWordEntries(book.keyWords));
    PageAt(PanelKind::Colors)->SetEntries(ColorEntries(book.colors));
    CountNotes(app.List().GetNoteIDs());
}

void ControlBar::UpdateSoon(const CLorebinderApp& app, PanelPart part) {
    app_ = &app;
    duePart_ = due_.isActive() ? std::max(duePart_, part) : part;
    due_.start(0, this);
}

void ControlBar::timerEvent(QTimerEvent* event) {
    if (event->timerId() != due_.timerId())
        return QWidget::timerEvent(event);
    due_.stop();
    if (duePart_ == PanelPart::Entries)
        Rebuild(*app_);
    else
        CountNotes(app_->List().GetNoteIDs());
}

void ControlBar::CountNotes(const LongList& listed) {
    for (PanelPage* const page : pages_)
        page->CountNotes(listed);
}

void ControlBar::SetOtherNoteBooks(const QStringList& names) {
    for (PanelPage* const page : pages_)
        page->SetOtherNoteBooks(names);
}

void ControlBar::SetAvailable(const std::function<bool(PanelNeed)>& isThere) {
    for (PanelPage* const page : pages_)
        page->SetAvailable(isThere);
}

void ControlBar::SetPage(int page) {
    page = std::clamp(page, 0, static_cast<int>(pages_.size()) - 1);
    tabs_[static_cast<size_t>(page)]->setChecked(true);
    stack_->setCurrentIndex(page);
}

int ControlBar::Page() const {
    return stack_->currentIndex();
}

void ControlBar::Restyle() {
    for (size_t page = 0; page < tabs_.size(); ++page)
        tabs_[page]->setIcon(theme_.Icon(kTabs[page].icon));
}

}  // namespace lore
