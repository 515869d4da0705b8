#pragma once

#include <QWidget>

#include "notes/filter_panels.h"

class QComboBox;
class QLabel;
class QLineEdit;
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

    /// New entries; what was open and selected stays so as far as it is still there.
    void SetEntries(std::vector<PanelEntry> entries);
    void CountNotes(const LongList& listed);
    void SetChoice(int number);
    QTreeView* Tree() const { return tree_; }

signals:
    /// A command of an entry, with the notes that it works on.
    void CommandRequested(PanelAction action, const LongList& notes);
    /// The category set or the grouping of sources, by the number that the settings keep.
    void ChoiceChanged(int number);

private:
    void AddChoice();
    void AddTree();
    void ShowMenu(const QPoint& place);
    void Run(int position, const PanelCommand& command);
    void ApplyFilter(const QString& text);
    void Restyle();

    PanelKind kind_;
    const Theme& theme_;
    FilterPanel panel_;
    PanelModel* model_;
    QComboBox* choice_ = nullptr;
    QLineEdit* filter_ = nullptr;
    QAction* filterIcon_ = nullptr;
    QTreeView* tree_ = nullptr;
    QLabel* empty_ = nullptr;
};

}  // namespace lore
