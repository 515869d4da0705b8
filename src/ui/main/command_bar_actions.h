#pragma once

#include <QObject>
#include <vector>

class QAction;
class QMainWindow;

namespace lore {

class BoardView;
class CLorebinderApp;
class ListActions;
class NoteBookActions;
class Theme;
struct FindableItem;

/// The command bar: finds commands of the menus, notes and what they are filed by, and goes to what is chosen.
class CommandBarActions : public QObject {
    Q_OBJECT

public:
    /// All outlive the actions. The menus are those of `window`, which the bar opens above.
    CommandBarActions(CLorebinderApp& app, const Theme& theme, ListActions& lists, NoteBookActions& noteBooks,
                      BoardView& board, QMainWindow& window);

    void Show();

private:
    void Run(const FindableItem& item, const std::vector<QAction*>& actions);

    CLorebinderApp& app_;
    const Theme& theme_;
    ListActions& lists_;
    NoteBookActions& noteBooks_;
    BoardView& board_;
    QMainWindow& window_;
};

}  // namespace lore
