// How a list that has changed comes into sight.

#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "ui/board/board_view.h"
#include "ui/board/board_view_impl.h"
#include "ui/look/theme.h"

namespace lore {

void BoardView::Rebuild() {
    impl_->store.DropCards();
    impl_->Reload();
}

void BoardView::RebuildAt(int32_t noteId) {
    impl_->store.DropCards();
    impl_->RebuildAt(noteId);
}

void BoardView::FinishShowing() {
    impl_->FinishShowing();
}

void BoardView::RebuildAtSavedSoon(int32_t noteId) {
    impl_->savedNote = noteId;
    impl_->savedTimer.start(0, this);
}

void BoardView::RefreshNote(int32_t noteId) {
    impl_->FinishShowing();
    const int row = impl_->model.RowOf(noteId);
    impl_->store.DropNote(noteId);
    if (row < 0 || row >= impl_->heights.Count())
        return;
    impl_->heights.SetHeight(row, impl_->store.LikelyHeight(row));
    impl_->Settle();
    viewport()->update();
}

void BoardView::Impl::RebuildAt(int32_t noteId) {
    store.DropNote(noteId);
    const int before = focusRow;
    const int32_t noteBefore = focusNote;
    const bool inSight = before >= topRow && before < endRow;
    const int top = inSight ? TopOf(before) : 0;
    Reload();
    const int row = model.RowOf(noteId);
    // What takes the place of a note that has gone stands where that stood.
    if (inSight && row == before && model.RowOf(noteBefore) < 0)
        AnchorAt(row, top);
    showsFocus = true;
    ChangeFocus(row, false);
    if (focusRow >= 0)
        AnchorInSight(focusRow);
}

// Everything but the layout of the cards that come into sight. A key never waits for those: they are laid out one a
// turn of the event loop, and painted together. Meanwhile the old ones stand on the screen, but for what is uncovered.
void BoardView::Impl::Reload() {
    aheadTimer.stop();
    showTimer.start(0, &view);
    QPalette groove;
    groove.setColor(QPalette::Window, theme.Color(ColorRole::Board));
    view.verticalScrollBar()->setPalette(groove);
    const int focusTop = focusRow >= 0 ? TopOf(focusRow) : -1;
    const bool focusSeen = focusRow >= topRow && focusRow < endRow && focusRow >= 0;
    CancelDrag();
    ChooseWidth();
    ReloadHeights();
    focusRow = focusNote > 0 ? model.RowOf(focusNote) : -1;
    if (focusSeen && focusRow >= 0)
        AnchorAt(focusRow, focusTop);
    else
        AnchorAt(std::max(0, model.RowOf(topNote)), topOffset);
    hoverRow = -1;
    if (focusRow < 0)
        ChangeFocus(-1, false);
    ShowEmptyPane();
}

void BoardView::Impl::ShowStep() {
    constexpr int kMost = CardStore::kMostCards / 2;
    if (!LayOutFrom(topRow - 1, -1, topOffset, kMost) &&
        !LayOutFrom(topRow, 1, view.viewport()->height() - topOffset, kMost))
        FinishShowing();
}

// Whoever needs the places of the cards has them laid out now.
void BoardView::Impl::FinishShowing() {
    if (showTimer.isActive())
        CatchUp();
}

// The list is shown at once. A saved note beyond its edges comes into sight when the cards around it are laid out, one
// a turn, so that a key never waits for all of them.
void BoardView::Impl::ShowSaved() {
    if (savedNote > 0) {
        store.DropNote(savedNote);
        Reload();
        ChangeFocus(model.RowOf(std::exchange(savedNote, -1)), false);
        FinishShowing();
    }
    aheadTimer.stop();
    const bool inSight = focusRow >= topRow && focusRow < endRow;
    const int step = focusRow < topRow ? 1 : -1;  // Reveal puts it at the near edge
    if (focusRow >= 0 && !inSight && LayOutFrom(focusRow, step, view.viewport()->height(), CardStore::kMostCards))
        return;
    savedTimer.stop();
    if (focusRow >= 0)
        Reveal(focusRow);
    aheadTimer.start(0, &view);
    emit view.SavedShown();
}

// What a command has changed while a message stands before the board is shown before anything else is done with it.
void BoardView::Impl::CatchUp() {
    if (!emptyPane)
        return;  // while the board is made
    if (heights.Count() != model.Count()) {
        store.DropCards();
        Reload();
    }
    if (!showTimer.isActive())
        return;
    showTimer.stop();
    Settle();
    if (std::exchange(showsFocus, false) && focusRow >= 0)
        Reveal(focusRow);  // what was estimated above it is laid out now
    view.viewport()->update();
}

}  // namespace lore
