#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/date_time.h"
#include "base/long_list.h"
#include "base/rgb.h"
#include "bibliography/source_info.h"
#include "classify/category_tree.h"

namespace lore {

/// A file or a web link of a note.
struct CAttachment {
    int32_t shift = 0;  ///< sideways offset of a picture on the board, in pixels
    double zoom = 1.0;  ///< scale of a picture on the board
    std::string title;
    std::string storedFile;  ///< name in the NoteBook's "Attachments" folder
    std::string sourceFile;  ///< path that the file came from, or the address of a web link
    int32_t type = 10;       ///< 1 to 12
    bool show = true;
};

/// The central record: a rich text with all that hangs on it. Texts are bytes as they stand in the file.
struct CNote {
    int32_t id = -1;  ///< unique within the NoteBook; 0 or less is no note
    bool spellCheck = true;
    std::string guid;
    std::string keyWords;  ///< separated by commas
    std::string reserved;  ///< kept so that files stay in step
    std::string plainText;
    std::string rtfText;
    DateTime dateEdited;
    DateTime dateCreated;  ///< names the file of a note without source
    Rgb borderColor = 0;
    LongList sources;  ///< ids as stored, unknown ones too; the first one decides the note's file
    std::vector<CNoteSourceInfo> sourceInfo;
    std::array<CProCategoryTree, kSetCount> categories;  ///< the paths in the sets 1, 2 and 3
    std::vector<CAttachment> attachments;

    // Working values of the current note list, never stored.
    std::string displayRtf;  ///< rtfText with search hits marked; empty unless the note was a result of the last search
    bool newlyAdded = false;
};

}  // namespace lore
