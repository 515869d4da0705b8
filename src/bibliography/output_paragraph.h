#pragma once

#include "bibliography/output_document.h"
#include "rtf/document_builder.h"

namespace lore {

/// Of links on paper and in files.
inline constexpr TextColor kLinkColor = {5, 99, 193};

/// Adds the text of an entry to the paragraph that is being built: `plain` with its emphasis, links alive and coloured.
void AddEntryText(DocumentBuilder& builder, const BibliographyEntry& entry, const CharFormat& plain);

/// The paragraph of an entry with its hanging indent.
ParagraphFormat EntryParagraph(const BibliographyEntry& entry, int twipsOfSpace);

}  // namespace lore
