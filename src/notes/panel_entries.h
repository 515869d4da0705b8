#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/long_list.h"
#include "base/rgb.h"
#include "bibliography/source_groups.h"
#include "classify/category_list.h"
#include "classify/key_word_list.h"
#include "classify/search_color_list.h"

namespace lore {

/// What an entry of a filter panel stands for.
enum class PanelValue { Category, SourceGroup, Source, NoSource, KeyWord, Color };

/// One entry of a filter panel. The entries of a panel form a tree, written down parents first.
struct PanelEntry {
    PanelValue value = PanelValue::Category;
    int32_t id = -1;   ///< of the category, the source or the colour; -1 for all others
    std::string name;  ///< without counts; of a source "Book: Title", of a colour "#rrggbb"
    Rgb color = 0;     ///< of a colour
    int level = 0;
    int parent = -1;             ///< position of the parent, -1 at level 0
    int end = 0;                 ///< one past the last entry of its subtree
    std::vector<int32_t> notes;  ///< all its notes; in a group a note stands once for each of its sources
    int inList = 0;              ///< how many of them stand in the current list
};

/// The forest, as it is ordered. `set` is 1 to 3 or kAllSets; for all sets a category has the notes of each set once,
/// and `<UNASSIGNED>` those that are unassigned in every set.
std::vector<PanelEntry> CategoryEntries(const CProCategoryList& forest, int set);

/// `<NO_SOURCE>`, then the groups by name without case, each with its sources in the order of the list. Sources whose
/// key is empty stand under "<NO_AUTHOR>", "<NO_PUBLICATION>" or "<NO_TITLE>". A title that one source alone has stands
/// as that source.
std::vector<PanelEntry> SourceEntries(const SourceList& sources, SourceGrouping grouping,
                                      const LongList& withoutSource);

std::vector<PanelEntry> KeyWordEntries(const CKeyWordList& keyWords);
std::vector<PanelEntry> ColorEntries(const CSearchColorList& colors);

}  // namespace lore
