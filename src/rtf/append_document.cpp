#include "rtf/append_document.h"

#include <algorithm>
#include <cstdint>

namespace lore {

namespace {

class Appender {
public:
    Appender(DocumentBuilder& builder, const Document& document, int32_t firstList)
        : builder_(builder), document_(document), firstList_(firstList), nextList_(firstList) {}

    /// Gives the number after all lists.
    int32_t Run() {
        for (size_t i = 0; i < document_.paragraphs.size(); ++i) {
            for (const TextRun& run : RunsOf(document_, i))
                Add(run);
            End(document_.paragraphs[i]);
        }
        return nextList_;
    }

private:
    void Add(const TextRun& run) {
        const CharFormat format = Moved(run.format);
        if (run.kind == RunKind::Text)
            builder_.AddText(TextOf(document_, run), format);
        else if (run.kind != RunKind::Picture)
            builder_.AddBreak(run.kind, format);
        else if (run.picture >= 0 && static_cast<size_t>(run.picture) < document_.pictures.size())
            builder_.AddPicture(document_.pictures[static_cast<size_t>(run.picture)], format);
    }

    CharFormat Moved(CharFormat format) {
        const int32_t font = format.font >= 0 ? format.font : document_.defaultFont;
        const bool named = font >= 0 && static_cast<size_t>(font) < document_.fonts.size();
        format.font = named ? builder_.Font(document_.fonts[static_cast<size_t>(font)].name) : -1;
        const bool linked = format.link >= 0 && static_cast<size_t>(format.link) < document_.links.size();
        format.link = linked ? builder_.Link(document_.links[static_cast<size_t>(format.link)]) : -1;
        return format;
    }

    void End(const Paragraph& paragraph) {
        ParagraphFormat format = paragraph.format;
        if (format.list != ListKind::None) {
            constexpr int64_t kMost = INT32_MAX - 1;
            format.listId = static_cast<int32_t>(std::min(std::max<int64_t>(format.listId, 0) + firstList_, kMost));
            nextList_ = std::max(nextList_, format.listId + 1);
        }
        const bool inTable = paragraph.row >= 0 && static_cast<size_t>(paragraph.row) < document_.rows.size();
        if (!inTable)
            return builder_.EndParagraph(format);
        const TableRow& row = document_.rows[static_cast<size_t>(paragraph.row)];
        switch (paragraph.endedBy) {
            case ParagraphEnd::Cell:
                return builder_.EndCell(format, row.level);
            case ParagraphEnd::Row:
                return builder_.EndRow(document_.rowFormats[row.format], format, row.level);
            default:
                return builder_.EndParagraph(format, row.level);
        }
    }

    DocumentBuilder& builder_;
    const Document& document_;
    int32_t firstList_, nextList_;
};

}  // namespace

void AppendDocument(DocumentBuilder& builder, const Document& document, int32_t& firstList) {
    firstList = Appender(builder, document, firstList).Run();
}

}  // namespace lore
