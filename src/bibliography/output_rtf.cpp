#include "bibliography/output_writers.h"
#include "rtf/document_builder.h"
#include "rtf/rtf.h"

namespace lore {

namespace {

constexpr int kTwipsOfSpace = 120;
constexpr int16_t kTwipsBetweenEntries = 120;
constexpr TextColor kLinkColor = {5, 99, 193};

CharFormat FormatOf(const BibliographyPiece& piece, int32_t font, DocumentBuilder& builder) {
    const EmphasisLook look = LookOf(piece.kind);
    CharFormat format;
    format.font = font;
    format.bold = look.bold;
    format.italic = look.italic;
    format.underline = look.underline;
    if (!piece.link.empty()) {
        format.link = builder.Link(piece.link);
        format.color = kLinkColor;
    }
    return format;
}

ParagraphFormat FormatOf(const BibliographyEntry& entry) {
    const auto indent = static_cast<int16_t>(entry.indentSpaces * kTwipsOfSpace);
    ParagraphFormat format;
    format.right_to_left = entry.rightToLeft;
    (entry.rightToLeft ? format.right_indent : format.left_indent) = indent;
    format.first_indent = static_cast<int16_t>(-indent);
    format.space_after = kTwipsBetweenEntries;
    return format;
}

}  // namespace

std::string BibliographyAsRtf(const BibliographyDocument& document) {
    DocumentBuilder builder;
    const int32_t font = builder.Font("Times New Roman");
    for (const BibliographyEntry& entry : document.entries) {
        for (const BibliographyPiece& piece : PiecesOf(entry))
            builder.AddText(piece.text, FormatOf(piece, font, builder));
        builder.EndParagraph(FormatOf(entry));
    }
    Document rtf = builder.Finish({}, !document.entries.empty());
    rtf.default_font = font;
    return WriteRtf(rtf);
}

}  // namespace lore
