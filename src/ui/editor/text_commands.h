#pragma once

#include <QString>
#include <QTextCursor>
#include <functional>

#include "rtf/formats.h"

class QTextEdit;

namespace lore {

class NoteFormats;

enum class ParagraphStyle { Normal, Heading1, Heading2, Heading3, Quotation };

/// Changes how the selection looks, or what is typed next. Each call is one step of undo.
class TextCommands {
public:
    TextCommands(QTextEdit& edit, NoteFormats& formats) : edit_(edit), formats_(formats) {}

    using CharChange = std::function<void(CharFormat&)>;
    using ParagraphChange = std::function<void(ParagraphFormat&)>;
    /// Changes the characters of the selection; without one those that are typed next, or the link around the caret.
    void Characters(const CharChange& change);
    /// Changes the paragraphs that the selection touches.
    void Paragraphs(const ParagraphChange& change);
    void SetStyle(ParagraphStyle style);
    /// Makes list items of the paragraphs; plain paragraphs if all of them are items of this kind.
    void ToggleList(ListKind kind);
    /// Moves list items one level in or out; false when the caret stands in none.
    bool ChangeLevel(int by);
    void Indent(int steps);
    /// Links the selection, or the link around the caret, or puts `text` in linked. An empty target takes the link
    /// away.
    void SetLink(const QString& target, const QString& text);
    /// The selection, grown to the link that the caret stands in.
    QTextCursor LinkAround() const;

    CharFormat CharactersNow() const;
    ParagraphFormat ParagraphNow() const;
    ParagraphStyle StyleNow() const;
    /// The colour behind the text of a position.
    QColor GroundAt(const QTextCursor& cursor) const;

private:
    void ChangeRange(const QTextCursor& range, const CharChange& change);

    QTextEdit& edit_;
    NoteFormats& formats_;
};

}  // namespace lore
