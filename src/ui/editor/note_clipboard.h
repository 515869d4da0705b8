#pragma once

#include <QMimeData>
#include <QTextCursor>
#include <memory>
#include <optional>

#include "rtf/document.h"

namespace lore {

class NoteFormats;

/// A text as plain text, HTML and RTF.
std::unique_ptr<QMimeData> CopyOf(const Document& document, const NoteFormats& formats);
/// The selection in the same forms.
std::unique_ptr<QMimeData> CopyOf(const QTextCursor& selection, const NoteFormats& formats);

/// Whether it is a copy of a piece of this very text, as it has been since it was loaded.
bool IsCopyOf(const QMimeData& mime, const NoteFormats& formats);

/// The formatted text that was copied: RTF before HTML. Nothing when there is neither. Bytes that would cut a record
/// are taken out; nothing is loaded from elsewhere. Pictures are scaled down as those of files are, and stand at most
/// `widest` pixels wide.
std::optional<Document> PastedText(const QMimeData& mime, NoteFormats& formats, int widest);

/// The picture that was copied, PNG before other forms, by the rules of PictureFromBytes. Nothing if none can be read.
std::optional<Picture> PastedPicture(const QMimeData& mime, int widest);

/// Plain text without the bytes that would cut a record, with "\n" between its lines.
QString PastedPlainText(const QMimeData& mime);

}  // namespace lore
