#pragma once

#include "base/record_file.h"
#include "classify/category_tree.h"

namespace lore {

// A category record, which stands in Categories.dat for each root and in a note file for each of the three paths:
//
//   FixedInt         id
//   FixedInt         parent id (read, then overwritten from the structure)
//   CountedString    name
//   FixedInt         child count
//   category record  x child count

/// Appends a node with all below it. Note lists aren't stored.
void WriteCategoryRecord(RecordWriter* stream, const CProCategoryTree& node);

/// Resets the node, reads it with its children and links them. Levels from kMaxNesting on are read over, so that the
/// fields behind the record stay in step. A short file leaves zeros and empty names.
void ReadCategoryRecord(RecordReader* stream, CProCategoryTree& node);
/// Steps over a record with all below it.
void SkipCategoryRecord(RecordReader* stream);

}  // namespace lore
