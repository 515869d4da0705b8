#pragma once

#include <filesystem>
#include <vector>

#include "notes/notebook_list.h"
#include "notes/notebook_paths.h"
#include "ports/fault_notice.h"

namespace lore {

/// A deleted NoteBook bears such a folder name until it has gone: no list names it.
inline constexpr char kTrashStart[] = "_DELETED_";
/// What is told of such a folder that can't be removed.
inline constexpr char kTrashStays[] = "A deleted NoteBook is still on the disk";

/// Deleted NoteBooks whose folders wait, under names that no reader picks up, until the program ends.
class NoteBookTrash {
public:
    struct Entry {
        CDatabase noteBook;
        size_t position = 0;             ///< in the list of NoteBooks
        std::filesystem::path original;  ///< the folder as it was called
        std::filesystem::path folder;    ///< where it waits; empty if others used it too and it stayed
    };

    explicit NoteBookTrash(FaultNotice& faults) : faults_(faults) {}
    /// What still waits goes for good.
    ~NoteBookTrash();
    NoteBookTrash(const NoteBookTrash&) = delete;
    NoteBookTrash& operator=(const NoteBookTrash&) = delete;

    void Add(Entry entry) { entries_.push_back(std::move(entry)); }
    /// The NoteBook that was deleted last; null for none.
    const Entry* Last() const { return entries_.empty() ? nullptr : &entries_.back(); }
    void ForgetLast() { entries_.pop_back(); }
    bool Holds(const std::filesystem::path& folder) const;

private:
    FaultNotice& faults_;
    std::vector<Entry> entries_;
};

}  // namespace lore
