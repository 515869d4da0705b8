#pragma once

#include <memory>

#include "ui/board/card_block.h"

namespace lore {

/// The attachments of a note: pictures that are to be shown with their title and five small buttons, all others as
/// tiles with icon, title and size, side by side as many as have room.
std::unique_ptr<CardBlock> MakeAttachmentBlock(const CNote& note, int width, const CardContext& context);

/// "Document File, 24 kB"; the address for a web link; "File not found" if it is gone.
QString AttachmentInfo(const CAttachment& attachment, const BoardModel& model);
/// The icon of a kind of attachment.
QString AttachmentIcon(int32_t kind);

}  // namespace lore
