#include "bibliography/output_writers.h"
#include "rtf/formats.h"
#include "rtf/markup.h"

namespace lore {

namespace {

// The indents of paragraphs are in pixels and on the side itself, because the layout that makes PDF files knows no
// other units and no logical sides.
constexpr std::string_view kHead =
    R"(<!DOCTYPE html>
<html>
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Bibliography</title>
<style>
@media screen { body { max-width: 44em; margin: 2em auto; padding: 0 1em; line-height: 1.45; } }
)";
constexpr std::string_view kBody =
    R"(p { margin-top: 0; margin-bottom: 8px; white-space: pre-wrap; overflow-wrap: anywhere; }
</style>
</head>
<body>
)";
constexpr std::string_view kFoot = "</body>\n</html>\n";

struct Tag {
    bool EmphasisLook::*look;
    std::string_view open;
    std::string_view close;
};
constexpr Tag kTags[] = {{&EmphasisLook::bold, "<strong>", "</strong>"},
                         {&EmphasisLook::italic, "<em>", "</em>"},
                         {&EmphasisLook::underline, "<u>", "</u>"}};

void AppendPiece(std::string& html, const BibliographyPiece& piece) {
    if (!piece.link.empty()) {
        html += "<a href=\"";
        AppendEscaped(html, piece.link);
        html += "\">";
    }
    const EmphasisLook look = LookOf(piece.kind);
    std::string closing;
    for (const Tag& tag : kTags) {
        if (look.*tag.look) {
            html += tag.open;
            closing.insert(0, tag.close);
        }
    }
    AppendEscaped(html, piece.text);
    html += closing;
    if (!piece.link.empty())
        html += "</a>";
}

void AppendEntry(std::string& html, const BibliographyEntry& entry, int pixelsOfSpace) {
    html += entry.rightToLeft ? "<p dir=\"rtl\"" : "<p";
    if (entry.indentSpaces > 0) {
        const std::string pixels = std::to_string(entry.indentSpaces * pixelsOfSpace) + "px";
        html.append(" style=\"margin-").append(entry.rightToLeft ? "right: " : "left: ").append(pixels);
        html.append("; text-indent: -").append(pixels).append("\"");
    }
    html += '>';
    for (const BibliographyPiece& piece : PiecesOf(entry))
        AppendPiece(html, piece);
    html += "</p>\n";
}

}  // namespace

std::string BibliographyAsHtml(const BibliographyDocument& document) {
    std::string html(kHead);
    html.append("body { font-family: \"").append(document.font.twin).append("\", \"").append(document.font.name);
    html.append("\", ").append(document.font.generic).append("; }\n").append(kBody);
    for (const BibliographyEntry& entry : document.entries)
        AppendEntry(html, entry, document.font.twipsOfSpace / kTwipsPerPixel);
    return html.append(kFoot);
}

}  // namespace lore
