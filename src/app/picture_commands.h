#pragma once

#include <cstdint>

#include "app/lorebinder_app.h"

namespace lore {

enum class PictureCommand { ZoomIn, ZoomOut, ShiftLeft, ShiftRight, Restore };

/// How wide a picture is drawn at a zoom of 1.0, and how wide it may get, in pixels of the board.
struct PictureRoom {
    int width = 0;
    int cardWidth = 0;
};

/// Changes the scale or the place of a picture: in steps of 0.05, not below 0.05, and of 10 pixels while the picture is
/// narrower than the card, so that half the free width isn't passed. True if anything changed.
bool ChangePicture(CAttachment& picture, PictureCommand command, const PictureRoom& room);

/// Carries a command out on an attachment of a note of the NoteBook: the note's file is read, the note replaced and the
/// file rewritten; a linked NoteBook's log takes the change. The note in the current list follows.
void RunPictureCommand(CLorebinderApp& app, int32_t noteId, size_t attachment, PictureCommand command,
                       const PictureRoom& room);

}  // namespace lore
