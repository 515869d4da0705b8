#pragma once

#include <QBasicTimer>
#include <QPoint>
#include <QStringList>
#include <cstdint>
#include <memory>
#include <optional>

#include "notes/board_drag.h"
#include "notes/board_heights.h"
#include "ui/board/board_view.h"
#include "ui/board/card_store.h"

class QMenu;

namespace lore {

class BoardEmptyPane;

/// What the board consists of.
struct BoardView::Impl {
    Impl(BoardView& owner, const BoardModel& boardModel, const Theme& boardTheme);

    // Which part of the list is in sight, and how far down. The scroll bar follows the row at the top: when heights
    // turn out to be others than estimated, what the user looks at stays where it is.
    void ReloadHeights();
    void Reload();
    void CatchUp();
    void RebuildAt(int32_t noteId);
    void ShowStep();
    bool IsShowing() const { return showTimer.isActive() && heights.Count() == model.Count(); }
    void FinishShowing();
    void ShowSaved();
    void Settle();
    void ClimbTo();
    int DescendFrom(int row, int y);
    int HeightOf(int row);
    int Measure(int row);
    void SyncScrollBar();
    bool LayOutAhead();
    bool LayOutFrom(int row, int step, int room, int most);
    void AnchorAt(int row, int offset);
    void ScrollBy(int64_t by);
    bool IsAtEnd(int direction) const;
    void JumpTo(int64_t position, bool toEnd);

    // Places on the screen.
    int CardLeft() const;
    void ChooseWidth();
    int TopOf(int row) const;
    int RowAt(const QPoint& point) const;
    CardHit HitTest(const QPoint& point, int row);
    void UpdateRow(int row);

    void ChangeFocus(int row, bool reveal);
    void Reveal(int row);
    bool AnchorInSight(int row);
    void MoveFocus(int step);
    void ShowFocus();
    void Page(int direction);
    void Hover(const QPoint& point);
    void Activate(int row, const CardHit& hit);
    void Run(BoardCommand command, int32_t id, int attachment);
    PictureRoom RoomOf(int row, int attachment);

    void Press(const QPoint& point);
    void DragTo(const QPoint& point);
    void FindTarget();
    void Drop();
    void CancelDrag();

    void PaintCards(QPainter& painter, const QRect& area);
    void PaintVeil(QPainter& painter, const QRect& card) const;
    void PaintDropMarker(QPainter& painter);
    void FillMenu(QMenu& menu, int row, const CardHit& hit, bool byKeyboard);
    void AddEntry(QMenu& menu, BoardCommand command, int32_t id, int attachment);
    void AddAttachmentEntries(QMenu& menu, int row, int attachment);
    void ShowEmptyPane();

    BoardView& view;
    const BoardModel& model;
    const Theme& theme;
    CardStore store;
    BoardHeights heights;
    int topRow = 0;     ///< the first row in sight
    int topOffset = 0;  ///< its top in the viewport, 0 or above the edge
    int endRow = 0;     ///< one past the last row in sight
    int32_t topNote = -1;
    int32_t focusNote = -1;
    int focusRow = -1;
    int hoverRow = -1;
    CardHit hot;
    bool syncing = false;
    int wheelRest = 0;
    int putOff = 0;  ///< how many timers let this turn of the event loop pass, in which the board has been painted
    BoardDrag drag;
    QBasicTimer dragTimer;
    QBasicTimer showTimer;             ///< runs while the cards that come into sight are laid out
    bool showsFocus = false;           ///< the focus note comes into sight with them
    QBasicTimer aheadTimer;            ///< runs while cards beyond the edges are to be laid out
    QBasicTimer savedTimer;            ///< runs while a saved note is to be shown
    int32_t savedNote = -1;            ///< a saved note whose list isn't shown yet
    CardHit pressedHit;                ///< under the left button when it went down
    std::optional<quint64> pressedAt;  ///< the time of that event, in milliseconds
    QList<BoardCommand> noteCommands = {BoardCommand::RemoveFromList};
    QStringList otherNoteBooks;
    BoardEmptyPane* emptyPane = nullptr;
};

}  // namespace lore
