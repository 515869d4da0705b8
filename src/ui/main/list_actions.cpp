#include "ui/main/list_actions.h"

#include <QColorDialog>

#include "app/category_editing.h"
#include "app/panel_actions.h"
#include "ui/board/board_view.h"
#include "ui/categories/edit_categories_dlg.h"
#include "ui/look/qt_text.h"
#include "ui/note_editor/note_actions.h"

namespace lore {

namespace {

std::optional<Rgb> PickBorderColor(QWidget& window) {
    const QColor picked = QColorDialog::getColor(Qt::white, &window, ListActions::tr("Select Border Color"));
    if (!picked.isValid())
        return std::nullopt;
    return MakeRgb(static_cast<unsigned>(picked.red()), static_cast<unsigned>(picked.green()),
                   static_cast<unsigned>(picked.blue()));
}

}  // namespace

ListActions::ListActions(CLorebinderApp& app, Theme& theme, NoteActions& notes, const BoardView& board, QWidget& window)
    : QObject(&window), app_(app), theme_(theme), notes_(notes), board_(board), window_(window) {}

void ListActions::Search(const QString& text, SearchScope scope) {
    const SearchOutcome outcome = app_.Search(FromQString(text), scope, [this] { emit Grew(); });
    if (outcome == SearchOutcome::Invalid || outcome == SearchOutcome::Cancelled)
        emit Changed(-1);
}

void ListActions::ShowAllNotes() {
    Search(QString::fromUtf8(kShowAll), SearchScope::Database);
}

void ListActions::Clear() {
    app_.ClearList();
    emit Changed(-1);
}

void ListActions::TakeOut(int32_t id) {
    const int place = app_.List().PositionOf(id);
    app_.TakeOut(LongList{id});
    emit Changed(NoteInPlace(app_.List(), place));
}

void ListActions::RunPanelOrder(const PanelOrder& order) {
    PanelActions actions(app_, notes_.Commands(), [this] { return PickBorderColor(window_); });
    switch (actions.Run(order, board_.FocusNote())) {
        case PanelOutcome::Nothing:
            return;
        case PanelOutcome::ListChanged:
            return emit Changed(-1);
        case PanelOutcome::Gathered:
            return emit Grew();
        case PanelOutcome::NotesChanged: {
            const int32_t focus = board_.FocusNote();
            return emit NotesChanged(app_.List().Contains(focus) ? focus : -1);
        }
    }
}

void ListActions::EditCategoryTrees() {
    if (app_.TellIfClosed())
        return;
    CategoryEditing editing(app_, notes_.Commands());
    CEditCategoriesDlg dialog(editing, notes_.Commands(), theme_, app_.Store(), &window_);
    if (dialog.exec() == QDialog::Accepted && editing.Model().IsChanged())
        emit NotesChanged(board_.FocusNote());
}

}  // namespace lore
