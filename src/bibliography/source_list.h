#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/free_ids.h"
#include "base/record_file.h"
#include "bibliography/author_list.h"
#include "bibliography/custom_type_list.h"
#include "bibliography/list_file.h"
#include "bibliography/source.h"
#include "ports/read_context.h"

namespace lore {

/// The sources of a NoteBook, in order. Look-ups by id and GUID take constant time and find the first of equal keys.
class SourceList : public ListFile {
public:
    // Pointers and references live until sources are added, removed or sorted. Through the mutable ones everything may
    // be changed but SourceID and SourceGUID; ReplaceSource changes those.
    const CSource* FindSourceByID(int32_t id) const;
    CSource* FindSourceByID(int32_t id);
    const CSource* FindSourceByGUID(std::string_view guid) const;
    size_t Count() const { return sources_.size(); }
    const CSource& operator[](size_t position) const { return sources_[position]; }
    CSource& operator[](size_t position) { return sources_[position]; }
    auto begin() const { return sources_.begin(); }
    auto end() const { return sources_.end(); }

    /// Appends a full copy.
    void AddTail(CSource source);
    /// Replaces the first source with the id; false if there is none.
    bool ReplaceSource(int32_t id, CSource source);
    /// Removes the first source with the id; false if there is none.
    bool RemoveSource(int32_t id);
    void RemoveAll();
    /// Notes name sources up to this id that aren't in the list, which wasn't read whole: no new source takes one of
    /// these ids.
    void ReserveIDs(int32_t highest) { reservedID_ = highest; }
    /// The largest SourceID or reserved id, at least 1010. A new source takes NewSourceID.
    int32_t NextSourceID() const;
    /// NextSourceID plus 1, or after what notes name though the list lacks it; where there is no such number the
    /// lowest free one, or 0 if there is none.
    int32_t NewSourceID() const;

    /// Ties a note to a source unless it is tied already, and unties it. Ids of sources that aren't there, or of 0 or
    /// less, change nothing; what isn't there goes to no new source.
    void AddNoteID(int32_t sourceId, int32_t noteId);
    void RemoveNoteID(int32_t sourceId, int32_t noteId);

    /// True if the file of the last load, an old one, holds texts for dates that could not be read: a write loses them.
    bool HoldsUnreadDates() const { return holdsUnreadDates_; }
    /// True if one of the sources names an author.
    bool NameAuthors() const;
    void FormatAll(const AuthorList& authors);
    /// Formats all sources and sorts them by their citations, ignoring case. Equal citations change their order; texts
    /// after thirty letters z follow the others in list order.
    void SortSources(const AuthorList& authors);
    /// Puts the sources into an order of their positions, which holds each once.
    void Arrange(const std::vector<uint32_t>& order);
    /// Every source of a custom type takes the present definition of its type, found by GUID, and keeps the values of
    /// its fields. A source whose type isn't found keeps its copy; the number of the type stays.
    void LinkCustomTypes(const CustomTypeList& types);

    /// Empties the list, then reads a file of any version; records with an id of 0 or less are dropped. A file that
    /// can't be opened leaves the list empty and the version 0.
    FileResult LoadSources(const std::filesystem::path& path, const ReadContext& context);
    /// Formats the sources of this list once, which drops ids of deleted authors, and rewrites the whole file. Records
    /// have the present form whatever the version.
    FileResult SaveSources(const std::filesystem::path& path, const AuthorList& authors, double version = kDataVersion);
    /// Writes copies of the sources for the print program, formatted once, in list order. An empty list writes nothing.
    FileResult SaveBibliography(const std::filesystem::path& path, const AuthorList& authors) const;

private:
    void Reindex();
    void Index(size_t position);

    static constexpr int32_t kFirstID = 1011;

    std::vector<CSource> sources_;
    std::unordered_map<int32_t, uint32_t> byId_;        // first position of each id
    std::unordered_map<std::string, uint32_t> byGuid_;  // first position of each GUID
    int32_t largestID_ = 0;
    mutable FreeIDs free_{kFirstID};
    int32_t reservedID_ = 0;
    bool holdsUnreadDates_ = false;
    PassedIDs lost_;  // of sources that aren't here though notes name them
};

}  // namespace lore
