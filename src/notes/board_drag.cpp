#include "notes/board_drag.h"

#include <algorithm>
#include <cstdint>

namespace lore {

namespace {

constexpr int kDistance = 30;            // pixels that the mouse moves before a card comes along
constexpr int kNear = 2, kFarBelow = 5;  // what the mouse keeps from the edges
constexpr int kEdge = 2;                 // pixels from the outermost place at which the list scrolls
constexpr int kScrollStep = 35;

bool IsFar(BoardPoint a, BoardPoint b) {
    const int64_t x = int64_t{a.x} - b.x, y = int64_t{a.y} - b.y;
    return x * x + y * y >= int64_t{kDistance} * kDistance;
}

/// std::clamp for bounds that a tiny board turns round.
int Within(int value, int low, int high) {
    return std::max(low, std::min(value, high));
}

}  // namespace

void BoardDrag::Press(int row, BoardPoint at) {
    Cancel();
    row_ = row;
    pressed_ = mouse_ = at;
}

bool BoardDrag::Move(BoardPoint at, int width, int height, int noteCount) {
    if (row_ < 0 || noteCount < 2)
        return false;
    if (!running_ && !IsFar(at, pressed_))
        return false;
    running_ = true;
    const int bottom = height - 1 - kFarBelow;
    mouse_ = {Within(at.x, kNear, width - 1 - kNear), Within(at.y, kNear, bottom)};
    scrollStep_ = mouse_.y <= kNear + kEdge ? -kScrollStep : mouse_.y >= bottom - kEdge ? kScrollStep : 0;
    return true;
}

}  // namespace lore
