#pragma once

#include <string_view>
#include <unordered_map>

#include "rtf/document.h"

namespace lore {

/// Builds a document from front to back. Call Add... for the contents of a paragraph, then one End...; Finish ends it.
class DocumentBuilder {
public:
    /// The index for CharFormat::font or CharFormat::link; the same name gives the same index.
    int32_t Font(std::string_view name);
    int32_t Link(std::string_view target);

    /// `utf8` may hold line feeds, which are line breaks within the paragraph.
    void AddText(std::string_view utf8, const CharFormat& format);
    /// A page, column or section break.
    void AddBreak(RunKind kind, const CharFormat& format);
    void AddPicture(Picture picture, const CharFormat& format);
    void AddKept(std::string rtf);

    void EndParagraph(const ParagraphFormat& format);
    void EndCell(const ParagraphFormat& format);
    /// Ends a table row; `level` is above 1 for a table within a cell, whose rows end before the outer row.
    void EndRow(const RowFormat& row, const ParagraphFormat& format, int level = 1);
    /// For the paragraphs of a cell that more paragraphs of the same cell follow.
    void EndParagraphInCell(const ParagraphFormat& format);

    /// The document. When the last call was EndParagraph, that paragraph is the last one, otherwise what was added
    /// since is, even if that is nothing. The builder is empty afterwards.
    Document Finish(const ParagraphFormat& last = {});

private:
    friend class DocumentReader;

    void AddRun(size_t length, const CharFormat& format, RunKind kind, int32_t picture);
    void End(ParagraphEnd ended_by, const ParagraphFormat& format, bool in_table);

    Document document_;
    std::unordered_map<std::string, int32_t> fonts_;
    std::unordered_map<std::string, int32_t> links_;
};

}  // namespace lore
