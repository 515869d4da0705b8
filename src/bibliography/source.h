#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/date_time.h"
#include "base/long_list.h"
#include "bibliography/author.h"
#include "bibliography/custom_type.h"

namespace lore {

inline constexpr int32_t kFirstCustomType = 1001;  ///< a SourceType from here on is a custom type
inline constexpr size_t kFieldSlots = 15;
inline constexpr size_t kDateSlot = 2;  ///< overwritten with the date text whenever a citation is built

/// How the citation of a source is formatted.
struct SourceFormat {
    int32_t FormatStyle = 1;
    int32_t IndentSpaces = 3;
    int32_t AuthorsBeforeEtAl = 6;
};

/// One bibliographic record. It owns all it holds and refers to authors and notes by id.
struct CSource : SourceFormat {
    int32_t SourceID = -1;
    int32_t SourceType = 1;
    int32_t YearOnly = 0;
    int32_t UseDateText = 0;
    bool HasDate = false;
    /// Emphasis spans of FormattedText, three parallel lists; byte positions, both ends inclusive.
    LongList SpanKinds, SpanStarts, SpanEnds;
    std::string SourceGUID;
    std::string AuthorText;
    std::string FormattedText;
    std::string DateText;
    LongList AuthorIDs;
    LongList NoteIDs;  ///< notes tied to this source; rebuilt when the notes are loaded, never stored
    std::vector<std::string> FieldTexts = std::vector<std::string>(kFieldSlots);
    DateTime SourceDate;
    std::vector<CAuthor> EmbeddedAuthors;  ///< travel with an export record only
    CCustomSourceType CustomTypeCopy;
    DateTime ModifiedDate;
};

}  // namespace lore
