#include "rtf/html_tags.h"

#include <algorithm>
#include <iterator>

namespace lore {

namespace {

using enum HtmlFlow;
using enum ScriptPosition;

constexpr HtmlTag kInlineTag{.name = ""};

constexpr HtmlTag kTags[] = {
    {.name = "a", .flow = kLink},
    {.name = "address", .flow = kBlock, .italic = true},
    {.name = "annotation", .flow = kSkipped},
    {.name = "annotation-xml", .flow = kSkipped},
    {.name = "article", .flow = kBlock},
    {.name = "aside", .flow = kBlock},
    {.name = "b", .bold = true},
    {.name = "big", .scale = 1.2},
    {.name = "blockquote", .flow = kBlock, .indent = 720},
    {.name = "br", .flow = kBreak},
    {.name = "button", .flow = kSkipped},
    {.name = "caption", .flow = kBlock},
    {.name = "center", .flow = kBlock},
    {.name = "cite", .italic = true},
    {.name = "code", .fixed_width = true},
    {.name = "dd", .flow = kBlock, .indent = 720},
    {.name = "del", .strike = true},
    {.name = "details", .flow = kBlock},
    {.name = "dfn", .italic = true},
    {.name = "div", .flow = kBlock},
    {.name = "dl", .flow = kBlock},
    {.name = "dt", .flow = kBlock, .bold = true},
    {.name = "em", .italic = true},
    {.name = "fieldset", .flow = kBlock},
    {.name = "figcaption", .flow = kBlock, .italic = true},
    {.name = "figure", .flow = kBlock},
    {.name = "font"},
    {.name = "footer", .flow = kBlock},
    {.name = "form", .flow = kBlock},
    {.name = "h1", .flow = kBlock, .bold = true, .half_points = 48},
    {.name = "h2", .flow = kBlock, .bold = true, .half_points = 36},
    {.name = "h3", .flow = kBlock, .bold = true, .half_points = 28},
    {.name = "h4", .flow = kBlock, .bold = true, .half_points = 24},
    {.name = "h5", .flow = kBlock, .bold = true, .half_points = 22},
    {.name = "h6", .flow = kBlock, .bold = true, .half_points = 20},
    {.name = "head", .flow = kSkipped},
    {.name = "header", .flow = kBlock},
    {.name = "hr", .flow = kRule},
    {.name = "i", .italic = true},
    {.name = "iframe", .flow = kSkipped},
    {.name = "img", .flow = kPicture},
    {.name = "ins", .underline = true},
    {.name = "kbd", .fixed_width = true},
    {.name = "legend", .flow = kBlock},
    {.name = "li", .flow = kItem},
    {.name = "main", .flow = kBlock},
    {.name = "nav", .flow = kBlock},
    {.name = "noscript", .flow = kSkipped},
    {.name = "object", .flow = kSkipped},
    {.name = "ol", .flow = kNumberedList},
    {.name = "p", .flow = kBlock},
    {.name = "pre", .flow = kBlock, .fixed_width = true, .keeps_blanks = true},
    {.name = "s", .strike = true},
    {.name = "samp", .fixed_width = true},
    {.name = "script", .flow = kSkipped},
    {.name = "section", .flow = kBlock},
    {.name = "select", .flow = kSkipped},
    {.name = "small", .scale = 1 / 1.2},
    {.name = "strike", .strike = true},
    {.name = "strong", .bold = true},
    {.name = "style", .flow = kSkipped},
    {.name = "sub", .position = kSubscript},
    {.name = "summary", .flow = kBlock},
    {.name = "sup", .position = kSuperscript},
    {.name = "svg", .flow = kSkipped},
    {.name = "table", .flow = kTable},
    {.name = "td", .flow = kCell},
    {.name = "template", .flow = kSkipped},
    {.name = "textarea", .flow = kSkipped},
    {.name = "th", .flow = kCell, .bold = true},
    {.name = "title", .flow = kSkipped},
    {.name = "tr", .flow = kRow},
    {.name = "tt", .fixed_width = true},
    {.name = "u", .underline = true},
    {.name = "ul", .flow = kBulletList},
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
