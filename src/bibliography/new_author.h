#pragma once

#include <cstdint>

#include "base/free_ids.h"
#include "bibliography/source_list.h"

namespace lore {

/// Gives ids to new authors of a NoteBook.
class AuthorIDs {
public:
    /// Ids that these sources name are passed over: one that still names an author who has gone must not get another.
    explicit AuthorIDs(const SourceList& sources);

    /// One above the last that was given out and all in the list, which `lastGiven` is raised to. Where there is no
    /// such number, the lowest free one, or 0 if there is none.
    int32_t Take(const AuthorList& authors, int& lastGiven);

private:
    PassedIDs named_;
    FreeIDs free_;
};

}  // namespace lore
