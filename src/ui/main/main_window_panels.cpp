#include <QColorDialog>

#include "app/category_editing.h"
#include "ui/categories/edit_categories_dlg.h"
#include "ui/main/main_window.h"
#include "ui/note_editor/note_actions.h"

namespace lore {

namespace {

std::optional<Rgb> PickBorderColor(QWidget* window) {
    const QColor picked = QColorDialog::getColor(Qt::white, window, MainWindow::tr("Select Border Color"));
    if (!picked.isValid())
        return std::nullopt;
    return MakeRgb(static_cast<unsigned>(picked.red()), static_cast<unsigned>(picked.green()),
                   static_cast<unsigned>(picked.blue()));
}

}  // namespace

void MainWindow::RunPanelOrder(const PanelOrder& order) {
    PanelActions actions(app_, notes_->Commands(), [this] { return PickBorderColor(this); });
    switch (actions.Run(order, board_->FocusNote())) {
        case PanelOutcome::Nothing:
            return;
        case PanelOutcome::ListChanged:
            return ListChanged();
        case PanelOutcome::Gathered:
            return ListGrew();
        case PanelOutcome::NotesChanged: {
            const int32_t focus = board_->FocusNote();
            return emit notes_->NotesChanged(app_.List().Contains(focus) ? focus : -1);
        }
    }
}

void MainWindow::EditCategoryTrees() {
    if (app_.TellIfClosed())
        return;
    CategoryEditing editing(app_, notes_->Commands());
    CEditCategoriesDlg dialog(editing, notes_->Commands(), theme_, app_.Store(), this);
    if (dialog.exec() == QDialog::Accepted && editing.Model().IsChanged())
        emit notes_->NotesChanged(board_->FocusNote());
}

}  // namespace lore
