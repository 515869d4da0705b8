#include "ui/categories/edit_categories_dlg.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

#include "notes/panel_commands.h"
#include "ui/categories/edit_categories_ctrl.h"
#include "ui/controls/dialog_parts.h"
#include "ui/controls/popup_menu.h"
#include "ui/look/theme.h"
#include "ui/ports/quit_guard.h"
#include "ui/sources/source_dialog.h"

namespace lore {

namespace {
constexpr int kTreeChars = 64;
constexpr int kTreeRows = 20;
}  // namespace

CEditCategoriesDlg::CEditCategoriesDlg(CategoryEditing& editing, WritingCommands& commands, const Theme& theme,
                                       SettingsStore& store, QWidget* parent)
    : DialogFrame(tr("Edit Category Trees"), "EditCategoryTrees", store, parent),
      editing_(editing),
      trees_(editing.Model()),
      commands_(commands),
      theme_(theme) {
    bar_ = &Faults(theme);
    faults_.SetBar(bar_);
    before_ = commands.ShowFaultsIn(&faults_);
    tree_ = new CEditCategoriesCtrl(theme, this);
    tree_->setMinimumSize(tree_->fontMetrics().averageCharWidth() * kTreeChars,
                          tree_->fontMetrics().height() * kTreeRows);
    MakeCommands();
    MakeHead();
    Content()->addWidget(tree_, 1);
    Content()->addWidget(
        MakeHint(tr("Drag a category onto another one to move it there, or onto the empty area to make "
                    "a tree of it; or cut it with Ctrl+X and paste it with Ctrl+V. Dragging "
                    "<UNASSIGNED> onto a category files its notes there."),
                 theme, this));
    MakeButtons();
    connect(tree_, &CEditCategoriesCtrl::NodeDropped, this, [this](int id, int target) {
        Run([&] { return target < 0 ? trees_.DropOnEmptyArea(id) : trees_.DropOn(id, target); });
    });
    connect(tree_, &CEditCategoriesCtrl::MenuRequested, this, &CEditCategoriesDlg::ShowMenu);
    connect(tree_, &QTreeWidget::currentItemChanged, this, &CEditCategoriesDlg::UpdateCommands);
    Refresh();
    if (tree_->topLevelItemCount() > 0)
        tree_->setCurrentItem(tree_->topLevelItem(0));
    tree_->setFocus();
}

CEditCategoriesDlg::~CEditCategoriesDlg() {
    commands_.ShowFaultsIn(before_);
    faults_.SetBar(nullptr);
}

void CEditCategoriesDlg::MakeHead() {
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    set_ = new QComboBox(this);
    set_->setObjectName("set");
    for (const PanelChoice& choice : CategorySetChoices())
        set_->addItem(QString::fromUtf8(choice.text), choice.number);
    row->addWidget(MakeFieldLabel(QStringLiteral("Show &Category Set:"), set_, this));
    row->addWidget(set_);
    row->addStretch(1);
    row->addWidget(ButtonFor(createRoot_, tr("&New Level 1"), this));
    row->addWidget(ButtonFor(create_, tr("New Su&bcategory"), this));
    row->addWidget(ButtonFor(rename_, tr("&Rename"), this));
    auto* const last = ButtonFor(delete_, tr("&Delete"), this);
    row->addWidget(last);
    setTabOrder(last, tree_);
    Content()->addLayout(row);
    connect(set_, &QComboBox::activated, this, [this] {
        trees_.SetView(set_->currentData().toInt());
        Refresh();
    });
}

QAction* CEditCategoriesDlg::AddCommand(const QString& text, const QList<QKeySequence>& keys, Menu menu,
                                        const std::function<CategoryTrees::Changed()>& run) {
    auto* const action = new QAction(text, this);
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(action);
    entries_.push_back({action, menu});
    connect(action, &QAction::triggered, this, [this, run] { Run(run); });
    return action;
}

void CEditCategoriesDlg::MakeCommands() {
    const auto current = [this] { return tree_->Current(); };
    rename_ = AddCommand(tr("Rename Category"), {Qt::Key_F2}, Menu::Node,
                         [this, current] { return trees_.RenameCategory(current()); });
    create_ = AddCommand(tr("Create New Subcategory"), {Qt::Key_Insert}, Menu::Node,
                         [this, current] { return trees_.CreateSubcategory(current()); });
    delete_ = AddCommand(tr("Delete Category"), {QKeySequence::Delete}, Menu::Node,
                         [this, current] { return trees_.DeleteCategory(current()); });
    createRoot_ = AddCommand(tr("Create New Level 1 Category"), {QKeySequence(Qt::CTRL | Qt::Key_N)}, Menu::Area,
                             [this] { return trees_.CreateRoot(); });
    cutAction_ = AddCommand(tr("Cut"), {QKeySequence(Qt::CTRL | Qt::Key_X)}, Menu::Node, [this] {
        Cut();
        return CategoryTrees::Changed();
    });
    paste_ = AddCommand(tr("Paste Into This Category"), {QKeySequence(Qt::CTRL | Qt::Key_V)}, Menu::Node,
                        [this, current] { return Paste(current()); });
    pasteAsRoot_ = AddCommand(tr("Paste As Level 1 Category"), {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_V)},
                              Menu::Both, [this] { return Paste(-1); });
    undo_ = AddCommand(tr("Undo"), {QKeySequence(Qt::CTRL | Qt::Key_Z)}, Menu::Area, [this] {
        Step(true);
        return CategoryTrees::Changed();
    });
    redo_ = AddCommand(tr("Redo"), {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)},
                       Menu::Area, [this] {
                           Step(false);
                           return CategoryTrees::Changed();
                       });
}

QPushButton* CEditCategoriesDlg::ButtonFor(QAction* action, const QString& text, QWidget* parent) {
    QPushButton* const button = MakeButton(text, parent);
    button->setToolTip(action->text() + QStringLiteral("  (") + action->shortcut().toString(QKeySequence::NativeText) +
                       QLatin1Char(')'));
    connect(button, &QPushButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::changed, button, [button, action] { button->setEnabled(action->isEnabled()); });
    return button;
}

void CEditCategoriesDlg::MakeButtons() {
    for (const auto& [action, text] : {std::pair{undo_, tr("&Undo")}, {redo_, tr("R&edo")}}) {
        QPushButton* const button = AddSideButton(text);
        connect(button, &QPushButton::clicked, action, &QAction::trigger);
        connect(action, &QAction::changed, button, [button, step = action] { button->setEnabled(step->isEnabled()); });
    }
    QPushButton* const save = AddButton(tr("&Save"));
    save->setObjectName("save");
    SetMainButton(save);
    connect(save, &QPushButton::clicked, this, &CEditCategoriesDlg::Save);
    connect(AddButton(tr("C&ancel")), &QPushButton::clicked, this, &CEditCategoriesDlg::reject);
}

void CEditCategoriesDlg::Alone(const std::function<void()>& work) {
    if (std::exchange(isBusy_, true))
        return;
    work();
    isBusy_ = false;
}

void CEditCategoriesDlg::Run(const std::function<CategoryTrees::Changed()>& command) {
    Alone([&] {
        if (const CategoryTrees::Changed changed = command()) {
            Refresh();
            tree_->GoTo(*changed);
        }
        UpdateCommands();
        tree_->setFocus();
    });
}

void CEditCategoriesDlg::Refresh() {
    if (!trees_.Forest().FindByID(cut_))
        cut_ = -1;
    tree_->Show(CategoryEntries(trees_.Forest(), trees_.View()));
    tree_->MarkAsCut(cut_);
    UpdateCommands();
}

void CEditCategoriesDlg::UpdateCommands() {
    const int32_t current = tree_->Current();
    for (QAction* const action : {rename_, create_, delete_})
        action->setEnabled(CategoryTrees::CanChange(current));
    cutAction_->setEnabled(current > 0);
    paste_->setEnabled(cut_ > 0 && current > 0);
    pasteAsRoot_->setEnabled(cut_ > 0);
    undo_->setEnabled(trees_.CanUndo());
    redo_->setEnabled(trees_.CanRedo());
}

void CEditCategoriesDlg::ShowMenu(int id, const QPoint& place) {
    if (QTreeWidgetItem* const item = tree_->ItemOf(id))
        tree_->setCurrentItem(item);
    UpdateCommands();
    auto* const menu = NewPopupMenu(this);
    for (const Command& entry : entries_) {
        if (entry.menu == (id > 0 ? Menu::Area : Menu::Node))
            continue;
        if (entry.action == cutAction_ || entry.action == undo_)
            menu->addSeparator();
        menu->addAction(entry.action);
    }
    menu->popup(place);
}

void CEditCategoriesDlg::Cut() {
    cut_ = tree_->Current();
    tree_->MarkAsCut(cut_);
}

CategoryTrees::Changed CEditCategoriesDlg::Paste(int32_t target) {
    const CategoryTrees::Changed changed = target < 0 ? trees_.DropOnEmptyArea(cut_) : trees_.DropOn(cut_, target);
    if (changed) {
        cut_ = -1;
        tree_->MarkAsCut(-1);
    }
    return changed;
}

void CEditCategoriesDlg::Step(bool back) {
    if (back)
        trees_.Undo();
    else
        trees_.Redo();
    Refresh();
}

void CEditCategoriesDlg::Save() {
    const auto save = [this] {
        bool isSaved = false;
        Alone([&] { isSaved = editing_.Save(); });
        return isSaved;
    };
    AcceptAfter(save, theme_);
}

void CEditCategoriesDlg::reject() {
    if (isBusy_ && IsQuitting())
        return OrderQuitAgain();
    Alone([this] {
        const bool saves = trees_.IsChanged() && SavesBeforeQuit(*this, [this] { Save(); });
        if (!saves && editing_.MayDrop())
            DialogFrame::reject();
    });
}

}  // namespace lore
