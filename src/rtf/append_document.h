#pragma once

#include "rtf/document_builder.h"

namespace lore {

/// Appends the paragraphs of a document, the last one ended. Footnotes and other kept groups stay behind: they speak of
/// tables of their own file. Lists count apart from those that were appended before.
void AppendDocument(DocumentBuilder& builder, const Document& document);

}  // namespace lore
