#pragma once

#include <cstddef>
#include <cstdint>

#include "rtf/control_words.h"

namespace lore {

/// A group of RTF that is open, as a reader of the body's text sees it.
struct BodyGroup {
    Destination destination = Destination::Body;
    Destination outsideTwin = Destination::Body;
    bool hidden = false;
    bool deleted = false;
    bool inShape = false;   ///< or in an object
    bool isResult = false;  ///< it holds what an object shows
    bool inResult = false;  ///< its pictures are those of the object
    /// All readers go through it. What stands in any other group changes nothing outside of it, or they would see
    /// different texts.
    bool isReadByAll = true;
    int32_t fallbackLength = 1;
    int32_t font = -1;
    size_t begin = 0;        ///< of the brace, or of the destination's word where that isn't the first one
    size_t shownBefore = 0;  ///< Shown() where its destination began
    char32_t symbol = 0;     ///< what its field stands for if that has no result
};

/// Whether text of both goes to the same place.
constexpr bool IsSamePlace(const BodyGroup& a, const BodyGroup& b) {
    return a.destination == b.destination && a.hidden == b.hidden && a.deleted == b.deleted;
}

}  // namespace lore
