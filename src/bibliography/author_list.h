#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/record_file.h"
#include "bibliography/author.h"
#include "bibliography/list_file.h"

namespace lore {

/// The authors of a NoteBook, in file order. Look-ups take constant time.
class AuthorList : public ListFile {
public:
    /// The first author with the id, or null. The pointer lives until the list changes.
    const CAuthor* FindAuthorByID(int32_t id) const;
    /// The id of the first author whose five strings hold the same characters as the value's; -1 if there is none.
    int32_t FindAuthorByName(const CAuthor& value) const;

    /// Appends a copy, unless an author with this id is there already: then nothing changes and the result is false.
    bool AddAuthor(const CAuthor& author);
    /// Gives the first author with the value's id the value's first, middle and last name, trimmed. False, and nothing
    /// changes, if there is no such author or neither a first nor a last name.
    bool UpdateAuthor(CAuthor value);
    /// Removes every author with the id.
    void RemoveAuthor(int32_t id);
    void RemoveAll();
    /// The largest id plus 1, at least 1, at most the largest number. A new author takes NewAuthorID.
    int32_t NextAuthorID() const;

    size_t Count() const { return authors_.size(); }
    const CAuthor& operator[](size_t position) const { return authors_[position]; }
    auto begin() const { return authors_.begin(); }
    auto end() const { return authors_.end(); }

    /// Empties the list, then reads a file; one that can't be opened leaves the list empty and the version 0.
    FileResult LoadAuthors(const std::filesystem::path& path);
    /// Rewrites the whole file.
    FileResult SaveAuthors(const std::filesystem::path& path, double version = kDataVersion) const;

private:
    void Index(size_t position);
    void Reindex();

    std::vector<CAuthor> authors_;
    std::unordered_map<int32_t, uint32_t> byId_;        // first position of each id
    std::unordered_multimap<size_t, uint32_t> byName_;  // positions by the hash of the five strings
    int32_t largestID_ = 0;
};

/// A count and author records, as they stand in the author file behind its version and in export records of sources.
/// Reading empties the list first.
void ReadAuthorRecords(RecordReader* stream, std::vector<CAuthor>& authors);
void WriteAuthorRecords(RecordWriter* stream, const std::vector<CAuthor>& authors);

}  // namespace lore
