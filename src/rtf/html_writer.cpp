#include "rtf/html_writer.h"

#include <algorithm>

#include "base/base64.h"
#include "base/text.h"
#include "rtf/document_walk.h"
#include "rtf/markup.h"

namespace lore {

namespace {

constexpr int kPageHalfPoints = 24;

constexpr std::string_view kHead =
    R"(<!DOCTYPE html>
<html>
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>)";
constexpr std::string_view kStyles =
    R"(</title>
<style>
@media screen { body { max-width: 44em; margin: 2em auto; padding: 0 1em; } img { max-width: 100%; height: auto; } }
body { font-family: "Times New Roman", "Liberation Serif", serif; font-size: 12pt; }
p { margin: 0; white-space: pre-wrap; overflow-wrap: anywhere; }
li { white-space: pre-wrap; }
table { border-collapse: collapse; }
td { vertical-align: top; padding: 2px 4px; }
</style>
</head>
<body>
)";
constexpr std::string_view kFoot = "</body>\n</html>\n";

std::string Pixels(int twips) {
    return std::to_string(twips / kTwipsPerPixel) + "px";
}

/// The declarations of a style attribute.
class Style {
public:
    Style& Add(std::string_view name, std::string_view value) {
        text_.append(text_.empty() ? "" : ";").append(name).append(":").append(value);
        return *this;
    }
    /// As an attribute behind a tag's name; nothing without declarations.
    std::string Attribute() const {
        if (text_.empty())
            return {};
        std::string attribute = " style=\"";
        AppendEscaped(attribute, text_);
        return attribute + '"';
    }

private:
    std::string text_;
};

std::string_view ListType(const ParagraphFormat& format) {
    constexpr std::string_view kBullets[] = {"disc", "circle", "square"};
    constexpr std::string_view kNumbers[] = {"",           "", "decimal", "lower-alpha", "upper-alpha", "lower-roman",
                                             "upper-roman"};
    return format.list == ListKind::Bullet ? kBullets[format.listLevel % 3]
                                           : kNumbers[static_cast<size_t>(format.list)];
}

class HtmlWriter : public DocumentVisitor {
public:
    HtmlWriter(const Document& document, std::string& html) : document_(document), html_(html) {}

    void Paragraph(size_t index, int number) override {
        const ParagraphFormat& format = document_.paragraphs[index].format;
        if (format.list != ListKind::None)
            return Item(index, number);
        CloseLists(0);
        html_.append("<p").append(Attributes(format, true)).append(">");
        Runs(index);
        html_ += "</p>\n";
    }
    void BeginTable(const TableGrid& grid) override {
        CloseLists(0);
        grid_ = &grid;
        const int left = std::max(0, grid.edges.front());
        html_.append("<table cellspacing=\"0\"")
            .append(Style().Add("margin-left", Pixels(left)).Attribute())
            .append(">\n");
    }
    void EndTable() override {
        html_ += "</table>\n";
        grid_ = nullptr;
    }
    void BeginRow() override { html_ += "<tr>"; }
    void EndRow() override { html_ += "</tr>\n"; }
    void BeginCell(const TableCell& cell, const CellFormat& format) override {
        if (cell.covered)
            return;
        const auto column = static_cast<size_t>(cell.column);
        const auto behind = std::min(column + static_cast<size_t>(cell.columnSpan), grid_->edges.size() - 1);
        const int width = (grid_->edges[behind] - grid_->edges[column]) / kTwipsPerPixel;
        html_.append("<td width=\"").append(std::to_string(std::max(1, width))).append("\"");
        if (cell.columnSpan > 1)
            html_.append(" colspan=\"").append(std::to_string(cell.columnSpan)).append("\"");
        if (cell.rowSpan > 1)
            html_.append(" rowspan=\"").append(std::to_string(cell.rowSpan)).append("\"");
        html_.append(CellStyle(format)).append(">");
    }
    void EndCell(const TableCell& cell) override {
        CloseLists(0);
        if (!cell.covered)
            html_ += "</td>";
    }
    void Finish() { CloseLists(0); }

private:
    static std::string CellStyle(const CellFormat& format) {
        constexpr std::pair<CellBorder, std::string_view> kBorders[] = {{kBorderTop, "border-top"},
                                                                        {kBorderLeft, "border-left"},
                                                                        {kBorderBottom, "border-bottom"},
                                                                        {kBorderRight, "border-right"}};
        Style style;
        for (const auto& [border, name] : kBorders) {
            if (format.borders & border)
                style.Add(name, "1px solid #808080");
        }
        if (format.background)
            style.Add("background-color", MarkupColor(*format.background));
        return style.Attribute();
    }

    static std::string Attributes(const ParagraphFormat& format, bool indents) {
        constexpr std::string_view kAligns[] = {"", "center", "right", "justify"};
        Style style;
        // Items of lists are indented by their lists.
        const int left = format.rightToLeft ? format.rightIndent : format.leftIndent;
        const int right = format.rightToLeft ? format.leftIndent : format.rightIndent;
        if (indents && left > 0)
            style.Add("margin-left", Pixels(left));
        if (indents && right > 0)
            style.Add("margin-right", Pixels(right));
        if (indents && format.firstIndent != 0)
            style.Add("text-indent", Pixels(std::max<int>(format.firstIndent, -format.leftIndent)));
        if (format.spaceBefore > 0)
            style.Add("margin-top", Pixels(format.spaceBefore));
        if (format.spaceAfter > 0)
            style.Add("margin-bottom", Pixels(format.spaceAfter));
        if (format.align != ParagraphAlign::Left)
            style.Add("text-align", kAligns[static_cast<size_t>(format.align)]);
        if (format.lineMultiple && format.lineSpacing > 240)
            style.Add("line-height", std::to_string(format.lineSpacing * 100 / 240) + "%");
        return (format.rightToLeft ? " dir=\"rtl\"" : "") + style.Attribute();
    }

    void Item(size_t index, int number) {
        const ParagraphFormat& format = document_.paragraphs[index].format;
        const size_t depth = size_t{format.listLevel} + 1;
        const bool goesOn = open_.size() >= depth && open_[depth - 1] == std::pair(format.listId, format.list);
        CloseLists(goesOn ? depth : std::min(open_.size(), depth - 1));
        if (goesOn)
            html_ += "</li>\n";
        while (open_.size() < depth) {
            const bool ordered = format.list != ListKind::Bullet;
            html_.append(ordered ? "<ol" : "<ul");
            if (ordered && number != 1 && open_.size() + 1 == depth)
                html_.append(" start=\"").append(std::to_string(number)).append("\"");
            html_.append(Style().Add("list-style-type", ListType(format)).Add("margin", "0").Attribute()).append(">");
            open_.emplace_back(format.listId, format.list);
            if (open_.size() < depth)
                html_ += "<li style=\"list-style-type:none\">";
        }
        html_.append("<li").append(Attributes(format, false)).append(">");
        Runs(index);
    }
    void CloseLists(size_t depth) {
        for (; open_.size() > depth; open_.pop_back())
            html_.append(open_.back().second == ListKind::Bullet ? "</li></ul>\n" : "</li></ol>\n");
    }

    bool IsBehindLastTable(size_t index) const {
        return index > 0 && index + 1 == document_.paragraphs.size() &&
               document_.paragraphs[index - 1].endedBy == ParagraphEnd::Row;
    }
    void Runs(size_t index) {
        const auto runs = RunsOf(document_, index);
        // Otherwise it would have no height, which is right for the one that every table at the end has behind it.
        if (runs.empty() && !IsBehindLastTable(index))
            html_ += "<br>";
        for (const TextRun& run : runs) {
            if (run.kind == RunKind::Text)
                Text(run);
            else if (run.kind == RunKind::Picture)
                Picture(run);
            else if (run.kind == RunKind::PageBreak && open_.empty() && !grid_)
                html_ += "</p>\n<p style=\"page-break-before:always\">";
            else
                html_ += "<br>";
        }
    }

    void Text(const TextRun& run) {
        const std::string_view link = SafeLinkOf(document_, run.format);
        if (!link.empty()) {
            html_ += "<a href=\"";
            AppendEscaped(html_, link);
            html_ += "\">";
        }
        const std::string style = RunStyle(run.format).Attribute();
        if (!style.empty())
            html_.append("<span").append(style).append(">");
        Lines(TextOf(document_, run));
        if (!style.empty())
            html_ += "</span>";
        if (!link.empty())
            html_ += "</a>";
    }

    void Lines(std::string_view text) {
        for (size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
            AppendEscaped(html_, text.substr(0, end));
            html_ += "<br>";
            text.remove_prefix(end + 1);
        }
        AppendEscaped(html_, text);
    }

    Style RunStyle(const CharFormat& format) const {
        Style style;
        if (const std::string_view font = FontNameOf(document_, format); !font.empty()) {
            std::string name(font);
            std::erase_if(name, [](char c) { return c == '\'' || c == '"' || c == '\\'; });
            style.Add("font-family", "'" + name + "'");
        }
        if (format.halfPoints != kPageHalfPoints)
            style.Add("font-size", std::to_string(format.halfPoints / 2) + (format.halfPoints % 2 ? ".5pt" : "pt"));
        if (format.bold)
            style.Add("font-weight", "bold");
        if (format.italic)
            style.Add("font-style", "italic");
        if (format.underline || format.strike)
            style.Add("text-decoration", format.underline && format.strike ? "underline line-through"
                                         : format.strike                   ? "line-through"
                                                                           : "underline");
        if (format.smallCaps || format.allCaps)
            format.allCaps ? style.Add("text-transform", "uppercase") : style.Add("font-variant", "small-caps");
        if (format.position != ScriptPosition::Baseline)
            style.Add("vertical-align", format.position == ScriptPosition::Superscript ? "super" : "sub");
        if (format.color)
            style.Add("color", MarkupColor(*format.color));
        if (format.background)
            style.Add("background-color", MarkupColor(*format.background));
        return style;
    }

    void Picture(const TextRun& run) {
        if (run.picture < 0 || static_cast<size_t>(run.picture) >= document_.pictures.size())
            return;
        const lore::Picture& picture = document_.pictures[static_cast<size_t>(run.picture)];
        if (picture.kind != PictureKind::Png && picture.kind != PictureKind::Jpeg) {
            html_ += "[picture]";
            return;
        }
        const PictureTwips size = SizeOnPaper(picture);
        html_.append("<img alt=\"\" width=\"").append(std::to_string(size.width / kTwipsPerPixel));
        html_.append("\" height=\"").append(std::to_string(size.height / kTwipsPerPixel));
        html_.append("\" src=\"data:image/").append(picture.kind == PictureKind::Png ? "png" : "jpeg");
        html_ += ";base64,";
        AppendBase64(html_, picture.bytes);
        html_ += "\">";
    }

    const Document& document_;
    std::string& html_;
    const TableGrid* grid_ = nullptr;
    std::vector<std::pair<int32_t, ListKind>> open_;  ///< the lists around the next item, outermost first
};

}  // namespace

std::string WriteHtml(const Document& document, std::string_view title) {
    std::string html(kHead);
    AppendEscaped(html, title);
    html += kStyles;
    HtmlWriter writer(document, html);
    WalkDocument(document, writer);
    writer.Finish();
    return html.append(kFoot);
}

PictureTwips SizeOnPaper(const Picture& picture) {
    static constexpr int64_t kMostTwips = 30'000;
    const bool metric = picture.kind == PictureKind::Wmf || picture.kind == PictureKind::Emf;
    const auto side = [metric](int32_t goal, int32_t stated, int32_t scale) {
        const int64_t natural = metric ? int64_t{stated} * 1440 / 2540 : int64_t{stated} * kTwipsPerPixel;
        const int64_t length = (goal > 0 ? goal : natural) * (scale > 0 ? scale : 100) / 100;
        return static_cast<int32_t>(std::clamp<int64_t>(length, kTwipsPerPixel, kMostTwips));
    };
    return {side(picture.goalWidth, picture.width, picture.scaleX),
            side(picture.goalHeight, picture.height, picture.scaleY)};
}

std::string_view FontNameOf(const Document& document, const CharFormat& format) {
    const int32_t font = format.font >= 0 ? format.font : document.defaultFont;
    return font >= 0 && static_cast<size_t>(font) < document.fonts.size()
               ? std::string_view(document.fonts[static_cast<size_t>(font)].name)
               : std::string_view();
}

std::string_view SafeLinkOf(const Document& document, const CharFormat& format) {
    if (format.link < 0 || static_cast<size_t>(format.link) >= document.links.size())
        return {};
    const std::string_view link = Trim(document.links[static_cast<size_t>(format.link)]);
    return HasOpenScheme(link) ? link : std::string_view();
}

}  // namespace lore
