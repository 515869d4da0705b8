#pragma once

#include <QTextDocument>
#include <vector>

namespace lore {

struct FindTerm {
    QString text;
    bool matchCase = false;
    bool wholeWords = false;
};

/// A hit of a search, in positions of the document.
struct SearchHit {
    int begin = 0;
    int end = 0;
    bool operator==(const SearchHit&) const = default;
};

/// All hits of a term from front to back, none of them across paragraphs; each next one begins after the last.
std::vector<SearchHit> SearchText(const QTextDocument& document, const FindTerm& term);

/// Replaces hits of SearchText, in one step of undo. The new text looks as the first replaced character did.
void ReplaceHits(QTextDocument& document, const std::vector<SearchHit>& hits, const QString& text);

}  // namespace lore
