#pragma once

#include <QString>

namespace lore {

/// What the board says when its list is empty: a line in large type, a sentence, and the first step as a button.
struct BoardEmptyState {
    QString title, text, action;  ///< without `action` there is no button
    QString logo = {};            ///< path of a picture; the program's own one if it can't be read
    QString otherAction = {};     ///< a second button

    bool operator==(const BoardEmptyState&) const = default;
};

}  // namespace lore
