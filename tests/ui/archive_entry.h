#pragma once

#include <string>

#include "exchange/archive_notes.h"

namespace lore {

/// A note of an archive, with one category.
inline ArchiveNote MakeEntry(const std::string& guid, const std::string& text,
                             const DateTime& edited = DateTime(2026, 1, 2, 3, 4, 5)) {
    ArchiveNote entry;
    entry.note.id = 1;
    entry.note.guid = guid;
    entry.note.plainText = text;
    entry.note.rtfText = "{\\rtf1\\ansi " + text + "}";
    entry.note.dateEdited = edited;
    entry.note.categories[0] = CProCategoryTree(5, "Sea");
    entry.note.categories[0].AddChild(CProCategoryTree(6, "Coast"));
    return entry;
}

}  // namespace lore
