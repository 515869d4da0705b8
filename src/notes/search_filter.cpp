#include "notes/search_filter.h"

#include <utility>
#include <vector>

#include "rtf/rtf.h"

namespace lore {

bool MatchNote(ListedNote& note, const std::shared_ptr<const NoteMatcher>& matcher, const TextCache& cache) {
    if (!note.note->displayRtf.empty())
        note.note->displayRtf.clear();
    note.pendingMarks.reset();
    const std::string& rtf = note.note->rtfText;
    if (rtf.empty())
        return false;
    const auto held = cache.TextOf(note.Id());
    if (held ? !matcher->MatchesFolded(*held) : !matcher->Matches(PlainText(rtf)))
        return false;
    note.pendingMarks = matcher;
    return true;
}

void FilterList(CNoteList& list, const TextCache& cache) {
    if (list.search.searchTerms.empty())
        return;
    const auto matcher = std::make_shared<const NoteMatcher>(list.search);
    std::vector<ListedNote> matching;
    for (ListedNote note : list.Notes()) {
        if (MatchNote(note, matcher, cache))
            matching.push_back(std::move(note));
    }
    list.SetNotes(std::move(matching));
}

}  // namespace lore
