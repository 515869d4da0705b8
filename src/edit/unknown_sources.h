#pragma once

#include <vector>

#include "base/long_list.h"
#include "bibliography/source_list.h"
#include "notes/note.h"

namespace lore {

/// The sources of a note that a list of sources lacks because its file was not read whole. They may well stand in the
/// file, or in the one that is put back, so that the note must go on naming them.
struct UnknownSources {
    LongList ids;                       ///< in the note's order
    bool isFirstMain = false;           ///< the first of them is the main source, which names the note's file
    std::vector<CNoteSourceInfo> info;  ///< what the note knows of them

    /// Puts them behind the sources and the information of a note, a main source in front.
    void PutBack(CNote& note) const;
};

/// Nothing for a list that was read whole: a source that such a list lacks has gone.
UnknownSources FindUnknownSources(const CNote& note, const SourceList& sources);

}  // namespace lore
