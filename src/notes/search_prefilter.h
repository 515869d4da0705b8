#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "notes/search_match.h"

namespace lore {

/// Tells from the bytes of a rich text that a search can't match, without reading the rich text: most notes of a
/// NoteBook go out this way. Safe to use from several threads.
class RtfPrefilter {
public:
    /// The matcher must outlive it.
    explicit RtfPrefilter(const NoteMatcher& matcher);

    /// False only if the text can't be a result.
    bool MayMatch(std::string_view rtf) const;

private:
    const NoteMatcher& matcher_;
    std::vector<std::string> terms_;  // their ends in lower-case ASCII; empty where the bytes tell nothing
    bool anyTells_ = false;
};

}  // namespace lore
