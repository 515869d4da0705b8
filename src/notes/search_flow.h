#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "notes/note_list.h"
#include "notes/open_notebook.h"
#include "notes/search_match.h"
#include "notes/text_cache.h"
#include "ports/background.h"
#include "ports/fault_notice.h"
#include "ports/progress.h"
#include "ports/prompts.h"
#include "ports/read_context.h"

namespace lore {

enum class SearchScope { Database, CurrentNotes };

/// What became of a search from the search box.
enum class SearchOutcome {
    Empty,      ///< nothing was typed, nothing happened
    Invalid,    ///< both operators: the flags and marks of the list are gone, the board is left until its next change
    Cancelled,  ///< stopped by the user: the flags and marks of the list are gone, its notes stay
    Done,       ///< the list has changed, the board is rebuilt and the counts are refreshed
};

/// The search box: runs a search in its scope, brings the results into the current note list and tells how many there
/// were. All that it works on must outlive it.
class SearchBox {
public:
    struct Parts {
        const OpenNoteBook& book;
        const TextCache& cache;
        CNoteList& list;  ///< the current note list
        Prompts& prompts;
        Progress& progress;
        FaultNotice& faults;
        const ReadContext& context;
        Background* background = nullptr;        ///< without one the search runs on the caller's thread
        std::function<void()> listChanged = {};  ///< called once the list has changed, before the message
    };
    explicit SearchBox(const Parts& parts) : parts_(parts) {}

    /// `text` as it stands in the box. `noteSortID` is the active order.
    SearchOutcome Run(std::string_view text, SearchScope scope, int32_t noteSortID);

private:
    /// The current list as it will be, made beside the thread that shows the present one.
    struct Next {
        CNoteList list;
        std::vector<int32_t> results;  ///< ids
        KeptForLater faults;
    };
    void SearchDatabase(const NoteSearch& search, int32_t noteSortID, const std::stop_token& stop, Next& next) const;
    void SearchCurrentNotes(const NoteSearch& search, Next& next) const;

    Parts parts_;
};

/// The notes of the open NoteBook that match, files by name, notes in file order. What the cache doesn't hold is read
/// from the files. Once `stop` is requested, notes may be missing.
std::vector<int32_t> FindInNoteBook(const OpenNoteBook& book, const TextCache& cache, const NoteSearch& search,
                                    const ReadContext& context, FaultNotice& faults, const std::stop_token& stop = {});

}  // namespace lore
