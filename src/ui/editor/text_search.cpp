#include "ui/editor/text_search.h"

#include <QTextBlock>
#include <QTextCursor>

#include "base/text.h"

namespace lore {
namespace {

// The character that begins or ends at a position, surrogates joined; 0 beyond the text.
char32_t CharacterBefore(const QString& text, qsizetype at) {
    if (at <= 0)
        return 0;
    const QChar last = text[at - 1];
    return last.isLowSurrogate() && at > 1 ? QChar::surrogateToUcs4(text[at - 2], last) : last.unicode();
}
char32_t CharacterFrom(const QString& text, qsizetype at) {
    if (at >= text.size())
        return 0;
    const QChar first = text[at];
    return first.isHighSurrogate() && at + 1 < text.size() ? QChar::surrogateToUcs4(first, text[at + 1])
                                                           : first.unicode();
}

bool StandsAlone(const QString& text, qsizetype begin, qsizetype end) {
    return !IsWordCharacter(CharacterBefore(text, begin)) && !IsWordCharacter(CharacterFrom(text, end));
}

}  // namespace

std::vector<SearchHit> SearchText(const QTextDocument& document, const FindTerm& term) {
    std::vector<SearchHit> hits;
    if (term.text.isEmpty())
        return hits;
    const Qt::CaseSensitivity sensitivity = term.matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QString text = block.text();
        for (qsizetype at = text.indexOf(term.text, 0, sensitivity); at >= 0;) {
            const qsizetype end = at + term.text.size();
            const bool taken = !term.wholeWords || StandsAlone(text, at, end);
            if (taken)
                hits.push_back({block.position() + static_cast<int>(at), block.position() + static_cast<int>(end)});
            at = text.indexOf(term.text, taken ? end : at + 1, sensitivity);
        }
    }
    return hits;
}

void ReplaceHits(QTextDocument& document, const std::vector<SearchHit>& hits, const QString& text) {
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    for (auto hit = hits.rbegin(); hit != hits.rend(); ++hit) {
        cursor.setPosition(hit->begin + 1);
        const QTextCharFormat look = cursor.charFormat();
        cursor.setPosition(hit->begin);
        cursor.setPosition(hit->end, QTextCursor::KeepAnchor);
        cursor.insertText(text, look);
    }
    cursor.endEditBlock();
}

}  // namespace lore
