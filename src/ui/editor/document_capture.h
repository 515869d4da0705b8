#pragma once

#include <QTextCursor>
#include <QTextDocument>
#include <memory>

#include "ui/editor/captured_note.h"

namespace lore {

class NoteFormats;

/// What a document of the screen holds, as values. Paragraphs that were converted before and haven't changed since are
/// not converted again (NoteBlockData).
CapturedNote CaptureNote(const QTextDocument& shown, const NoteFormats& formats);

/// The same of the selection alone. Rows of a table that are touched come whole.
CapturedNote CaptureSelection(const QTextCursor& selection, const NoteFormats& formats);

/// The contents of a paragraph, converted and remembered.
std::shared_ptr<const CapturedBlock> CaptureBlock(const QTextBlock& block, const NoteFormats& formats);

}  // namespace lore
