#pragma once

namespace lore {

/// A place on the board in pixels from the top left corner of what is seen.
struct BoardPoint {
    int x = 0, y = 0;
};

/// Where a dragged note goes.
enum class DropSide { Before, After };

/// A card being dragged to another place in the list. Rows count from 0; -1 is none.
class BoardDrag {
public:
    /// The left button went down over a row.
    void Press(int row, BoardPoint at);
    /// The mouse moved with the button held over a board of this size with so many notes. From 30 pixels on, and with
    /// two notes or more, the drag runs: true from then on.
    bool Move(BoardPoint at, int width, int height, int noteCount);
    /// The row under Mouse() is another one now.
    void SetTarget(int row) { target_ = row; }
    void Cancel() { *this = BoardDrag(); }

    bool IsRunning() const { return running_; }
    int Row() const { return row_; }
    int Target() const { return target_; }
    /// True if letting go now would move the note.
    bool MovesNote() const { return running_ && row_ >= 0 && target_ >= 0 && row_ != target_; }
    /// The note goes directly before its target if it stood behind it, otherwise directly after.
    DropSide Side() const { return row_ > target_ ? DropSide::Before : DropSide::After; }
    /// The mouse, kept a little within the edges of the board.
    BoardPoint Mouse() const { return mouse_; }
    /// How far the board scrolls with each tick of kDragScrollInterval while the mouse is at an edge: 0 elsewhere.
    int ScrollStep() const { return scrollStep_; }

private:
    int row_ = -1, target_ = -1, scrollStep_ = 0;
    bool running_ = false;
    BoardPoint pressed_, mouse_;
};

inline constexpr int kDragScrollInterval = 50;  ///< milliseconds

}  // namespace lore
