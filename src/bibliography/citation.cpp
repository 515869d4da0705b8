#include "bibliography/citation.h"

#include <algorithm>
#include <array>
#include <vector>

#include "base/text.h"
#include "bibliography/author_text.h"
#include "bibliography/citation_style.h"
#include "bibliography/custom_citation.h"
#include "bibliography/mixed_texts.h"

namespace lore {

namespace {

/// What a source holds, as the conditions of styles ask for it.
uint16_t PresentBits(const CSource& source) {
    unsigned bits = source.HasDate ? kDateBit : 0u;
    for (size_t slot = 0; slot < std::min(source.FieldTexts.size(), kFieldSlots); ++slot)
        bits |= source.FieldTexts[slot].empty() ? 0u : 1u << slot;
    return static_cast<uint16_t>(bits);
}

void BuildAuthorText(CSource& source, const AuthorList& authors, const StyleAuthors& style) {
    const bool middle = (style.middleTypes & TypeBit(source.SourceType)) != 0;
    const AuthorListForm form = {{style.initialOnly, style.spaceAfterFirst, middle},
                                 style.conjunction,
                                 style.separator,
                                 source.AuthorsBeforeEtAl};
    constexpr std::array kForms = {AuthorsFirstInverted, AuthorsAllInverted, AuthorsCompact};
    source.AuthorText = kForms[static_cast<size_t>(style.form)](source.AuthorIDs, authors, form);
    if (style.letters == AuthorLetters::Capitals)
        source.AuthorText = ToUpper(source.AuthorText);
    else if (style.letters == AuthorLetters::NoPeriods)
        std::erase(source.AuthorText, '.');
    if (!source.AuthorText.empty())
        source.AuthorText += '.';
}

/// Builds one citation by the recipe of its cell.
class CellWriter {
public:
    CellWriter(CSource& source, const StyleCell& cell)
        : source_(source), cell_(cell), out_(source.FormattedText), present_(PresentBits(source)) {}

    void Write() {
        out_.clear();
        for (size_t i = 0; i < cell_.pieceCount; ++i)
            WritePiece(i);
        CutToRecord(out_);
        for (size_t i = 0; i < cell_.markCount; ++i)
            WriteMark(cell_.marks[i]);
    }

private:
    void WritePiece(size_t index) {
        const StylePiece& piece = cell_.pieces[index];
        switch (piece.kind) {
            case StylePiece::Kind::Authors:
                AppendField(out_, source_.AuthorText, {}, " ", false);
                break;
            case StylePiece::Kind::Field:
                WriteField(index);
                break;
            case StylePiece::Kind::Alternative:
                break;
            case StylePiece::Kind::Text:
                if (piece.when.Holds(present_))
                    out_ += piece.before;
                break;
            case StylePiece::Kind::Trim:
                if (piece.when.Holds(present_))
                    out_.resize(TrimRight(out_).size());
                break;
            case StylePiece::Kind::Date:
                if (source_.HasDate && source_.UseDateText == 0)
                    out_ += source_.SourceDate.Format(piece.before);
                break;
        }
    }

    void WriteField(size_t index) {
        const StylePiece& field = cell_.pieces[index];
        const StylePiece* texts = &field;
        for (size_t i = index + 1; i < cell_.pieceCount && cell_.pieces[i].kind == StylePiece::Kind::Alternative; ++i) {
            if (cell_.pieces[i].when.Holds(present_)) {
                texts = &cell_.pieces[i];
                break;
            }
        }
        AppendField(out_, FieldText(source_, field.slot), texts->before, texts->after, field.ordinal);
    }

    void WriteMark(const StyleMark& mark) {
        const bool useOther = mark.otherwise >= 0 && !HasField(source_, static_cast<size_t>(mark.slot));
        MarkField(source_, static_cast<size_t>(useOther ? mark.otherwise : mark.slot), mark.kind, out_);
    }

    CSource& source_;
    const StyleCell& cell_;
    std::string& out_;
    const uint16_t present_;
};

void FormatStandard(CSource& source, const AuthorList& authors) {
    const CitationStyle* style = FindStyle(source.FormatStyle);
    if (style == nullptr) {
        source.FormattedText.clear();
        return;
    }
    const StyleCell& cell = style->cells[static_cast<size_t>(source.SourceType - 1)];
    if (source.FieldTexts.size() <= kDateSlot)
        source.FieldTexts.resize(kDateSlot + 1);
    source.FieldTexts[kDateSlot] = SourceDateText(source, cell.dateFormat);
    BuildAuthorText(source, authors, style->authors);
    CellWriter(source, cell).Write();
}

/// The position moves on after a removal, so the id after a removed one stays whatever it is.
void DropUnknownAuthors(LongList& ids, const AuthorList& authors) {
    const auto isUnknown = [&](int32_t id) { return authors.FindAuthorByID(id) == nullptr; };
    if (std::none_of(ids.begin(), ids.end(), isUnknown))
        return;
    std::vector<int32_t> kept;
    bool passOver = false;
    for (const int32_t id : ids) {
        const bool drop = !passOver && isUnknown(id);
        if (!drop)
            kept.push_back(id);
        passOver = drop;
    }
    ids = LongList(std::move(kept));
}

void BuildCitation(CSource& source, const AuthorList& authors) {
    source.SpanKinds.RemoveAll();
    source.SpanStarts.RemoveAll();
    source.SpanEnds.RemoveAll();
    if (source.SourceType >= kFirstCustomType)
        FormatCustomSource(source, authors);
    else if (source.SourceType >= kBook && source.SourceType <= kLecture)
        FormatStandard(source, authors);
}

/// The citation once more, from texts that are all UTF-8. What could be read before keeps its bytes.
void BuildMixedCitation(CSource& source, const AuthorList& authors) {
    CSource copy = SourceInUtf8(source);
    BuildCitation(copy, AuthorsInUtf8(source.AuthorIDs, authors));
    if (ToUtf8(source.AuthorText) != copy.AuthorText)
        source.AuthorText = FromUtf8(copy.AuthorText);
    if (ToUtf8(source.FormattedText) == copy.FormattedText)
        return;
    source.FormattedText = std::move(copy.FormattedText);
    source.SpanKinds = std::move(copy.SpanKinds);
    source.SpanStarts = std::move(copy.SpanStarts);
    source.SpanEnds = std::move(copy.SpanEnds);
}

}  // namespace

void FormatSource(CSource& source, const AuthorList& authors) {
    DropUnknownAuthors(source.AuthorIDs, authors);
    BuildCitation(source, authors);
    if (JoinsMixedTexts(source, authors))
        BuildMixedCitation(source, authors);
}

}  // namespace lore
