#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace lore {

/// One copy of a note, in reading order.
struct NoteCopy {
    int32_t id = 0;
    bool isHome = false;  ///< it stands in the file that its first source or its creation day names
};

/// A crash while a note moves can leave it in two files. True for the copy of each note that shows: the first one that
/// is at home, otherwise the first one met.
std::vector<bool> ShownCopies(const std::vector<NoteCopy>& copies);

}  // namespace lore
