#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "notes/note.h"

namespace lore {

/// Tells copies of one note, which a crash or a copied file may leave, from notes that have come to share a number.
struct NoteIdentity {
    size_t guid = 0;      ///< a hash; 0 for a note that has none
    int64_t created = 0;  ///< decides where one of the two has no guid

    static NoteIdentity Of(const CNote& head) {
        return {head.guid.empty() ? 0 : std::hash<std::string>()(head.guid) | 1, head.dateCreated.Seconds()};
    }
    /// Equal for those that one group holds: a note without a guid is the same as each of its second, which aren't each
    /// other's.
    std::pair<size_t, int64_t> Group() const { return {guid, guid != 0 ? 0 : created}; }
    bool IsSameNote(const NoteIdentity& other) const {
        return guid != 0 && other.guid != 0 ? guid == other.guid : created == other.created;
    }
};

}  // namespace lore
