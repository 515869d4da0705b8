#include <set>
#include <utility>

#include "bibliography/odt_package.h"
#include "bibliography/output_writers.h"
#include "rtf/markup.h"

namespace lore {

namespace {

constexpr std::string_view kStyles =
    R"(<office:styles>
<style:default-style style:family="paragraph">
<style:text-properties style:font-name="Text" fo:font-size="12pt" style:font-size-asian="12pt" style:font-size-complex="12pt"/>
</style:default-style>
<style:style style:name="Standard" style:family="paragraph" style:class="text"/>
<style:style style:name="Bibliography" style:family="paragraph" style:parent-style-name="Standard" style:class="text">
<style:paragraph-properties fo:margin-top="0pt" fo:margin-bottom="6pt"/>
</style:style>
</office:styles>
)";

std::string TextStyleName(int32_t kind) {
    return "E" + std::to_string(kind);
}

std::string ParagraphStyleName(int indentSpaces, bool rightToLeft) {
    return (rightToLeft ? "R" : "P") + std::to_string(indentSpaces);
}

void AppendTextStyle(std::string& xml, int32_t kind) {
    const EmphasisLook look = LookOf(kind);
    xml.append("<style:style style:name=\"").append(TextStyleName(kind));
    xml.append("\" style:family=\"text\"><style:text-properties");
    if (look.italic)
        AppendForAllScripts(xml, "font-style", "italic");
    if (look.bold)
        AppendForAllScripts(xml, "font-weight", "bold");
    if (look.underline)
        xml += R"( style:text-underline-style="solid" style:text-underline-width="auto")"
               R"( style:text-underline-color="font-color")";
    xml += "/></style:style>\n";
}

void AppendParagraphStyle(std::string& xml, int indentSpaces, bool rightToLeft, int twipsOfSpace) {
    const std::string points = OdtPoints(indentSpaces * twipsOfSpace);
    xml.append("<style:style style:name=\"").append(ParagraphStyleName(indentSpaces, rightToLeft));
    xml.append("\" style:family=\"paragraph\" style:parent-style-name=\"Bibliography\"><style:paragraph-properties ");
    xml.append(rightToLeft ? "style:writing-mode=\"rl-tb\" fo:text-align=\"start\" fo:margin-right" : "fo:margin-left");
    xml.append("=\"").append(points).append("\" fo:text-indent=\"-").append(points).append("\"/></style:style>\n");
}

/// One paragraph.
class ParagraphWriter {
public:
    explicit ParagraphWriter(std::string& xml) : xml_(xml) {}

    void Write(const BibliographyEntry& entry) {
        xml_.append("<text:p text:style-name=\"").append(ParagraphStyleName(entry.indentSpaces, entry.rightToLeft));
        xml_ += "\">";
        for (const BibliographyPiece& piece : PiecesOf(entry))
            WritePiece(piece);
        xml_ += "</text:p>\n";
    }

private:
    void WritePiece(const BibliographyPiece& piece) {
        if (!piece.link.empty()) {
            xml_ += "<text:a xlink:type=\"simple\" xlink:href=\"";
            AppendEscaped(xml_, piece.link);
            xml_ += "\">";
        }
        if (piece.kind != kEmphasisNone)
            xml_.append("<text:span text:style-name=\"").append(TextStyleName(piece.kind)).append("\">");
        AppendOdtText(xml_, piece.text, behindBlank_);
        if (piece.kind != kEmphasisNone)
            xml_ += "</text:span>";
        if (!piece.link.empty())
            xml_ += "</text:a>";
    }

    std::string& xml_;
    bool behindBlank_ = true;
};

std::string FontFace(const BibliographyFont& font) {
    std::string xml = "<office:font-face-decls>\n<style:font-face style:name=\"Text\" svg:font-family=\"'";
    xml.append(font.twin).append("', '").append(font.name).append("'\" style:font-family-generic=\"");
    return xml.append(font.family).append("\"/>\n</office:font-face-decls>\n");
}

std::string Content(const BibliographyDocument& document) {
    std::string xml = BeginOdtPart("document-content");
    xml += "<office:automatic-styles>\n";
    for (int32_t kind = kItalic; kind <= kBoldItalicUnderline; ++kind)
        AppendTextStyle(xml, kind);
    std::set<std::pair<int, bool>> indents;
    for (const BibliographyEntry& entry : document.entries)
        indents.emplace(entry.indentSpaces, entry.rightToLeft);
    for (const auto& [indentSpaces, rightToLeft] : indents)
        AppendParagraphStyle(xml, indentSpaces, rightToLeft, document.font.twipsOfSpace);
    xml += "</office:automatic-styles>\n<office:body>\n<office:text>\n";
    for (const BibliographyEntry& entry : document.entries)
        ParagraphWriter(xml).Write(entry);
    return xml.append("</office:text>\n</office:body>\n</office:document-content>\n");
}

}  // namespace

std::optional<std::string> BibliographyAsOdt(const BibliographyDocument& document) {
    const std::string content = Content(document);
    const std::string styles = BeginOdtPart("document-styles")
                                   .append(FontFace(document.font))
                                   .append(kStyles)
                                   .append(EndOdtStyles(document.paper));
    return MakeOdt(content, styles);
}

}  // namespace lore
