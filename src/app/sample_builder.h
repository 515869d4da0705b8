#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "app/sample_note.h"
#include "app/sample_sources.h"
#include "classify/category_list.h"
#include "notes/note.h"
#include "notes/note_book_loader.h"

namespace lore {

/// A file that goes into the folder "Attachments".
struct SampleStoredFile {
    std::string name;
    std::string_view bytes;
};

/// The content of the sample NoteBook, ready to be written.
struct SampleContent {
    std::string name;  ///< of the NoteBook
    SampleSources bibliography;
    CProCategoryList categories;
    size_t categoryCount = 0;  ///< without the root of the notes without a category
    std::vector<CNote> notes;  ///< by their day of creation
    std::vector<SampleStoredFile> files;
};

/// Builds it from the files within the program. Ids follow the last ones given out, which are raised.
SampleContent BuildSampleContent(IdCounters& counters, const ReadContext& context);

}  // namespace lore
