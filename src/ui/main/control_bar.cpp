#include "ui/main/control_bar.h"

#include <QAccessibleWidget>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QStackedWidget>
#include <QTimerEvent>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "notes/panel_entries.h"
#include "ui/look/theme.h"
#include "ui/main/panel_page.h"

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

/// What is chosen above the entries of a panel: the set of categories, the grouping of sources.
int32_t ChoiceOf(const Settings& settings, PanelKind kind) {
    if (kind == PanelKind::Categories)
        return CategorySetOf(settings.Int(Option::CtrlBarCatSet));
    return static_cast<int32_t>(SourceGroupingOf(settings.Int(Option::CtrlBarSortSrc)));
}

std::vector<PanelEntry> EntriesOf(const OpenNoteBook& book, PanelKind kind, int32_t choice) {
    switch (kind) {
        case PanelKind::Categories:
            return CategoryEntries(book.categories, choice);
        case PanelKind::Sources:
            return SourceEntries(book.sources, SourceGroupingOf(choice), book.notesWithoutSource);
        case PanelKind::KeyWords:
            return KeyWordEntries(book.keyWords);
        case PanelKind::Colors:
            return ColorEntries(book.colors);
    }
    return {};
}

class PanelTab : public QToolButton {
public:
    using QToolButton::QToolButton;
};
class PanelTabs : public QWidget {
public:
    using QWidget::QWidget;
};

/// For Qt such a button is a box to tick.
class AccessibleTab : public QAccessibleWidget {
public:
    explicit AccessibleTab(PanelTab& tab) : QAccessibleWidget(&tab, QAccessible::PageTab), tab_(tab) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? tab_.text() : QAccessibleWidget::text(kind);
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = tab_.isChecked();
        return state;
    }
    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString& name) override {
        if (name == pressAction())
            tab_.click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    PanelTab& tab_;
};

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
    if (auto* const tab = dynamic_cast<PanelTab*>(object))
        return new AccessibleTab(*tab);
    auto* const tabs = dynamic_cast<PanelTabs*>(object);
    return tabs ? new QAccessibleWidget(tabs, QAccessible::PageTabList, ControlBar::tr("Filter panels")) : nullptr;
}

}  // namespace

ControlBar::ControlBar(const Theme& theme, QWidget* parent)
    : QWidget(parent), theme_(theme), stack_(new QStackedWidget(this)) {
    setObjectName("controlBar");
    setAccessibleName(tr("Filter panels"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    QAccessible::installFactory(MakeAccessible);
    auto* const row = new PanelTabs(this);
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
    SetPage(0);
}

void ControlBar::AddTab(int page, QWidget* row) {
    const Tab& tab = kTabs[page];
    auto* const button = new PanelTab(row);
    button->setObjectName(QStringLiteral("panelTab%1").arg(page));
    button->setText(tr(tab.word));
    button->setIcon(theme_.Icon(tab.icon));
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
    app_ = &app;
    stale_.fill(PanelPart::Entries);
    UpdateInSight();
}

void ControlBar::UpdateSoon(const CLorebinderApp& app, PanelPart part) {
    app_ = &app;
    for (std::optional<PanelPart>& stale : stale_)
        stale = std::max(stale.value_or(part), part);
    due_.start(0, this);
}

void ControlBar::timerEvent(QTimerEvent* event) {
    if (event->timerId() != due_.timerId())
        return QWidget::timerEvent(event);
    due_.stop();
    UpdateInSight();
}

void ControlBar::showEvent(QShowEvent* event) {
    UpdateInSight();
    QWidget::showEvent(event);
}

void ControlBar::UpdateInSight() {
    const auto page = static_cast<size_t>(Page());
    if (isHidden() || !stale_[page])
        return;
    const PanelPart part = *std::exchange(stale_[page], std::nullopt);
    const LongList listed = app_->List().GetNoteIDs();
    if (part == PanelPart::Counts)
        return pages_[page]->CountNotes(listed);
    const PanelKind kind = kTabs[page].kind;
    const int32_t choice = ChoiceOf(app_->GetSettings(), kind);
    pages_[page]->SetChoice(choice);
    pages_[page]->SetEntries(EntriesOf(app_->NoteBook(), kind, choice), listed);
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
    UpdateInSight();
}

int ControlBar::Page() const {
    return stack_->currentIndex();
}

}  // namespace lore
