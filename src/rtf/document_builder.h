#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "rtf/document.h"

namespace lore {

/// Builds a document from front to back: Add... for the contents of a paragraph, then one End...; Finish ends it.
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

    /// Ends a paragraph. `level`: 0 outside tables, else 1, or above 1 in a table within a cell, up to 8.
    void EndParagraph(const ParagraphFormat& format, int level = 0);
    /// Ends the last paragraph of a cell.
    void EndCell(const ParagraphFormat& format, int level = 1);
    /// Takes back the end of a paragraph of the open cell at this level, if nothing has come since. Gives its format;
    /// another end has to follow.
    std::optional<ParagraphFormat> TakeBackEnd(int level);
    /// Ends a table row behind its last cell.
    void EndRow(const RowFormat& row, const ParagraphFormat& format, int level = 1);

    /// The document. `dropLastEnd`: the last EndParagraph ended the last paragraph; otherwise what was added since is
    /// the last one, even if that is nothing. The builder is as new afterwards.
    Document Finish(const ParagraphFormat& last, bool dropLastEnd);

    /// About the bytes that WriteRtf makes at the least of what was added, texts and pictures not counted.
    size_t LeastSize() const { return leastSize_; }

    /// The fonts, number by number, for those who read them from a file.
    Document& Unfinished() { return document_; }

private:
    struct OpenRow {
        int32_t row = 0;
        int32_t cell = 0;
    };

    void AddRun(size_t length, const CharFormat& format, RunKind kind, int32_t picture);
    bool EndsWithParagraph() const;
    void End(ParagraphEnd endedBy, const ParagraphFormat& format, int level);
    void OpenRows(int level);

    Document document_;
    uint32_t paragraphBegin_ = 0;
    uint32_t firstRun_ = 0;
    size_t leastSize_ = 0;
    std::vector<OpenRow> openRows_;  ///< one for each level of tables that the text is in
    std::unordered_map<std::string, int32_t> fonts_;
    std::unordered_map<std::string, int32_t> links_;
};

}  // namespace lore
