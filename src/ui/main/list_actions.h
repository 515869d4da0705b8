#pragma once

#include <QObject>
#include <cstdint>

#include "notes/search_flow.h"

class QString;
class QWidget;

namespace lore {

class BoardView;
class CLorebinderApp;
class NoteActions;
class Theme;
struct PanelOrder;

/// The commands that bring notes into the current list, take them out, or give them something by a panel.
class ListActions : public QObject {
    Q_OBJECT

public:
    /// All outlive the actions. `window` is what dialogs open above.
    ListActions(CLorebinderApp& app, Theme& theme, NoteActions& notes, const BoardView& board, QWidget& window);

    void Search(const QString& text, SearchScope scope);
    void ShowAllNotes();
    void Clear();
    /// Takes one note out of the list.
    void TakeOut(int32_t id);
    void RunPanelOrder(const PanelOrder& order);
    void EditCategoryTrees();

signals:
    /// The list is another. `focus` is the note to go to, -1 for none.
    void Changed(int32_t focus);
    /// Notes have just come into the list.
    void Grew();
    /// Notes of the NoteBook have changed, and the list with them.
    void NotesChanged(int32_t focus);

private:
    CLorebinderApp& app_;
    Theme& theme_;
    NoteActions& notes_;
    const BoardView& board_;
    QWidget& window_;
};

}  // namespace lore
