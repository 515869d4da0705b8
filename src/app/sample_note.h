#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "base/date_time.h"
#include "notes/note.h"

namespace lore {

/// A source of a sample note: its key in the list of sources, and what the note alone knows of it.
struct SampleSourceUse {
    std::string key;
    std::string info;
};

/// A picture, file or link that a note of the sample names.
struct SampleAttachment {
    enum class Kind { Picture, File, Link };

    Kind kind = Kind::File;
    std::string target;  ///< name of a file, or an address
    std::string title;
    double zoom = 1.0;  ///< of a picture on its card
};

/// A note as its file has it, all texts UTF-8. The file's grammar:
///
///   == title
///   word: value         created, edited (YYYY-MM-DD HH:MM), keywords, color, source, set1, set2, set3,
///   ...                 attach, picture, link; a value has up to three parts between "|"
///
///   text                from behind the first empty line to the next title
struct SampleNote {
    std::string title;
    std::string keyWords;
    std::string color;  ///< by name
    DateTime created, edited;
    std::vector<SampleSourceUse> sources;
    std::array<std::string, kSetCount> categories;  ///< "Level 1/Level 2/..." for the sets 1, 2 and 3
    std::vector<SampleAttachment> attachments;
    std::string text;
};

/// The notes of a file in its order. Head lines that mean nothing are passed over.
std::vector<SampleNote> ParseSampleNotes(std::string_view file);

}  // namespace lore
