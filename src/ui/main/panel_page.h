#pragma once

#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <string>
#include <unordered_set>

#include "notes/filter_panels.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QTreeView;

namespace lore {

class PanelModel;
class Theme;

/// One page of the control bar: the choice of what is shown where there is one, a filter field and the entries.
class PanelPage : public QWidget {
    Q_OBJECT

public:
    PanelPage(PanelKind kind, const Theme& theme, QWidget* parent = nullptr);
    ~PanelPage() override;

    /// New entries, counted against the current list; what was open and selected stays so as far as it is still there.
    void SetEntries(std::vector<PanelEntry> entries, const LongList& listed);
    void CountNotes(const LongList& listed);
    void SetChoice(int number);
    /// The NoteBooks that notes can be copied to, in their order.
    void SetOtherNoteBooks(const QStringList& names) { otherNoteBooks_ = names; }
    /// Says whether there is what a command needs. Without it only notes of the entry are asked for.
    void SetAvailable(std::function<bool(PanelNeed)> isThere) { isThere_ = std::move(isThere); }
    QTreeView* Tree() const { return tree_; }

signals:
    void CommandRequested(const PanelOrder& order);
    /// The category set or the grouping of sources, by the number that the settings keep.
    void ChoiceChanged(int number);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// What is expanded in the tree without a filter, and the current entry, by keys that outlive the entries.
    struct TreeState {
        std::unordered_set<std::string> open;
        std::string current;
    };
    TreeState StateOfTree() const;
    void ShowState(const TreeState& state);
    void ShowEmpty();
    /// Deep trees are indented less, so that a name keeps half of the width.
    void FitIndentation();
    int DeepestLevel() const;
    void AddChoice();
    void AddTree();
    /// The menu of an entry, of the empty area (-1), or of both for the keyboard, at a place of the tree.
    void ShowMenu(int position, const QPoint& place, bool byKeyboard);
    void AddEntry(QMenu& menu, int position, const PanelCommand& command);
    void Run(int position, const PanelCommand& command);
    void ApplyFilter(const QString& text);
    void Restyle();

    PanelKind kind_;
    const Theme& theme_;
    FilterPanel panel_;
    bool isFiltered_ = false;
    TreeState beforeFilter_;  // what the tree goes back to when the filter is cleared
    PanelModel* model_;
    QComboBox* choice_ = nullptr;
    QLineEdit* filter_ = nullptr;
    QTreeView* tree_ = nullptr;
    QLabel* empty_ = nullptr;
    QTimer fit_;
    QStringList otherNoteBooks_;
    std::function<bool(PanelNeed)> isThere_;
};

}  // namespace lore
