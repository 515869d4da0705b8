#include "ui/panel_page.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QStackedLayout>
#include <QTreeView>
#include <QVBoxLayout>
#include <unordered_set>

#include "ui/panel_delegate.h"
#include "ui/panel_model.h"
#include "ui/qt_text.h"
#include "ui/theme.h"

namespace lore {

namespace {

struct PageTexts {
    const char* filter;
    const char* empty;
};

/// By PanelKind.
constexpr PageTexts kTexts[] = {
    {QT_TRANSLATE_NOOP("PanelPage", "Filter categories"),
     QT_TRANSLATE_NOOP("PanelPage", "Categories that notes are filed in appear here.")},
    {QT_TRANSLATE_NOOP("PanelPage", "Filter sources"),
     QT_TRANSLATE_NOOP("PanelPage", "Sources that notes are tied to appear here.")},
    {QT_TRANSLATE_NOOP("PanelPage", "Filter key words"),
     QT_TRANSLATE_NOOP("PanelPage", "Key words that notes carry appear here.")},
    {QT_TRANSLATE_NOOP("PanelPage", "Filter colors"),
     QT_TRANSLATE_NOOP("PanelPage", "Border colors of notes appear here.")},
};

/// What tells an entry apart from the others of its panel, also after the entries were made anew.
std::string KeyOf(const std::vector<PanelEntry>& entries, int position) {
    std::string key;
    for (int at = position; at >= 0; at = entries[static_cast<size_t>(at)].parent) {
        const PanelEntry& entry = entries[static_cast<size_t>(at)];
        key += std::to_string(static_cast<int>(entry.value)) + ":" + std::to_string(entry.id) + ":" + entry.name + "\n";
    }
    return key;
}

}  // namespace

PanelPage::PanelPage(PanelKind kind, const Theme& theme, QWidget* parent)
    : QWidget(parent), kind_(kind), theme_(theme), model_(new PanelModel(panel_, this)) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kSpace * 2, kSpace * 2, kSpace * 2, kSpace * 2);
    layout->setSpacing(kSpace * 2);
    AddChoice();
    filter_ = new QLineEdit(this);
    filter_->setClearButtonEnabled(true);
    filter_->setPlaceholderText(tr(kTexts[static_cast<size_t>(kind)].filter));
    filter_->setAccessibleName(filter_->placeholderText());
    filterIcon_ = filter_->addAction(QIcon(), QLineEdit::LeadingPosition);
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
    choice_ = new QComboBox(this);
    label->setBuddy(choice_);
    choice_->setAccessibleName(label->text());
    for (const PanelChoice& choice : isCategories ? CategorySetChoices() : SourceGroupingChoices())
        choice_->addItem(QString::fromUtf8(choice.text), choice.number);
    layout()->addWidget(label);
    layout()->addWidget(choice_);
    connect(choice_, &QComboBox::activated, this, [this] { emit ChoiceChanged(choice_->currentData().toInt()); });
}

void PanelPage::AddTree() {
    tree_ = new QTreeView(this);
    tree_->setModel(model_);
    tree_->setItemDelegate(new PanelDelegate(theme_, tree_));
    tree_->setHeaderHidden(true);
    tree_->setUniformRowHeights(true);
    tree_->setRootIsDecorated(kind_ == PanelKind::Categories || kind_ == PanelKind::Sources);
    tree_->setIndentation(kSpace * 4);
    tree_->setExpandsOnDoubleClick(false);
    tree_->setContextMenuPolicy(Qt::CustomContextMenu);
    tree_->setAccessibleName(filter_->placeholderText());
    tree_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    empty_ = new QLabel(tr(kTexts[static_cast<size_t>(kind_)].empty), tree_);
    empty_->setWordWrap(true);
    empty_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    empty_->setContentsMargins(kSpace * 4, kSpace * 6, kSpace * 4, 0);
    auto* const over = new QVBoxLayout(tree_->viewport());
    over->addWidget(empty_, 0, Qt::AlignTop);
    layout()->addWidget(tree_);
    connect(tree_, &QTreeView::customContextMenuRequested, this, &PanelPage::ShowMenu);
    connect(tree_, &QTreeView::activated, this,
            [this](const QModelIndex& index) { Run(PanelModel::PositionOf(index), PanelCommands(kind_).front()); });
}

void PanelPage::SetEntries(std::vector<PanelEntry> entries) {
    std::unordered_set<std::string> open;
    std::string selected;
    for (const int position : panel_.Shown()) {
        const QModelIndex index = model_->IndexOf(position);
        if (tree_->isExpanded(index))
            open.insert(KeyOf(panel_.Entries(), position));
        if (tree_->currentIndex() == index)
            selected = KeyOf(panel_.Entries(), position);
    }
    panel_.SetEntries(std::move(entries));
    model_->Rebuild();
    empty_->setVisible(panel_.Entries().empty());
    for (const int position : panel_.Shown()) {
        const std::string key = KeyOf(panel_.Entries(), position);
        if (open.contains(key))
            tree_->setExpanded(model_->IndexOf(position), true);
        if (!selected.empty() && key == selected)
            tree_->setCurrentIndex(model_->IndexOf(position));
    }
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
    panel_.SetFilter(FromQString(text));
    model_->Rebuild();
    if (!text.trimmed().isEmpty())
        tree_->expandAll();
}

void PanelPage::ShowMenu(const QPoint& place) {
    const int position = PanelModel::PositionOf(tree_->indexAt(place));
    if (position < 0)
        return;
    QMenu menu(this);
    for (const PanelCommand& command : PanelCommands(kind_)) {
        QAction* const action = menu.addAction(QString::fromUtf8(command.text));
        connect(action, &QAction::triggered, this, [this, position, command] { Run(position, command); });
    }
    menu.exec(tree_->viewport()->mapToGlobal(place));
}

void PanelPage::Run(int position, const PanelCommand& command) {
    if (position >= 0)
        emit CommandRequested(command.action, panel_.NotesOf(position, command.scope));
}

void PanelPage::Restyle() {
    filterIcon_->setIcon(theme_.Icon("list-filter", ColorRole::DimText));
    QPalette dim = empty_->palette();
    dim.setColor(QPalette::WindowText, theme_.Color(ColorRole::DimText));
    empty_->setPalette(dim);
}

}  // namespace lore
