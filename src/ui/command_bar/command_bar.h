#pragma once

#include <QDialog>
#include <functional>

#include "app/command_finder.h"

class QLineEdit;
class QListView;

namespace lore {

class CommandBarModel;
class Theme;

/// A field over the window that finds everything by a few letters: commands, NoteBooks, categories, sources, key words,
/// notes. Up and down go through what was found, Enter takes it, Esc closes the bar.
class CommandBar : public QDialog {
    Q_OBJECT

public:
    /// The finder holds what there is to find and outlives the bar. `textOf` says how an item that is shown reads.
    CommandBar(const CommandFinder& finder, std::function<std::string(const FindableItem&)> textOf, const Theme& theme,
               QWidget* parent);

    /// What was chosen, once the bar is accepted. What was typed is itself the last row, to search the notes for.
    FindableItem Chosen() const;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void Find(const QString& typed);
    void Place();

    const CommandFinder& finder_;
    QLineEdit* field_ = nullptr;
    QListView* list_ = nullptr;
    CommandBarModel* model_ = nullptr;
};

}  // namespace lore
