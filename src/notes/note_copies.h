#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace lore {

/// One copy of a note, in reading order.
struct NoteCopy {
    int32_t id = 0;
    bool isHome = false;  ///< it stands in the file that its first source or its creation day names
    bool isWhole = true;  ///< its file doesn't break off within it
    int64_t edited = 0;   ///< when it was written, in seconds
    size_t file = 0;      ///< tells the files apart
};

/// A crash or a full disk while a note moves can leave it in two files. True for the copy of each note that shows: of
/// the whole ones that are at home, in each file the first, the one that was written last; without one a whole one
/// before a broken one, then one that is at home before any other; among equals the first one met.
std::vector<bool> ShownCopies(const std::vector<NoteCopy>& copies);

/// Copies of notes with what is kept of each of them until it is known which ones show.
template <typename Part>
class CopyChoice {
public:
    void Add(const NoteCopy& copy, Part part) {
        copies_.push_back(copy);
        parts_.push_back(std::move(part));
    }
    /// Hands out the id and the part of each copy that shows, in reading order.
    template <typename Take>
    void TakeShown(Take take) {
        const std::vector<bool> shown = ShownCopies(copies_);
        for (size_t i = 0; i < parts_.size(); ++i) {
            if (shown[i])
                take(copies_[i].id, std::move(parts_[i]));
        }
    }

private:
    std::vector<NoteCopy> copies_;
    std::vector<Part> parts_;
};

}  // namespace lore
