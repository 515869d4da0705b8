#include "ui/editor/document_capture.h"

#include <QTextTable>

#include "ui/editor/fragments.h"
#include "ui/editor/note_block_data.h"
#include "ui/editor/note_formats.h"
#include "ui/editor/table_shape.h"

namespace lore {
namespace {

CapturedPiece PieceOf(QChar special, const QTextCharFormat& look, const CharFormat& format,
                      const NoteFormats& formats) {
    CapturedPiece piece;
    piece.format = format;
    if (special == QChar::LineSeparator) {
        piece.text = "\n";
        if (look.hasProperty(kBreakProperty))
            piece.kind = static_cast<RunKind>(look.intProperty(kBreakProperty));
    } else if ((piece.kept = formats.KeptOf(look)) == nullptr) {
        piece.picture = formats.PictureOf(look);
        if (piece.picture)
            piece.kind = RunKind::Picture;
    }
    return piece;
}

// Adds the characters of a fragment. Line separators and objects stand for something; the rest is text.
void AddFragment(QStringView text, const QTextCharFormat& look, const NoteFormats& formats, CapturedBlock& block) {
    const CharFormat format = formats.Characters(look);
    const bool objects = look.hasProperty(kKeptProperty) || look.hasProperty(kPictureProperty);
    for (qsizetype at = 0; at < text.size();) {
        qsizetype stop = at;
        while (stop < text.size() && text[stop] != QChar::LineSeparator &&
               text[stop] != QChar::ObjectReplacementCharacter)
            ++stop;
        if (stop > at)
            block.push_back({format, RunKind::Text, text.mid(at, stop - at).toUtf8().toStdString(), nullptr, nullptr});
        if (stop < text.size() && (objects || text[stop] == QChar::LineSeparator))
            block.push_back(PieceOf(text[stop], look, format, formats));
        at = stop + 1;
    }
}

std::shared_ptr<CapturedBlock> PiecesOf(const QTextBlock& block, const NoteFormats& formats, int from, int to) {
    auto pieces = std::make_shared<CapturedBlock>();
    ForEachFragment(block, from, to, [&](const QTextFragment& fragment, int begin, int end) {
        const QString text = fragment.text();
        AddFragment(QStringView(text).mid(begin - fragment.position(), end - begin), fragment.charFormat(), formats,
                    *pieces);
    });
    return pieces;
}

}  // namespace

/// The blocks and tables of a document from front to back, or those of a stretch of it.
class NoteCapture::Walk {
public:
    Walk(const NoteFormats& formats, int from, int to) : formats_(formats), from_(from), to_(to) {
        const Document& tables = formats.Tables();
        note_.fonts = tables.fonts;
        note_.links = tables.links;
        note_.codePage = tables.codePage;
        note_.defaultFont = tables.defaultFont;
    }

    // The blocks and tables of a frame or a cell.
    void AddRange(QTextFrame::iterator it, int level) {
        for (; !it.atEnd(); ++it)
            AddOne(it, level);
    }

    // The whole document, to be taken by Step.
    void Begin(const QTextDocument& shown) {
        next_ = shown.rootFrame()->begin();
        note_.paragraphs.reserve(static_cast<size_t>(shown.blockCount()));
    }

    bool Step(int count) {
        for (; count > 0 && !next_.atEnd(); --count, ++next_)
            AddOne(next_, 0);
        return !next_.atEnd();
    }

    void EndCell() { note_.paragraphs.back().end = ParagraphEnd::Cell; }

    CapturedNote Take() {
        if (note_.paragraphs.empty())
            note_.paragraphs.emplace_back();
        // A document ends with a paragraph of its own, never with a table.
        if (note_.paragraphs.back().end == ParagraphEnd::Row)
            note_.paragraphs.emplace_back();
        return std::move(note_);
    }

private:
    void AddOne(const QTextFrame::iterator& it, int level) {
        if (QTextFrame* frame = it.currentFrame())
            AddFrame(*frame, level);
        else if (const QTextBlock block = it.currentBlock(); block.isValid() && !IsPhantom(it))
            AddBlock(block, level);
    }

    bool IsTouched(int first, int last) const { return first <= to_ && last >= from_; }

    void AddFrame(QTextFrame& frame, int level) {
        if (!IsTouched(frame.firstPosition(), frame.lastPosition()))
            return;
        if (auto* const table = qobject_cast<QTextTable*>(&frame))
            AddTable(*table, level + 1);
        else
            AddRange(frame.begin(), level);
    }

    // The empty block that the screen needs in front of a table.
    static bool IsPhantom(QTextFrame::iterator it) {
        const QTextBlock block = it.currentBlock();
        if (block.length() > 1 || !block.blockFormat().hasProperty(kPhantomProperty))
            return false;
        ++it;
        return !it.atEnd() && it.currentFrame();
    }

    void AddBlock(const QTextBlock& block, int level) {
        const int begin = block.position(), end = begin + block.length() - 1;
        if (!IsTouched(begin, end))
            return;
        const QTextBlockFormat look = block.blockFormat();
        CapturedParagraph paragraph;
        paragraph.pieces =
            begin >= from_ && end <= to_ ? CaptureBlock(block, formats_) : PiecesOf(block, formats_, from_, to_);
        paragraph.format = formats_.Paragraph(look);
        paragraph.level = level;
        if (look.hasProperty(kFlatProperty)) {
            const int packed = look.intProperty(kFlatProperty);
            paragraph.level = packed >> 8;
            paragraph.end = static_cast<ParagraphEnd>(packed & 255);
            paragraph.row = formats_.RowOf(look);
        }
        note_.paragraphs.push_back(std::move(paragraph));
    }

    void AddTable(QTextTable& table, int level) {
        const std::shared_ptr<const NoteTable> shape = ShapeOf(table, formats_);
        for (int r = 0; r < table.rows(); ++r)
            if (IsTouched(table.cellAt(r, 0).firstPosition(), table.cellAt(r, table.columns() - 1).lastPosition()))
                AddRow(table, r, shape->rows[static_cast<size_t>(r)], level);
    }

    void AddRow(QTextTable& table, int r, const NoteTableRow& row, int level) {
        const int from = std::exchange(from_, 0);
        const int to = std::exchange(to_, INT_MAX);
        for (size_t c = 0; c < row.cells.size(); ++c) {
            if (row.cells[c].covered) {
                note_.paragraphs.push_back({nullptr, row.covered[c], level, ParagraphEnd::Cell, nullptr});
                continue;
            }
            AddRange(table.cellAt(r, row.cells[c].column).begin(), level);
            EndCell();
        }
        from_ = from;
        to_ = to;
        auto kept = std::make_shared<CapturedBlock>();
        for (const auto& group : row.kept)
            kept->push_back({CharFormat(), RunKind::Text, {}, nullptr, group});
        note_.paragraphs.push_back({std::move(kept), row.end, level, ParagraphEnd::Row, row.format});
    }

    const NoteFormats& formats_;
    int from_;
    int to_;
    QTextFrame::iterator next_;
    CapturedNote note_;
};

NoteCapture::NoteCapture(const QTextDocument& shown, const NoteFormats& formats)
    : walk_(std::make_unique<Walk>(formats, 0, INT_MAX)) {
    walk_->Begin(shown);
}

NoteCapture::~NoteCapture() = default;

bool NoteCapture::Step(int count) {
    return walk_->Step(count);
}

CapturedNote NoteCapture::Take() {
    return walk_->Take();
}

std::shared_ptr<const CapturedBlock> CaptureBlock(const QTextBlock& block, const NoteFormats& formats) {
    NoteBlockData& data = NoteBlockData::Of(block);
    if (!data.captured)
        data.captured = PiecesOf(block, formats, 0, INT_MAX);
    return data.captured;
}

CapturedNote CaptureNote(const QTextDocument& shown, const NoteFormats& formats) {
    NoteCapture capture(shown, formats);
    capture.Step(INT_MAX);
    return capture.Take();
}

CapturedNote NoteCapture::OfSelection(const QTextCursor& selection, const NoteFormats& formats) {
    Walk capture(formats, selection.selectionStart(), selection.selectionEnd());
    QTextCursor first(selection), last(selection);
    first.setPosition(selection.selectionStart());
    last.setPosition(selection.selectionEnd());
    QTextTable* const table = first.currentTable();
    if (table && table == last.currentTable() && table->cellAt(first) == table->cellAt(last))
        capture.AddRange(table->cellAt(first).begin(), 0);
    else if (table && table == last.currentTable())
        capture.AddRange(QTextFrame::iterator(table->parentFrame()->begin()), 0);
    else
        capture.AddRange(selection.document()->rootFrame()->begin(), 0);
    return capture.Take();
}

CapturedNote CaptureSelection(const QTextCursor& selection, const NoteFormats& formats) {
    return NoteCapture::OfSelection(selection, formats);
}

}  // namespace lore
