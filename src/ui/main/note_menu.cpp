#include "ui/main/note_menu.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QMimeData>

#include "ui/board/board_view.h"
#include "ui/controls/run_when_free.h"
#include "ui/note_editor/note_actions.h"

namespace lore {

namespace {
using Key = QKeySequence;
constexpr auto kMenu = MainMenu::Notes;
}  // namespace

NoteMenu::NoteMenu(NoteActions& notes, BoardView& board, QObject* parent)
    : QObject(parent), notes_(notes), board_(board) {}

std::vector<MenuCommand> NoteMenu::FocusNoteCommands() {
    const auto focus = [this] { return board_.FocusNote(); };
    return {{kMenu, tr("&Edit Note..."), {Key(Qt::Key_F2)}, [this, focus] { notes_.EditNote(focus()); }},
            {kMenu, tr("&Delete Note"), {Key(Key::Delete)}, [this, focus] { notes_.DeleteNote(focus()); }},
            {kMenu, tr("Copy Note Te&xt"), {Key(Key::Copy), Key("Ctrl+Ins")}, [this] { CopyFocusNote(); }},
            {kMenu, tr("C&ut Note From List"), {Key(Key::Cut), Key("Shift+Del")}, [this] { CutFocusNote(); }},
            {kMenu, tr("&Move Up"), {Key("Alt+Up")}, [this] { board_.MoveFocusNote(-1); }},
            {kMenu, tr("Move Do&wn"), {Key("Alt+Down")}, [this] { board_.MoveFocusNote(1); }}};
}

std::vector<QAction*> NoteMenu::Add(QMenu& menu, const std::vector<MenuCommand>& commands) {
    std::vector<QAction*> actions;
    for (const MenuCommand& command : commands) {
        actions.push_back(menu.addAction(command.text, this, WhereFree(command.run)));
        actions.back()->setShortcuts(command.keys);
        actions.back()->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        board_.addAction(actions.back());
    }
    return actions;
}

void NoteMenu::Fill(QMenu& menu) {
    ofNote_ = Add(menu, FocusNoteCommands());
    Add(menu,
        {{kMenu, tr("&Paste As New Note..."), {Key(Key::Paste), Key("Shift+Ins")}, [this] { emit PasteRequested(); }}});
    undo_ = Add(menu, {{kMenu, notes_.UndoText(), {Key(Key::Undo), Key("Alt+Backspace")}, [this] { notes_.Undo(); }}})
                .back();
    connect(&menu, &QMenu::aboutToShow, this, [this] {
        for (QAction* const action : ofNote_)
            action->setEnabled(board_.FocusNote() > 0);
        undo_->setEnabled(notes_.WhatToUndo() != NextUndo::None);
    });
    // A shortcut works only while its action is enabled, whatever the menu showed last.
    connect(&menu, &QMenu::aboutToHide, this, [this] {
        for (QAction* const action : ofNote_)
            action->setEnabled(true);
        undo_->setEnabled(true);
    });
}

void NoteMenu::ShowUndo() {
    undo_->setText(notes_.UndoText());
}

bool NoteMenu::CopyFocusNote() {
    std::unique_ptr<QMimeData> copied = board_.FocusNote() > 0 ? notes_.CopyNote(board_.FocusNote()) : nullptr;
    if (!copied)
        return false;
    QApplication::clipboard()->setMimeData(copied.release());
    return true;
}

void NoteMenu::CutFocusNote() {
    const int32_t id = board_.FocusNote();
    if (CopyFocusNote())
        emit CutRequested(id);
}

}  // namespace lore
