#pragma once

#include <QObject>
#include <cstdint>
#include <vector>

#include "ui/main/main_menu.h"

class QAction;

namespace lore {

class BoardView;
class NoteActions;

/// The entries of the menu "Notes" for the focus note, and for what is pasted or undone. Their keys work on the board
/// alone: in fields and lists they mean other things.
class NoteMenu : public QObject {
    Q_OBJECT

public:
    /// Both outlive the menu.
    NoteMenu(NoteActions& notes, BoardView& board, QObject* parent);

    /// Adds the entries to a menu. To be called once.
    void Fill(QMenu& menu);
    /// The entry of the undo says what is undone next.
    void ShowUndo();

signals:
    void PasteRequested();
    /// A note's text was copied, and it is to leave the list.
    void CutRequested(int32_t noteId);

private:
    std::vector<MenuCommand> FocusNoteCommands();
    std::vector<QAction*> Add(QMenu& menu, const std::vector<MenuCommand>& commands);
    bool CopyFocusNote();
    void CutFocusNote();

    NoteActions& notes_;
    BoardView& board_;
    std::vector<QAction*> ofNote_;
    QAction* undo_ = nullptr;
};

}  // namespace lore
