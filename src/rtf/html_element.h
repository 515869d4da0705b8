#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/xml_callbacks.h"
#include "rtf/document_builder.h"
#include "rtf/html_tags.h"

namespace lore {

/// The attributes of an element, names and values in turn.
class HtmlAttributes {
public:
    explicit HtmlAttributes(const xmlChar** list) : list_(list) {}
    /// Empty for an attribute that isn't there.
    std::string_view operator[](std::string_view name) const;
    bool Has(std::string_view name) const { return Find(name) != nullptr; }

private:
    const xmlChar** Find(std::string_view name) const;

    const xmlChar** list_;
};

/// An element that is open, with the look of what stands in it.
struct HtmlElement {
    std::string name;
    const HtmlTag* tag = &FindHtmlTag({});
    CharFormat chars;
    ParagraphFormat paragraph;
    std::optional<ListKind> ownList;  ///< what its own style says
    bool skipped = false;
    bool keepsBlanks = false;
    bool inHeading = false;
    bool isBlock = false;  ///< its own style makes it one
};

/// An element that begins within another one. Fonts are added to the builder's.
HtmlElement ElementWithin(const HtmlElement& around, std::string_view name, const HtmlAttributes& attributes,
                          DocumentBuilder& builder);

}  // namespace lore
