#pragma once

#include <memory>

#include "ui/board/card_block.h"

namespace lore {

/// One source of a note as a reference: its citation with hanging indent and emphasis, and behind it, dimmed, what the
/// note itself says of the source.
std::unique_ptr<CardBlock> MakeSourceBlock(const CSource& source, const std::string& remark, int width,
                                           const CardContext& context);

}  // namespace lore
