#pragma once

#include "rtf/document_builder.h"

namespace lore {

/// Appends the paragraphs of a document, the last one ended. Footnotes and other kept groups stay behind: they speak of
/// tables of their own file. `firstList` is a number that no list of the builder has reached yet, and is so again
/// afterwards, so that lists count apart from those that were appended before.
void AppendDocument(DocumentBuilder& builder, const Document& document, int32_t& firstList);

}  // namespace lore
