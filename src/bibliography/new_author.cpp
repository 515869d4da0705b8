#include "bibliography/new_author.h"

#include <algorithm>

namespace lore {

namespace {
constexpr int32_t kFirstID = 2;
}

AuthorIDs::AuthorIDs(const SourceList& sources) : free_(kFirstID) {
    for (const CSource& source : sources) {
        for (const int32_t id : source.AuthorIDs)
            named_.Add(id);
    }
}

int32_t AuthorIDs::Take(const AuthorList& authors, int& lastGiven) {
    const int64_t wanted = std::max<int64_t>(int64_t{lastGiven} + 1, authors.NextAuthorID());
    const int32_t id = free_.Find(
        named_.Behind(wanted), [&](int32_t other) { return authors.FindAuthorByID(other) || named_.Contains(other); });
    lastGiven = std::max(lastGiven, id);
    return id;
}

}  // namespace lore
