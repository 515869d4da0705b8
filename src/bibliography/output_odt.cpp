#include <array>
#include <set>
#include <utility>

#include "bibliography/output_markup.h"
#include "bibliography/output_writers.h"
#include "bibliography/output_zip.h"

namespace lore {

namespace {

constexpr int kPointsOfSpace = 6;
constexpr std::string_view kMimeType = "application/vnd.oasis.opendocument.text";

constexpr std::string_view kManifest =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<manifest:manifest xmlns:manifest="urn:oasis:names:tc:opendocument:xmlns:manifest:1.0" manifest:version="1.3">
<manifest:file-entry manifest:full-path="/" manifest:version="1.3" manifest:media-type="application/vnd.oasis.opendocument.text"/>
<manifest:file-entry manifest:full-path="content.xml" manifest:media-type="text/xml"/>
<manifest:file-entry manifest:full-path="styles.xml" manifest:media-type="text/xml"/>
</manifest:manifest>
)";

constexpr std::string_view kNamespaces = R"( xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0")"
                                         R"( xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0")"
                                         R"( xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0")"
                                         R"( xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0")"
                                         R"( xmlns:svg="urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0")"
                                         R"( xmlns:xlink="http://www.w3.org/1999/xlink" office:version="1.3">)"
                                         "\n";

constexpr std::string_view kStyles =
    R"(<office:font-face-decls>
<style:font-face style:name="Serif" svg:font-family="'Liberation Serif', 'Times New Roman'" style:font-family-generic="roman"/>
</office:font-face-decls>
<office:styles>
<style:default-style style:family="paragraph">
<style:text-properties style:font-name="Serif" fo:font-size="12pt" style:font-size-asian="12pt" style:font-size-complex="12pt"/>
</style:default-style>
<style:style style:name="Standard" style:family="paragraph" style:class="text"/>
<style:style style:name="Bibliography" style:family="paragraph" style:parent-style-name="Standard" style:class="text">
<style:paragraph-properties fo:margin-top="0pt" fo:margin-bottom="6pt"/>
</style:style>
</office:styles>
<office:automatic-styles>
<style:page-layout style:name="Page">
<style:page-layout-properties fo:page-width="21cm" fo:page-height="29.7cm" style:print-orientation="portrait" fo:margin="2.5cm"/>
</style:page-layout>
</office:automatic-styles>
<office:master-styles>
<style:master-page style:name="Standard" style:page-layout-name="Page"/>
</office:master-styles>
</office:document-styles>
)";

std::string Begin(std::string_view element) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<office:";
    return xml.append(element).append(kNamespaces);
}

std::string TextStyleName(int32_t kind) {
    return "E" + std::to_string(kind);
}

std::string ParagraphStyleName(int indentSpaces, bool rightToLeft) {
    return (rightToLeft ? "R" : "P") + std::to_string(indentSpaces);
}

/// A property for Western text and for the two other groups of scripts, which have their own.
void AppendForAllScripts(std::string& xml, std::string_view name, std::string_view value) {
    xml.append(" fo:").append(name).append("=\"").append(value).append("\"");
    for (const std::string_view scripts : {"-asian", "-complex"})
        xml.append(" style:").append(name).append(scripts).append("=\"").append(value).append("\"");
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

void AppendParagraphStyle(std::string& xml, int indentSpaces, bool rightToLeft) {
    const std::string points = std::to_string(indentSpaces * kPointsOfSpace) + "pt";
    xml.append("<style:style style:name=\"").append(ParagraphStyleName(indentSpaces, rightToLeft));
    xml.append("\" style:family=\"paragraph\" style:parent-style-name=\"Bibliography\"><style:paragraph-properties ");
    xml.append(rightToLeft ? "style:writing-mode=\"rl-tb\" fo:text-align=\"start\" fo:margin-right" : "fo:margin-left");
    xml.append("=\"").append(points).append("\" fo:text-indent=\"-").append(points).append("\"/></style:style>\n");
}

/// One paragraph. Blanks behind a blank, which the format would drop, become elements.
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
        WriteText(piece.text);
        if (piece.kind != kEmphasisNone)
            xml_ += "</text:span>";
        if (!piece.link.empty())
            xml_ += "</text:a>";
    }
    void WriteText(std::string_view text) {
        for (const char c : text) {
            if (c == ' ' && behindBlank_)
                xml_ += "<text:s/>";
            else
                AppendEscaped(xml_, {&c, 1});
            behindBlank_ = c == ' ';
        }
    }

    std::string& xml_;
    bool behindBlank_ = true;
};

std::string Content(const BibliographyDocument& document) {
    std::string xml = Begin("document-content");
    xml += "<office:automatic-styles>\n";
    for (int32_t kind = kItalic; kind <= kBoldItalicUnderline; ++kind)
        AppendTextStyle(xml, kind);
    std::set<std::pair<int, bool>> indents;
    for (const BibliographyEntry& entry : document.entries)
        indents.emplace(entry.indentSpaces, entry.rightToLeft);
    for (const auto& [indentSpaces, rightToLeft] : indents)
        AppendParagraphStyle(xml, indentSpaces, rightToLeft);
    xml += "</office:automatic-styles>\n<office:body>\n<office:text>\n";
    for (const BibliographyEntry& entry : document.entries)
        ParagraphWriter(xml).Write(entry);
    return xml.append("</office:text>\n</office:body>\n</office:document-content>\n");
}

}  // namespace

std::optional<std::string> BibliographyAsOdt(const BibliographyDocument& document) {
    const std::string content = Content(document);
    const std::string styles = Begin("document-styles").append(kStyles);
    const std::array<ZipMember, 4> members = {{{"mimetype", kMimeType, false},
                                               {"META-INF/manifest.xml", kManifest},
                                               {"content.xml", content},
                                               {"styles.xml", styles}}};
    return MakeZip(members);
}

}  // namespace lore
