#include "rtf/html_tags.h"

#include <algorithm>
#include <iterator>

namespace lore {

namespace {

using enum HtmlFlow;
using enum ScriptPosition;

constexpr HtmlTag kInlineTag{.name = ""};

constexpr HtmlTag kTags[] = {
    {.name = "a", .flow = Link},
    {.name = "address", .flow = Block, .italic = true},
    {.name = "annotation", .flow = Skipped},
    {.name = "annotation-xml", .flow = Skipped},
    {.name = "article", .flow = Block},
    {.name = "aside", .flow = Block},
    {.name = "b", .bold = true},
    {.name = "big", .scale = 1.2},
    {.name = "blockquote", .flow = Block, .indent = 720},
    {.name = "br", .flow = Break},
    {.name = "button", .flow = Skipped},
    {.name = "caption", .flow = Block},
    {.name = "center", .flow = Block},
    {.name = "cite", .italic = true},
    {.name = "code", .fixedWidth = true},
    {.name = "dd", .flow = Block, .indent = 720},
    {.name = "del", .strike = true},
    {.name = "details", .flow = Block},
    {.name = "dfn", .italic = true},
    {.name = "div", .flow = Block},
    {.name = "dl", .flow = Block},
    {.name = "dt", .flow = Block, .bold = true},
    {.name = "em", .italic = true},
    {.name = "fieldset", .flow = Block},
    {.name = "figcaption", .flow = Block, .italic = true},
    {.name = "figure", .flow = Block},
    {.name = "font"},
    {.name = "footer", .flow = Block},
    {.name = "form", .flow = Block},
    {.name = "h1", .flow = Block, .bold = true, .halfPoints = 48},
    {.name = "h2", .flow = Block, .bold = true, .halfPoints = 36},
    {.name = "h3", .flow = Block, .bold = true, .halfPoints = 28},
    {.name = "h4", .flow = Block, .bold = true, .halfPoints = 24},
    {.name = "h5", .flow = Block, .bold = true, .halfPoints = 22},
    {.name = "h6", .flow = Block, .bold = true, .halfPoints = 20},
    {.name = "head", .flow = Skipped},
    {.name = "header", .flow = Block},
    {.name = "hr", .flow = Rule},
    {.name = "i", .italic = true},
    {.name = "iframe", .flow = Skipped},
    {.name = "img", .flow = Picture},
    {.name = "ins", .underline = true},
    {.name = "kbd", .fixedWidth = true},
    {.name = "legend", .flow = Block},
    {.name = "li", .flow = Item},
    {.name = "main", .flow = Block},
    {.name = "mark"},
    {.name = "nav", .flow = Block},
    {.name = "noscript", .flow = Skipped},
    {.name = "object", .flow = Skipped},
    {.name = "ol", .flow = NumberedList},
    {.name = "p", .flow = Block},
    {.name = "pre", .flow = Block, .fixedWidth = true, .keepsBlanks = true},
    {.name = "s", .strike = true},
    {.name = "samp", .fixedWidth = true},
    {.name = "script", .flow = Skipped},
    {.name = "section", .flow = Block},
    {.name = "select", .flow = Skipped},
    {.name = "small", .scale = 1 / 1.2},
    {.name = "strike", .strike = true},
    {.name = "strong", .bold = true},
    {.name = "style", .flow = Skipped},
    {.name = "sub", .position = Subscript},
    {.name = "summary", .flow = Block},
    {.name = "sup", .position = Superscript},
    {.name = "svg", .flow = Skipped},
    {.name = "table", .flow = Table},
    {.name = "td", .flow = Cell},
    {.name = "template", .flow = Skipped},
    {.name = "textarea", .flow = Skipped},
    {.name = "th", .flow = Cell, .bold = true},
    {.name = "title", .flow = Skipped},
    {.name = "tr", .flow = Row},
    {.name = "tt", .fixedWidth = true},
    {.name = "u", .underline = true},
    {.name = "ul", .flow = BulletList},
    {.name = "var", .italic = true},
};
static_assert(std::is_sorted(std::begin(kTags), std::end(kTags),
                             [](const HtmlTag& a, const HtmlTag& b) { return a.name < b.name; }));

}  // namespace

const HtmlTag& FindHtmlTag(std::string_view name) {
    const auto* const found = std::lower_bound(std::begin(kTags), std::end(kTags), name,
                                               [](const HtmlTag& tag, std::string_view n) { return tag.name < n; });
    return found != std::end(kTags) && found->name == name ? *found : kInlineTag;
}

}  // namespace lore
