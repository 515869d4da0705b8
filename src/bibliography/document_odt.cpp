#include "bibliography/document_odt.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <set>
#include <vector>

#include "bibliography/odt_package.h"
#include "rtf/document_walk.h"
#include "rtf/html_writer.h"
#include "rtf/markup.h"

namespace lore {

namespace {

constexpr int kListStep = 360;  // twips
constexpr int kListLevels = 9;

constexpr std::string_view kStyles =
    R"(<office:styles>
<style:default-style style:family="paragraph">
<style:text-properties style:font-name="Times New Roman" fo:font-size="12pt" style:font-size-asian="12pt" style:font-size-complex="12pt"/>
</style:default-style>
<style:style style:name="Standard" style:family="paragraph" style:class="text"/>
</office:styles>
)";

/// The styles of one family, each look once.
class StyleTable {
public:
    StyleTable(std::string_view family, char letter) : family_(family), letter_(letter) {}

    /// The name of the style with these properties, which stand as elements.
    std::string NameOf(const std::string& properties) {
        const auto [found, added] = names_.try_emplace(properties, letter_ + std::to_string(names_.size() + 1));
        return found->second;
    }
    void Write(std::string& xml) const {
        for (const auto& [properties, name] : names_)
            xml.append("<style:style style:name=\"")
                .append(name)
                .append("\" style:family=\"")
                .append(family_)
                .append("\">")
                .append(properties)
                .append("</style:style>\n");
    }

private:
    std::string_view family_;
    char letter_;
    std::map<std::string, std::string> names_;
};

/// Elements of properties, attribute by attribute.
class Properties {
public:
    explicit Properties(std::string_view element) { xml_.append("<style:").append(element).append("-properties"); }
    Properties& Add(std::string_view name, std::string_view value) {
        xml_.append(" ").append(name).append("=\"");
        AppendEscaped(xml_, value);
        xml_ += '"';
        return *this;
    }
    Properties& AddForAllScripts(std::string_view name, std::string_view value) {
        AppendForAllScripts(xml_, name, value);
        return *this;
    }
    std::string Xml() const { return xml_ + "/>"; }

private:
    std::string xml_;
};

class OdtWriter : public DocumentVisitor {
public:
    OdtWriter(const Document& document, const Paper& paper) : document_(document), paper_(paper) {}

    void Paragraph(size_t index, int number) override {
        const ParagraphFormat& format = document_.paragraphs[index].format;
        const int levels = format.list == ListKind::None ? 0 : std::min(format.listLevel + 1, kListLevels);
        for (int level = 1; level <= levels; ++level) {
            body_.append("<text:list");
            if (level == 1)
                body_.append(" text:style-name=\"").append(ListName(format.list)).append("\"");
            body_ += "><text:list-item";
            if (level == levels && format.list != ListKind::Bullet)
                body_.append(" text:start-value=\"").append(std::to_string(number)).append("\"");
            body_ += ">";
        }
        Begin(format, false);
        Runs(index, format);
        body_ += "</text:p>";
        for (int level = 0; level < levels; ++level)
            body_ += "</text:list-item></text:list>";
        body_ += "\n";
    }
    void BeginTable(const TableGrid& grid) override {
        grid_ = &grid;
        Properties table("table");
        table.Add("style:width", OdtPoints(grid.edges.back() - grid.edges.front())).Add("table:align", "left");
        table.Add("fo:margin-left", OdtPoints(std::max(0, grid.edges.front()))).Add("table:border-model", "collapsing");
        body_.append("<table:table table:style-name=\"").append(tables_.NameOf(table.Xml())).append("\">\n");
        for (int column = 0; column < grid.Columns(); ++column) {
            const int width = EdgeAt(column + 1) - EdgeAt(column);
            Properties properties("table-column");
            properties.Add("style:column-width", OdtPoints(width));
            body_.append("<table:table-column table:style-name=\"")
                .append(columns_.NameOf(properties.Xml()))
                .append("\"/>");
        }
    }
    void EndTable() override {
        body_ += "</table:table>\n";
        grid_ = nullptr;
    }
    void BeginRow() override {
        body_ += "<table:table-row>";
        column_ = 0;
    }
    void EndRow() override {
        for (; column_ < grid_->Columns(); ++column_)
            body_ += "<table:table-cell/>";
        body_ += "</table:table-row>\n";
    }
    void BeginCell(const TableCell& cell, const CellFormat& format) override {
        if (cell.covered)
            return;
        for (; column_ < cell.column; ++column_)
            body_ += "<table:covered-table-cell/>";
        body_.append("<table:table-cell table:style-name=\"")
            .append(cells_.NameOf(CellProperties(format)))
            .append("\"");
        if (cell.columnSpan > 1)
            body_.append(" table:number-columns-spanned=\"").append(std::to_string(cell.columnSpan)).append("\"");
        if (cell.rowSpan > 1)
            body_.append(" table:number-rows-spanned=\"").append(std::to_string(cell.rowSpan)).append("\"");
        body_ += ">";
    }
    void EndCell(const TableCell& cell) override {
        if (cell.covered) {
            // One that is part of a cell above; those that lengthen a cell of this row were passed with it.
            for (const int behind = cell.column + cell.columnSpan; column_ < behind && cell.column >= column_;
                 ++column_)
                body_ += "<table:covered-table-cell/>";
            return;
        }
        body_ += "</table:table-cell>";
        ++column_;
        for (const int behind = cell.column + cell.columnSpan; column_ < behind; ++column_)
            body_ += "<table:covered-table-cell/>";
    }

    std::optional<std::string> Finish() {
        std::string content = BeginOdtPart("document-content");
        content.append(FontFaces()).append("<office:automatic-styles>\n");
        for (const StyleTable* const table : {&texts_, &paragraphs_, &tables_, &columns_, &cells_})
            table->Write(content);
        for (const ListKind kind : lists_)
            WriteListStyle(content, kind);
        content += "</office:automatic-styles>\n<office:body>\n<office:text>\n";
        content.append(body_).append("</office:text>\n</office:body>\n</office:document-content>\n");
        fonts_.insert("Times New Roman");
        const std::string styles =
            BeginOdtPart("document-styles").append(FontFaces()).append(kStyles).append(EndOdtStyles(paper_));
        return MakeOdt(content, styles, pictures_);
    }

private:
    int EdgeAt(int column) const { return grid_->edges[static_cast<size_t>(column)]; }

    static std::string CellProperties(const CellFormat& format) {
        constexpr std::pair<CellBorder, std::string_view> kBorders[] = {{kBorderTop, "fo:border-top"},
                                                                        {kBorderLeft, "fo:border-left"},
                                                                        {kBorderBottom, "fo:border-bottom"},
                                                                        {kBorderRight, "fo:border-right"}};
        Properties properties("table-cell");
        properties.Add("fo:padding", "3pt");
        for (const auto& [border, name] : kBorders)
            properties.Add(name, format.borders & border ? "0.5pt solid #808080" : "none");
        if (format.background)
            properties.Add("fo:background-color", MarkupColor(*format.background));
        return properties.Xml();
    }

    void Begin(const ParagraphFormat& format, bool newPage) {
        constexpr std::string_view kAligns[] = {"start", "center", "end", "justify"};
        Properties properties("paragraph");
        if (format.rightToLeft)
            properties.Add("style:writing-mode", "rl-tb");
        if (format.list == ListKind::None) {
            const int left = format.rightToLeft ? format.rightIndent : format.leftIndent;
            const int right = format.rightToLeft ? format.leftIndent : format.rightIndent;
            properties.Add("fo:margin-left", OdtPoints(std::max(0, left)));
            properties.Add("fo:margin-right", OdtPoints(std::max(0, right)));
            properties.Add("fo:text-indent", OdtPoints(format.firstIndent));
        }
        properties.Add("fo:margin-top", OdtPoints(std::max<int>(0, format.spaceBefore)));
        properties.Add("fo:margin-bottom", OdtPoints(std::max<int>(0, format.spaceAfter)));
        properties.Add("fo:text-align", kAligns[static_cast<size_t>(format.align)]);
        if (format.lineMultiple && format.lineSpacing > 0)
            properties.Add("fo:line-height", std::to_string(format.lineSpacing * 100 / 240) + "%");
        if (newPage)
            properties.Add("fo:break-before", "page");
        body_.append("<text:p text:style-name=\"").append(paragraphs_.NameOf(properties.Xml())).append("\">");
        behindBlank_ = true;
    }

    void Runs(size_t index, const ParagraphFormat& format) {
        for (const TextRun& run : RunsOf(document_, index)) {
            if (run.kind == RunKind::Picture) {
                Picture(run);
            } else if (run.kind == RunKind::Text) {
                Text(run);
            } else if (run.kind == RunKind::PageBreak && !grid_ && format.list == ListKind::None) {
                body_ += "</text:p>\n";
                Begin(format, true);
            } else {
                body_ += "<text:line-break/>";
            }
        }
    }

    void Text(const TextRun& run) {
        const std::string_view link = SafeLinkOf(document_, run.format);
        if (!link.empty()) {
            body_ += "<text:a xlink:type=\"simple\" xlink:href=\"";
            AppendEscaped(body_, link);
            body_ += "\">";
        }
        body_.append("<text:span text:style-name=\"").append(texts_.NameOf(TextProperties(run.format))).append("\">");
        AppendOdtText(body_, TextOf(document_, run), behindBlank_);
        body_.append("</text:span>").append(link.empty() ? "" : "</text:a>");
    }

    std::string TextProperties(const CharFormat& format) {
        Properties properties("text");
        if (const std::string font(FontNameOf(document_, format)); !font.empty()) {
            fonts_.insert(font);
            properties.Add("style:font-name", font);
        }
        properties.AddForAllScripts("font-size", OdtPoints(format.halfPoints * 10));
        if (format.bold)
            properties.AddForAllScripts("font-weight", "bold");
        if (format.italic)
            properties.AddForAllScripts("font-style", "italic");
        if (format.underline)
            properties.Add("style:text-underline-style", "solid").Add("style:text-underline-width", "auto");
        if (format.strike)
            properties.Add("style:text-line-through-style", "solid");
        if (format.smallCaps)
            properties.Add("fo:font-variant", "small-caps");
        if (format.allCaps)
            properties.Add("fo:text-transform", "uppercase");
        if (format.position != ScriptPosition::Baseline)
            properties.Add("style:text-position",
                           format.position == ScriptPosition::Superscript ? "super 58%" : "sub 58%");
        if (format.color)
            properties.Add("fo:color", MarkupColor(*format.color));
        if (format.background)
            properties.Add("fo:background-color", MarkupColor(*format.background));
        return properties.Xml();
    }

    void Picture(const TextRun& run) {
        if (run.picture < 0 || static_cast<size_t>(run.picture) >= document_.pictures.size())
            return;
        const lore::Picture& picture = document_.pictures[static_cast<size_t>(run.picture)];
        const bool png = picture.kind == PictureKind::Png;
        if (!png && picture.kind != PictureKind::Jpeg) {
            body_ += "[picture]";
            return;
        }
        const std::string name = "Pictures/" + std::to_string(pictures_.size() + 1) + (png ? ".png" : ".jpg");
        pictures_.push_back({name, png ? "image/png" : "image/jpeg", picture.bytes});
        const PictureTwips size = SizeOnPaper(picture);
        body_.append("<draw:frame text:anchor-type=\"as-char\" svg:width=\"").append(OdtPoints(size.width));
        body_.append("\" svg:height=\"").append(OdtPoints(size.height)).append("\"><draw:image xlink:href=\"");
        body_.append(name).append(
            "\" xlink:type=\"simple\" xlink:show=\"embed\" xlink:actuate=\"onLoad\"/></draw:frame>");
        behindBlank_ = false;
    }

    std::string ListName(ListKind kind) {
        lists_.insert(kind);
        return "L" + std::to_string(static_cast<int>(kind));
    }

    static void WriteListStyle(std::string& xml, ListKind kind) {
        constexpr std::string_view kBullets[] = {"\u2022", "\u25e6", "\u25aa"};
        constexpr std::string_view kNumbers[] = {"", "", "1", "a", "A", "i", "I"};
        xml.append("<text:list-style style:name=\"L").append(std::to_string(static_cast<int>(kind))).append("\">\n");
        for (int level = 1; level <= kListLevels; ++level) {
            const std::string_view element =
                kind == ListKind::Bullet ? "text:list-level-style-bullet" : "text:list-level-style-number";
            xml.append("<").append(element).append(" text:level=\"").append(std::to_string(level)).append("\"");
            if (kind == ListKind::Bullet)
                xml.append(" text:bullet-char=\"").append(kBullets[(level - 1) % 3]).append("\">");
            else
                xml.append(" style:num-format=\"")
                    .append(kNumbers[static_cast<size_t>(kind)])
                    .append("\" style:num-suffix=\".\">");
            const std::string left = OdtPoints(kListStep * level);
            xml.append("<style:list-level-properties text:list-level-position-and-space-mode=\"label-alignment\">")
                .append("<style:list-level-label-alignment text:label-followed-by=\"listtab\" ")
                .append("text:list-tab-stop-position=\"" + left + "\" fo:text-indent=\"-" + OdtPoints(kListStep))
                .append("\" fo:margin-left=\"" + left + "\"/></style:list-level-properties></")
                .append(element)
                .append(">\n");
        }
        xml += "</text:list-style>\n";
    }

    std::string FontFaces() const {
        std::string xml = "<office:font-face-decls>\n";
        for (const std::string& font : fonts_) {
            std::string quoted = font;
            std::erase(quoted, '\'');
            xml += "<style:font-face style:name=\"";
            AppendEscaped(xml, font);
            xml += "\" svg:font-family=\"'";
            AppendEscaped(xml, quoted);
            xml += "'\"/>\n";
        }
        return xml + "</office:font-face-decls>\n";
    }

    const Document& document_;
    const Paper& paper_;
    std::string body_;
    StyleTable texts_{"text", 'T'}, paragraphs_{"paragraph", 'P'}, tables_{"table", 'A'}, columns_{"table-column", 'C'},
        cells_{"table-cell", 'E'};
    std::set<ListKind> lists_;
    std::set<std::string> fonts_;
    std::vector<OdtPicture> pictures_;
    const TableGrid* grid_ = nullptr;
    int column_ = 0;  ///< the next one of the row
    bool behindBlank_ = true;
};

}  // namespace

std::optional<std::string> DocumentAsOdt(const Document& document, const Paper& paper) {
    OdtWriter writer(document, paper);
    WalkDocument(document, writer);
    return writer.Finish();
}

}  // namespace lore
