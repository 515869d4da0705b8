#include "ui/main/command_bar_actions.h"

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include "app/findable_things.h"
#include "app/lorebinder_app.h"
#include "notes/filter_panels.h"
#include "ui/board/board_view.h"
#include "ui/command_bar/command_bar.h"
#include "ui/main/list_actions.h"
#include "ui/main/notebook_actions.h"

namespace lore {

namespace {

/// The entries of a menu that can be run now, with the menus below it.
void AddActions(const QMenu& menu, const QString& above, CommandFinder& finder, std::vector<QAction*>& actions) {
    for (QAction* const action : menu.actions()) {
        const QString text = action->text().remove('&');
        if (action->isSeparator() || text.isEmpty() || !action->isEnabled() || !action->isVisible())
            continue;
        if (const QMenu* const below = action->menu()) {
            AddActions(*below, above + QStringLiteral(" \u203a ") + text, finder, actions);
            continue;
        }
        QString detail = above;
        if (!action->shortcut().isEmpty())
            detail += QStringLiteral("    ") + action->shortcut().toString(QKeySequence::NativeText);
        finder.Add(
            {FoundKind::Command, text.toStdString(), detail.toStdString(), static_cast<int32_t>(actions.size())});
        actions.push_back(action);
    }
}

}  // namespace

CommandBarActions::CommandBarActions(CLorebinderApp& app, const Theme& theme, ListActions& lists,
                                     NoteBookActions& noteBooks, BoardView& board, QMainWindow& window)
    : QObject(&window),
      app_(app),
      theme_(theme),
      lists_(lists),
      noteBooks_(noteBooks),
      board_(board),
      window_(window) {}

void CommandBarActions::Show() {
    CommandFinder finder;
    std::vector<QAction*> actions;
    for (QAction* const top : window_.menuBar()->actions()) {
        // The menu makes up its mind about its entries when it opens.
        emit top->menu()->aboutToShow();
        AddActions(*top->menu(), top->text().remove('&'), finder, actions);
        emit top->menu()->aboutToHide();
    }
    AddFindableThings(app_, finder);
    CommandBar bar(
        finder, [this](const FindableItem& item) { return WrittenText(app_, item); }, theme_, &window_);
    if (bar.exec() == QDialog::Accepted)
        Run(bar.Chosen(), actions);
}

void CommandBarActions::Run(const FindableItem& item, const std::vector<QAction*>& actions) {
    switch (item.kind) {
        case FoundKind::Command:
            if (item.id >= 0 && item.id < static_cast<int32_t>(actions.size()))
                actions[static_cast<size_t>(item.id)]->trigger();
            return;
        case FoundKind::NoteBook:
            return noteBooks_.Switch(item.id);
        case FoundKind::Note:
            board_.SetFocusNote(item.id);
            return board_.setFocus();
        case FoundKind::OtherNote:
            lists_.RunPanelOrder({.notes = NotesOfThing(app_, item)});
            board_.SetFocusNote(item.id);
            return board_.setFocus();
        case FoundKind::Search:
            return lists_.Search(QString::fromStdString(item.text), SearchScope::Database);
        default:
            lists_.RunPanelOrder({.notes = NotesOfThing(app_, item)});
            board_.setFocus();
    }
}

}  // namespace lore
