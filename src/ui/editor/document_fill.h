#pragma once

#include <QTextCursor>
#include <QTextDocument>

#include "rtf/document.h"

namespace lore {

class NoteFormats;

/// Puts a whole rich text into an empty document of the screen, by the formats of the board, so that CaptureNote gives
/// it again. `formats` has the fonts and links of the text (Reset).
void FillNote(const Document& document, QTextDocument& shown, NoteFormats& formats);

/// Puts a rich text from elsewhere in place of what the cursor selects. A single paragraph goes into the line. Groups
/// that a document only keeps are left behind. Its lists are numbered on their own, but for one that goes on there: the
/// list of the line that it goes on in and, if `isOwn`, copied from this text, a list that stands beside it. The cursor
/// stands behind the text afterwards.
void InsertNote(Document document, QTextCursor& cursor, NoteFormats& formats, bool isOwn = false);

/// Puts one picture behind the cursor.
void InsertPicture(const Picture& picture, const CharFormat& look, QTextCursor& cursor, NoteFormats& formats);

/// The format with which a picture of the text stands in a document of the screen: at the size that the text has for
/// it, however wide the document is (see PictureObject).
QTextImageFormat ShownPicture(std::shared_ptr<const Picture> picture, const CharFormat& look, QTextDocument& shown,
                              NoteFormats& formats);

}  // namespace lore
