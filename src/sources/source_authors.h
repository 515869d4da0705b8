#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bibliography/author.h"
#include "sources/source_store.h"

namespace lore {

/// One line of a list of authors.
struct AuthorLine {
    int32_t id = -1;
    std::string name;  ///< "Smith, John Q."
};

/// The authors of a source that is being edited, and those that it could have. New, changed and deleted authors are
/// stored at once, whatever becomes of the source.
class SourceAuthors {
public:
    /// `ids` are those of the source in citation order; all outlive the model.
    SourceAuthors(SourceStore& store, LongList& ids) : store_(store), ids_(ids) {}

    /// The authors that aren't in the source, by name ignoring case.
    std::vector<AuthorLine> Available() const;
    /// Those of the source in citation order.
    std::vector<AuthorLine> OfSource() const;
    /// The parts of a name; null for an id without author.
    const CAuthor* Find(int32_t id) const;

    /// Stores a new author and gives the id. Nothing if there is neither a first nor a last name, or it can't be
    /// written. The same name can be entered twice.
    std::optional<int32_t> AddNew(CAuthor name);
    /// Gives the author with the value's id these names. False, and nothing changes, without a first and a last name.
    bool Update(CAuthor value);
    /// Asks, and deletes an author for all sources. True if it has gone.
    bool Delete(int32_t id);

    void Append(int32_t id);
    void Remove(int32_t id);
    /// Gives the authors of the source the order of these ids, which are those of its lines.
    void Reorder(const std::vector<int32_t>& order);

private:
    bool Write(const AuthorList& before);

    SourceStore& store_;
    LongList& ids_;
};

}  // namespace lore
