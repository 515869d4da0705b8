#include "bibliography/output_paragraph.h"
#include "bibliography/output_writers.h"
#include "rtf/office_rtf.h"

namespace lore {

namespace {

constexpr int16_t kTwipsBetweenEntries = 120;

CharFormat FormatOf(const BibliographyPiece& piece, const CharFormat& plain, DocumentBuilder& builder) {
    const EmphasisLook look = LookOf(piece.kind);
    CharFormat format = plain;
    format.bold = look.bold;
    format.italic = look.italic;
    format.underline = look.underline;
    if (!piece.link.empty()) {
        format.link = builder.Link(piece.link);
        format.color = kLinkColor;
    }
    return format;
}

}  // namespace

void AddEntryText(DocumentBuilder& builder, const BibliographyEntry& entry, const CharFormat& plain) {
    for (const BibliographyPiece& piece : PiecesOf(entry))
        builder.AddText(piece.text, FormatOf(piece, plain, builder));
}

ParagraphFormat EntryParagraph(const BibliographyEntry& entry, int twipsOfSpace) {
    const auto indent = static_cast<int16_t>(entry.indentSpaces * twipsOfSpace);
    ParagraphFormat format;
    format.rightToLeft = entry.rightToLeft;
    (entry.rightToLeft ? format.rightIndent : format.leftIndent) = indent;
    format.firstIndent = static_cast<int16_t>(-indent);
    format.spaceAfter = kTwipsBetweenEntries;
    return format;
}

std::string BibliographyAsRtf(const BibliographyDocument& document) {
    DocumentBuilder builder;
    CharFormat plain;
    plain.font = builder.Font(document.font.name);
    for (const BibliographyEntry& entry : document.entries) {
        AddEntryText(builder, entry, plain);
        builder.EndParagraph(EntryParagraph(entry, document.font.twipsOfSpace));
    }
    Document rtf = builder.Finish({}, !document.entries.empty());
    rtf.defaultFont = plain.font;
    return WriteOfficeRtf(rtf, document.paper);
}

}  // namespace lore
