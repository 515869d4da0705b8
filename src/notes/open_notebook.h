#pragma once

#include "base/long_list.h"
#include "bibliography/author_list.h"
#include "bibliography/custom_type_list.h"
#include "bibliography/source_list.h"
#include "classify/category_list.h"
#include "classify/key_word_list.h"
#include "classify/search_color_list.h"
#include "notes/note.h"
#include "notes/note_index.h"
#include "notes/notebook_list.h"
#include "notes/notebook_paths.h"
#include "notes/sync_log.h"

namespace lore {

/// The picture of the NoteBook that is open: everything but the notes themselves, which stay on disk. It lives from one
/// load to the next.
struct OpenNoteBook {
    CDatabase database;   ///< its entry in the list of NoteBooks
    NoteBookPaths paths;  ///< where its files lie

    AuthorList authors;
    CustomTypeList types;
    SourceList sources;  ///< each with the ids of its notes
    CProCategoryList categories;
    SyncLog syncLog;
    NoteIndex index;
    CKeyWordList keyWords;
    CSearchColorList colors;
    LongList notesWithoutSource;

    /// A NoteBook of a data folder, of which nothing is loaded yet.
    static OpenNoteBook At(const DataPaths& data, const CDatabase& database) {
        OpenNoteBook book;
        book.database = database;
        book.paths = NoteBookPaths(data, database.folder);
        return book;
    }

    /// The number of notes in the NoteBook.
    size_t TotalNoteCount() const { return index.Count(); }
};

}  // namespace lore
