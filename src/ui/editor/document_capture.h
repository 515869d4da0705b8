#pragma once

#include <QTextCursor>
#include <QTextDocument>
#include <memory>

#include "ui/editor/captured_note.h"

namespace lore {

class NoteFormats;

/// Takes over what a document of the screen holds, step by step. The document mustn't change between the steps.
class NoteCapture {
public:
    NoteCapture(const QTextDocument& shown, const NoteFormats& formats);
    ~NoteCapture();
    NoteCapture(const NoteCapture&) = delete;
    NoteCapture& operator=(const NoteCapture&) = delete;

    /// Takes the next `count` paragraphs and whole tables; false once nothing is left.
    bool Step(int count);
    /// What was taken; for one call.
    CapturedNote Take();
    /// See CaptureSelection.
    static CapturedNote OfSelection(const QTextCursor& selection, const NoteFormats& formats);

private:
    class Walk;
    std::unique_ptr<Walk> walk_;
};

/// What a document of the screen holds, as values. Paragraphs that were converted before and haven't changed since are
/// not converted again (NoteBlockData).
CapturedNote CaptureNote(const QTextDocument& shown, const NoteFormats& formats);

/// The same of the selection alone. Rows of a table that are touched come whole.
CapturedNote CaptureSelection(const QTextCursor& selection, const NoteFormats& formats);

/// The contents of a paragraph, converted and remembered.
std::shared_ptr<const CapturedBlock> CaptureBlock(const QTextBlock& block, const NoteFormats& formats);

}  // namespace lore
