#include "ui/editor/captured_note.h"

#include "rtf/document_builder.h"

namespace lore {
namespace {

void AddPieces(const CapturedBlock& pieces, DocumentBuilder& builder) {
    for (const CapturedPiece& piece : pieces) {
        if (piece.kept)
            builder.AddKept(*piece.kept);
        else if (piece.kind == RunKind::Picture)
            builder.AddPicture(*piece.picture, piece.format);
        else if (piece.kind == RunKind::Text)
            builder.AddText(piece.text, piece.format);
        else
            builder.AddBreak(piece.kind, piece.format);
    }
}

}  // namespace

Document Assemble(const CapturedNote& note) {
    DocumentBuilder builder;
    Document& unfinished = builder.Unfinished();
    unfinished.fonts = note.fonts;
    unfinished.links = note.links;
    unfinished.codePage = note.codePage;
    unfinished.defaultFont = note.defaultFont;
    for (const CapturedParagraph& paragraph : note.paragraphs) {
        if (paragraph.pieces)
            AddPieces(*paragraph.pieces, builder);
        if (paragraph.end == ParagraphEnd::Cell)
            builder.EndCell(paragraph.format, paragraph.level);
        else if (paragraph.end == ParagraphEnd::Row)
            builder.EndRow(paragraph.row ? *paragraph.row : RowFormat(), paragraph.format, paragraph.level);
        else
            builder.EndParagraph(paragraph.format, paragraph.level);
    }
    return builder.Finish({}, true);
}

}  // namespace lore
