#pragma once

#include <memory>

#include "ui/board/card_block.h"

namespace lore {

/// A note's category path in one set as pills, one after the other with arrows between; goes on in a further line
/// where the width ends. `setNumber` 1 to 3 stands in front, 0 for nothing.
std::unique_ptr<CardBlock> MakePathBlock(const CProCategoryTree& path, int setNumber, int width,
                                         const CardContext& context);

/// A note's key words as chips in one line; "+4" tells of those that have no room there.
std::unique_ptr<CardBlock> MakeKeyWordBlock(const std::string& keyWords, int width, const CardContext& context);

/// The names of a path from the root down, and the key words of a line as ShownKeyWords has them.
QStringList PathNames(const CProCategoryTree& path);
QStringList KeyWordNames(const std::string& keyWords, size_t* count = nullptr);

}  // namespace lore
