#include "ui/main/panel_page.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QStackedLayout>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <optional>

#include "classify/category_ids.h"
#include "ui/controls/opening_combo.h"
#include "ui/controls/popup_menu.h"
#include "ui/controls/quiet_view.h"
#include "ui/controls/text_field.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/main/panel_delegate.h"
#include "ui/main/panel_model.h"

namespace lore {

namespace {

struct PageTexts {
    const char* name;
    const char* filter;
    const char* empty;
};

/// By PanelKind.
constexpr PageTexts kTexts[] = {
    {QT_TRANSLATE_NOOP("PanelPage", "Categories"), QT_TRANSLATE_NOOP("PanelPage", "Filter categories"),
     QT_TRANSLATE_NOOP("PanelPage", "Categories that notes are filed in appear here.")},
    {QT_TRANSLATE_NOOP("PanelPage", "Sources"), QT_TRANSLATE_NOOP("PanelPage", "Filter sources"),
     QT_TRANSLATE_NOOP("PanelPage", "Sources that notes are tied to appear here.")},
    {QT_TRANSLATE_NOOP("PanelPage", "Key Words"), QT_TRANSLATE_NOOP("PanelPage", "Filter key words"),
     QT_TRANSLATE_NOOP("PanelPage", "Key words that notes carry appear here.")},
    {QT_TRANSLATE_NOOP("PanelPage", "Colors"), QT_TRANSLATE_NOOP("PanelPage", "Filter colors"),
     QT_TRANSLATE_NOOP("PanelPage", "Border colors of notes appear here.")},
};

constexpr int kIndentation = kSpace * 4;

/// What tells an entry apart from the others of its panel, also after the entries were made anew.
std::string KeyOf(const std::vector<PanelEntry>& entries, int position) {
    std::string key;
    for (int at = position; at >= 0; at = entries[static_cast<size_t>(at)].parent) {
        const PanelEntry& entry = entries[static_cast<size_t>(at)];
        key += std::to_string(static_cast<int>(entry.value)) + ":" + std::to_string(entry.id) + ":" + entry.name + "\n";
    }
    return key;
}

/// An entry that is always there, and has no note.
bool SaysNothing(const PanelEntry& entry) {
    const bool isReserved =
        entry.value == PanelValue::NoSource || (entry.value == PanelValue::Category && entry.id == kUnassignedID);
    return isReserved && entry.notes.empty();
}

}  // namespace

PanelPage::PanelPage(PanelKind kind, const Theme& theme, QWidget* parent)
    : QWidget(parent), kind_(kind), theme_(theme), model_(new PanelModel(panel_, this)) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kSpace * 2, kSpace * 2, kSpace * 2, kSpace * 2);
    layout->setSpacing(kSpace * 2);
    AddChoice();
    filter_ = NewTextField(this);
    OfferClearing(*filter_);
    filter_->setPlaceholderText(tr(kTexts[static_cast<size_t>(kind)].filter));
    filter_->setAccessibleName(filter_->placeholderText());
    AddLeadingIcon(*filter_, theme.Icon("list-filter", ColorRole::DimText), tr("Filter"));
    layout->addWidget(filter_);
    AddTree();
    connect(filter_, &QLineEdit::textChanged, this, &PanelPage::ApplyFilter);
    connect(&theme_, &Theme::Changed, this, &PanelPage::Restyle);
    Restyle();
}

PanelPage::~PanelPage() = default;

void PanelPage::AddChoice() {
    if (kind_ != PanelKind::Categories && kind_ != PanelKind::Sources)
        return;
    const bool isCategories = kind_ == PanelKind::Categories;
    auto* const label = new QLabel(QString::fromUtf8(isCategories ? kCategorySetLabel : kSourceGroupingLabel), this);
    choice_ = new OpeningCombo(this);
    label->setBuddy(choice_);
    choice_->setAccessibleName(label->text());
    for (const PanelChoice& choice : isCategories ? CategorySetChoices() : SourceGroupingChoices())
        choice_->addItem(QString::fromUtf8(choice.text), choice.number);
    layout()->addWidget(label);
    layout()->addWidget(choice_);
    connect(choice_, &QComboBox::activated, this, [this] { emit ChoiceChanged(choice_->currentData().toInt()); });
}

void PanelPage::AddTree() {
    tree_ = new QuietView<QTreeView>(this);
    tree_->setModel(model_);
    tree_->setItemDelegate(new PanelDelegate(theme_, tree_));
    tree_->setHeaderHidden(true);
    tree_->setUniformRowHeights(true);
    tree_->setRootIsDecorated(kind_ == PanelKind::Categories || kind_ == PanelKind::Sources);
    tree_->setIndentation(kIndentation);
    fit_.setSingleShot(true);
    connect(&fit_, &QTimer::timeout, this, &PanelPage::FitIndentation);
    tree_->setExpandsOnDoubleClick(false);
    tree_->setContextMenuPolicy(Qt::CustomContextMenu);
    tree_->setAccessibleName(tr(kTexts[static_cast<size_t>(kind_)].name));
    tree_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    empty_ = new QLabel(tree_);
    empty_->setWordWrap(true);
    empty_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    auto* const over = new QVBoxLayout(tree_->viewport());
    over->addWidget(empty_, 0, Qt::AlignTop);
    layout()->addWidget(tree_);
    tree_->installEventFilter(this);
    for (const auto told : {&QTreeView::expanded, &QTreeView::collapsed})
        connect(tree_, told, &fit_, qOverload<>(&QTimer::start));
    connect(tree_, &QTreeView::customContextMenuRequested, this,
            [this](const QPoint& place) { ShowMenu(PanelModel::PositionOf(tree_->indexAt(place)), place, false); });
    connect(tree_, &QTreeView::activated, this,
            [this](const QModelIndex& index) { Run(PanelModel::PositionOf(index), PanelCommands(kind_).front()); });
}

PanelPage::TreeState PanelPage::StateOfTree() const {
    TreeState state;
    const int current = PanelModel::PositionOf(tree_->currentIndex());
    if (current >= 0)
        state.current = KeyOf(panel_.Entries(), current);
    for (const int position : panel_.Shown()) {
        const bool hasBelow = panel_.Entries()[static_cast<size_t>(position)].end > position + 1;
        if (!isFiltered_ && hasBelow && tree_->isExpanded(model_->IndexOf(position)))
            state.open.insert(KeyOf(panel_.Entries(), position));
    }
    return state;
}

// While a filter is set, all that it leaves is open.
void PanelPage::ShowState(const TreeState& state) {
    fit_.start();
    if (isFiltered_)
        tree_->expandAll();
    const bool opens = !isFiltered_ && !state.open.empty();
    bool seeks = !state.current.empty();
    for (const int position : panel_.Shown()) {
        if (!opens && !seeks)
            return;
        const std::string key = KeyOf(panel_.Entries(), position);
        if (opens && state.open.contains(key))
            tree_->setExpanded(model_->IndexOf(position), true);
        if (seeks && key == state.current) {
            tree_->setCurrentIndex(model_->IndexOf(position));
            seeks = false;
        }
    }
}

void PanelPage::SetEntries(std::vector<PanelEntry> entries, const LongList& listed) {
    const TreeState state = StateOfTree();
    panel_.SetEntries(std::move(entries), &listed);
    model_->Rebuild();
    ShowEmpty();
    ShowState(state);
}

void PanelPage::ShowEmpty() {
    const std::vector<PanelEntry>& entries = panel_.Entries();
    const bool isEmpty = std::all_of(entries.begin(), entries.end(), SaysNothing);
    const size_t shown = panel_.Shown().size();
    empty_->setText(isEmpty ? tr(kTexts[static_cast<size_t>(kind_)].empty) : tr("Nothing here has these letters."));
    empty_->setVisible(isEmpty || shown == 0);
    tree_->setAccessibleDescription(empty_->isHidden() ? QString() : empty_->text());
    // Below the entries that are always there.
    const int rows = static_cast<int>(shown) * std::max(tree_->sizeHintForRow(0), 0);
    empty_->setContentsMargins(kSpace * 4, kSpace * 6 + (empty_->isHidden() ? 0 : rows), kSpace * 4, 0);
}

int PanelPage::DeepestLevel() const {
    const std::vector<PanelEntry>& entries = panel_.Entries();
    std::vector<int> below(entries.size(), 0);  // the level of what is seen below an entry; 0 for nothing
    int deepest = 1;
    for (const int position : panel_.Shown()) {
        const auto at = static_cast<size_t>(position);
        const int level = entries[at].parent < 0 ? 1 : below[static_cast<size_t>(entries[at].parent)];
        deepest = std::max(deepest, level);
        if (level > 0 && entries[at].end > position + 1 && tree_->isExpanded(model_->IndexOf(position)))
            below[at] = level + 1;
    }
    return deepest;
}

void PanelPage::FitIndentation() {
    tree_->setIndentation(std::clamp(tree_->viewport()->width() / 2 / DeepestLevel(), 1, kIndentation));
}

void PanelPage::CountNotes(const LongList& listed) {
    panel_.CountNotes(listed);
    tree_->viewport()->update();
}

void PanelPage::SetChoice(int number) {
    if (choice_)
        choice_->setCurrentIndex(std::max(choice_->findData(number), 0));
}

void PanelPage::ApplyFilter(const QString& text) {
    TreeState now = StateOfTree();
    if (now.current.empty())
        now.current = beforeFilter_.current;  // the filter hides it
    if (isFiltered_)
        now.open = std::move(beforeFilter_.open);
    beforeFilter_ = std::move(now);
    isFiltered_ = !text.trimmed().isEmpty();
    panel_.SetFilter(FromQString(text));
    model_->Rebuild();
    ShowEmpty();
    ShowState(beforeFilter_);
}

/// The Menu key opens the menu at the current entry, wherever the mouse is.
bool PanelPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ContextMenu &&
        static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Keyboard) {
        const QModelIndex current = tree_->currentIndex();
        ShowMenu(PanelModel::PositionOf(current), tree_->visualRect(current).bottomLeft(), true);
        return true;
    }
    if (event->type() == QEvent::Resize)
        fit_.start();
    return QWidget::eventFilter(watched, event);
}

void PanelPage::ShowMenu(int position, const QPoint& place, bool byKeyboard) {
    auto* const menu = NewPopupMenu(this);
    if (position >= 0) {
        std::optional<PanelFamily> family;
        const PanelEntry& entry = panel_.Entries()[static_cast<size_t>(position)];
        for (const PanelCommand& command : EntryCommands(kind_, entry, !otherNoteBooks_.isEmpty())) {
            if (family && *family != FamilyOf(command.action))
                menu->addSeparator();
            family = FamilyOf(command.action);
            AddEntry(*menu, position, command);
        }
    }
    // The keyboard can't point at the empty area.
    if (position < 0 || byKeyboard) {
        for (const PanelCommand& command : AreaCommands(kind_))
            AddEntry(*menu, -1, command);
    }
    if (!menu->isEmpty())
        menu->popup(tree_->viewport()->mapToGlobal(place));
}

void PanelPage::AddEntry(QMenu& menu, int position, const PanelCommand& command) {
    const QString text = QString::fromUtf8(command.text);
    const PanelOrder order = panel_.OrderOf(position, command);
    const PanelNeed need = NeedOf(command.action);
    const bool isThere = need == PanelNeed::Notes ? !order.notes.IsEmpty() : !isThere_ || isThere_(need);
    if (command.action != PanelAction::Copy) {
        QAction* const action = menu.addAction(text);
        action->setEnabled(isThere);
        connect(action, &QAction::triggered, this, [this, order] { emit CommandRequested(order); });
        return;
    }
    QMenu& others = *menu.addMenu(text);
    others.setEnabled(isThere);
    for (int i = 0; i < static_cast<int>(otherNoteBooks_.size()); ++i) {
        PanelOrder copy = order;
        copy.noteBook = i;
        connect(others.addAction(QString(otherNoteBooks_[i]).replace(QLatin1Char('&'), QStringLiteral("&&"))),
                &QAction::triggered, this, [this, copy] { emit CommandRequested(copy); });
    }
}

void PanelPage::Run(int position, const PanelCommand& command) {
    if (position >= 0)
        emit CommandRequested(panel_.OrderOf(position, command));
}

void PanelPage::Restyle() {
    QPalette dim = empty_->palette();
    dim.setColor(QPalette::WindowText, theme_.Color(ColorRole::DimText));
    empty_->setPalette(dim);
}

}  // namespace lore
