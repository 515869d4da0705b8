#pragma once

#include <memory>

#include "notes/note_list.h"
#include "notes/search_match.h"
#include "notes/text_cache.h"

namespace lore {

/// True if the note's rich text matches. Its marks then wait until it is shown; otherwise it has none. `cache` may hold
/// its text.
bool MatchNote(ListedNote& note, const std::shared_ptr<const NoteMatcher>& matcher, const TextCache& cache);

/// Keeps only the notes that match the list's own search; a list without terms stays whole.
void FilterList(CNoteList& list, const TextCache& cache);

}  // namespace lore
