#pragma once

#include <cstddef>
#include <vector>

#include "rtf/document.h"
#include "rtf/table_grid.h"

namespace lore {

/// Is told the contents of a document in their order. Paragraphs of a table within a cell come as plain ones of that
/// cell; rows without cells come as plain paragraphs.
class DocumentVisitor {
public:
    virtual ~DocumentVisitor() = default;
    /// `index` in Document::paragraphs; `number` counts the items of its list, 0 for a paragraph that is none.
    virtual void Paragraph(size_t index, int number) = 0;
    virtual void BeginTable(const TableGrid& grid) = 0;
    virtual void EndTable() = 0;
    virtual void BeginRow() = 0;
    virtual void EndRow() = 0;
    /// Covered cells come too, without contents.
    virtual void BeginCell(const TableCell& cell, const CellFormat& format) = 0;
    virtual void EndCell(const TableCell& cell) = 0;
};

void WalkDocument(const Document& document, DocumentVisitor& visitor);

}  // namespace lore
