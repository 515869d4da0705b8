#pragma once

#include <memory>
#include <string>
#include <vector>

#include "rtf/document.h"

namespace lore {

// A text of the editor as values that no longer change: what a thread beside the window can turn into a document.

/// A stretch of a paragraph: text, a break, a picture, or a group that the document only keeps.
struct CapturedPiece {
    CharFormat format;
    RunKind kind = RunKind::Text;
    std::string text;                        ///< UTF-8
    std::shared_ptr<const Picture> picture;  ///< for RunKind::Picture
    std::shared_ptr<const std::string> kept;
};
using CapturedBlock = std::vector<CapturedPiece>;

/// One paragraph and how it ends.
struct CapturedParagraph {
    std::shared_ptr<const CapturedBlock> pieces;  ///< null for an empty one
    ParagraphFormat format;
    int level = 0;  ///< of tables, 0 outside
    ParagraphEnd end = ParagraphEnd::Paragraph;
    std::shared_ptr<const RowFormat> row;  ///< for ParagraphEnd::Row
};

/// The whole text. Copies share what its paragraphs hold.
struct CapturedNote {
    std::vector<CapturedParagraph> paragraphs;
    std::vector<DocumentFont> fonts;
    std::vector<std::string> links;
    int32_t codePage = 1252;
    int32_t defaultFont = -1;
};

/// The document of a captured text. The fonts, links and numbers of its formats are those of the text.
Document Assemble(const CapturedNote& note);

}  // namespace lore
