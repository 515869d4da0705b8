#pragma once

#include <memory>

#include "ui/board/card_block.h"

namespace lore {

/// The text of a note in its own fonts, with the marks of the last search; of a note without rich text its plain text.
std::unique_ptr<CardBlock> MakeTextBlock(const CNote& note, int width, const CardContext& context);

}  // namespace lore
