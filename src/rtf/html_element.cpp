#include "rtf/html_element.h"

#include <algorithm>

#include "base/text.h"
#include "rtf/html_style.h"

namespace lore {

namespace {

constexpr char kFixedWidthFont[] = "Courier New";
constexpr TextColor kHighlight = {255, 255, 0};

void ApplyTag(HtmlElement& element, std::string_view size, DocumentBuilder& builder) {
    const HtmlTag& tag = *element.tag;
    CharFormat& chars = element.chars;
    chars.bold = chars.bold || tag.bold;
    chars.italic = chars.italic || tag.italic;
    chars.underline = chars.underline || tag.underline;
    chars.strike = chars.strike || tag.strike;
    if (tag.position != ScriptPosition::Baseline)
        chars.position = tag.position;
    chars.halfPoints = SizeIn(tag, size, chars.halfPoints);
    if (tag.fixedWidth)
        chars.font = builder.Font(kFixedWidthFont);
    if (tag.name == "mark")
        chars.background = kHighlight;
    element.keepsBlanks = element.keepsBlanks || tag.keepsBlanks;
    element.inHeading = element.inHeading || tag.IsHeading();
    element.paragraph.leftIndent = static_cast<int16_t>(std::min(element.paragraph.leftIndent + tag.indent, 7200));
}

void ApplyStyle(HtmlElement& element, const HtmlStyle& style) {
    CharFormat& chars = element.chars;
    GiveLook(style, chars);
    element.keepsBlanks = style.keepsBlanks.value_or(element.keepsBlanks);
    element.ownList = style.list;
    const bool isInline = element.tag->flow == HtmlFlow::Inline, isLink = element.tag->flow == HtmlFlow::Link;
    element.isBlock = style.display == HtmlDisplay::Block && (isInline || isLink);
    if (style.background && isInline)
        chars.background = style.background;
    // Of cells it says where their contents stand.
    if (style.position && (isInline || isLink))
        chars.position = *style.position;
}

/// The words of a heading may stand on a button that opens what is below it.
bool IsSkipped(const HtmlElement& element, const HtmlStyle& style, const HtmlAttributes& attributes) {
    if (element.tag->flow == HtmlFlow::Skipped && !(element.tag->name == "button" && element.inHeading))
        return true;
    return style.IsHidden() || (attributes.Has("hidden") && attributes["hidden"] != "until-found" && !style.display);
}

}  // namespace

std::string_view HtmlAttributes::operator[](std::string_view name) const {
    const xmlChar** const found = Find(name);
    return found == nullptr ? std::string_view() : View(found[1]);
}

const xmlChar** HtmlAttributes::Find(std::string_view name) const {
    for (const xmlChar** entry = list_; entry && *entry; entry += 2) {
        if (View(entry[0]) == name)
            return entry;
    }
    return nullptr;
}

HtmlElement ElementWithin(const HtmlElement& around, std::string_view name, const HtmlAttributes& attributes,
                          DocumentBuilder& builder) {
    HtmlElement element = around;
    element.name = name;
    element.tag = &FindHtmlTag(name);
    ApplyTag(element, attributes["size"], builder);
    const HtmlStyle style = ReadInlineStyle(attributes["style"], element.chars.halfPoints);
    ApplyStyle(element, style);
    if (const auto color = style.color ? style.color : ReadHtmlColor(attributes["color"]))
        element.chars.color = color;
    if (const std::string_view font = style.font.empty() ? attributes["face"] : style.font; !font.empty())
        element.chars.font = builder.Font(font.substr(0, font.find(',')));
    if (const auto align = style.align ? style.align : ReadHtmlAlign(attributes["align"]))
        element.paragraph.align = *align;
    if (name == "center")
        element.paragraph.align = ParagraphAlign::Center;
    if (const std::string_view direction = attributes["dir"]; !direction.empty())
        element.paragraph.rightToLeft = EqualNoCase(direction, "rtl");
    element.skipped = element.skipped || IsSkipped(element, style, attributes);
    return element;
}

}  // namespace lore
