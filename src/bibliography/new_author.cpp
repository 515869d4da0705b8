#include "bibliography/new_author.h"

#include <algorithm>

#include "base/free_ids.h"
#include "base/id_marks.h"

namespace lore {

namespace {
constexpr int32_t kFirstID = 2;
}

int32_t NewAuthorID(const AuthorList& authors, const SourceList& sources, int& lastGiven) {
    const int64_t wanted = std::max<int64_t>(int64_t{lastGiven} + 1, authors.NextAuthorID());
    IDMarks named;
    // A source that still names an author who has gone must not get another one.
    if (wanted > kHighestID || authors.FindAuthorByID(static_cast<int32_t>(wanted))) {
        for (const CSource& source : sources) {
            for (const int32_t id : source.AuthorIDs)
                named.Add(id);
        }
    }
    const int32_t id = FreeIDs(kFirstID).Find(
        wanted, [&](int32_t other) { return authors.FindAuthorByID(other) || named.Contains(other); });
    lastGiven = std::max(lastGiven, id);
    return id;
}

}  // namespace lore
