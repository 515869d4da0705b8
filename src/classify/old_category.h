#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/date_time.h"
#include "base/file_io.h"
#include "base/record_file.h"
#include "classify/category_tree.h"

namespace lore {

// How versions up to 11.35 kept a note's categories: a flat list with one entry a level. Read only, never written.
//
//   EmptyNCats.dat   FixedDouble version, FixedInt count, old path record x count
//   old path record  FixedInt count (0 or less: the end), then count x
//                    FixedInt level, CountedString name, CountedString parent name

/// One level of such a path.
struct CCategory {
    int32_t level = -1;  ///< 0 for the first level
    std::string name = kUnassignedName;
    std::string parentName = kUnassignedName;
    DateTime date;  ///< not in the record
};

/// A note's path: one category, with the levels above it.
struct CCategoryTree {
    std::vector<CCategory> entries;  ///< in any order; a level counts by its first entry
};

/// Replaces the entries by those of the stream.
void ReadOldPathRecord(RecordReader* stream, CCategoryTree& tree);

/// Builds the chain of the levels 0, 1, 2 ... up to the first one that has no entry or is `<UNASSIGNED>`. False, with
/// `chain` as it was, if level 0 is so already. The nodes have no ids yet. At most kMaxNesting levels.
bool ChainFromOldPath(const CCategoryTree& tree, CProCategoryTree& chain);

/// Reads an old path record and gives its chain; an empty path if it holds none.
CProCategoryTree ReadOldPathAsChain(RecordReader* stream);

/// The trees of an EmptyNCats.dat; none if the file doesn't open.
FileResult LoadEmptyCategories(const std::filesystem::path& path, std::vector<CCategoryTree>& trees);

}  // namespace lore
