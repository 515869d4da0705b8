#pragma once

#include "app/category_editing.h"
#include "ui/controls/bar_faults.h"
#include "ui/controls/dialog_frame.h"
#include "ui/controls/fault_bar.h"

class QComboBox;
class QMenu;
class QPushButton;

namespace lore {

class CEditCategoriesCtrl;

/// "Edit Category Trees". Accepted once the trees are saved.
class CEditCategoriesDlg : public DialogFrame {
    Q_OBJECT

public:
    /// All outlive the dialog.
    CEditCategoriesDlg(CategoryEditing& editing, WritingCommands& commands, const Theme& theme, SettingsStore& store,
                       QWidget* parent);
    ~CEditCategoriesDlg() override;

    CEditCategoriesCtrl* Tree() const { return tree_; }
    /// Asks before changes are dropped; an order to quit saves them.
    void reject() override;

private:
    /// Whose menu names a command: a category's, that of the empty area, or both.
    enum class Menu { Node, Area, Both };
    /// One command, as a button, an entry of a menu, and keys of the tree.
    struct Command {
        QAction* action;
        Menu menu;
    };
    void MakeHead();
    void MakeCommands();
    QAction* AddCommand(const QString& text, const QList<QKeySequence>& keys, Menu menu,
                        const std::function<CategoryTrees::Changed()>& run);
    QPushButton* ButtonFor(QAction* action, const QString& text, QWidget* parent);
    void MakeButtons();
    /// Does nothing while another command stands at its question.
    void Alone(const std::function<void()>& work);
    void Run(const std::function<CategoryTrees::Changed()>& command);
    void Refresh();
    void UpdateCommands();
    void ShowMenu(int id, const QPoint& place);
    void Cut();
    CategoryTrees::Changed Paste(int32_t target);
    void Step(bool back);
    void Save();

    CategoryEditing& editing_;
    CategoryTrees& trees_;
    WritingCommands& commands_;
    const Theme& theme_;
    BarFaults faults_;
    FaultBar* bar_ = nullptr;
    FaultNotice* before_ = nullptr;
    QComboBox* set_ = nullptr;
    CEditCategoriesCtrl* tree_ = nullptr;
    std::vector<Command> entries_;
    QAction *rename_ = nullptr, *create_ = nullptr, *createRoot_ = nullptr, *delete_ = nullptr, *cutAction_ = nullptr,
            *paste_ = nullptr, *pasteAsRoot_ = nullptr, *undo_ = nullptr, *redo_ = nullptr;
    int32_t cut_ = -1;
    bool isBusy_ = false;
};

}  // namespace lore
