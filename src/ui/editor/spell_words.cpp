#include "ui/editor/spell_words.h"

#include <QTextBoundaryFinder>
#include <algorithm>

namespace lore {
namespace {

bool IsAddress(QStringView token) {
    return token.contains(u"://") || token.contains(u'@') || token.contains(u'\\') ||
           token.startsWith(u"www.", Qt::CaseInsensitive) || token.startsWith(u'/') || token.count(u'/') > 1;
}

// Addresses reach from blank to blank.
std::vector<SpellMark> AddressesOf(const QString& text) {
    std::vector<SpellMark> addresses;
    for (int at = 0; at < text.size();) {
        int end = at;
        while (end < text.size() && !text[end].isSpace())
            ++end;
        if (end > at && IsAddress(QStringView(text).mid(at, end - at)))
            addresses.push_back({at, end - at});
        at = end + 1;
    }
    return addresses;
}

// Letters of any script, marks, digits and apostrophes.
bool IsToBeChecked(QStringView word, const SkippedWords& skipped) {
    bool letters = false, digits = false, lower = false, innerCapital = false;
    for (qsizetype i = 0; i < word.size(); ++i) {
        const QChar c = word[i];
        letters = letters || c.isLetter() || c.isSurrogate();
        digits = digits || c.isNumber();
        lower = lower || (c.isLetter() && !c.isUpper());
        innerCapital = innerCapital || (c.isUpper() && i > 0);
        if (!c.isLetterOrNumber() && !c.isMark() && !c.isSurrogate() && c != u'\'' && c != u'\u2019' && c != u'\u00ad')
            return false;
    }
    if (!letters || word.size() < 2 || (digits && skipped.withDigits))
        return false;
    return !innerCapital || !(lower ? skipped.mixedCase : skipped.capitals);
}

}  // namespace

std::vector<SpellMark> WordsToCheck(const QString& text, const SkippedWords& skipped) {
    std::vector<SpellMark> words;
    const std::vector<SpellMark> addresses = skipped.addresses ? AddressesOf(text) : std::vector<SpellMark>();
    auto address = addresses.begin();
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text);
    int begin = -1;
    for (int at = 0; at >= 0; at = static_cast<int>(finder.toNextBoundary())) {
        const auto reasons = finder.boundaryReasons();
        if (begin >= 0 && (reasons & QTextBoundaryFinder::EndOfItem)) {
            while (address != addresses.end() && address->begin + address->length <= begin)
                ++address;
            const bool inAddress = address != addresses.end() && address->begin < at;
            if (!inAddress && IsToBeChecked(QStringView(text).mid(begin, at - begin), skipped))
                words.push_back({begin, at - begin});
            begin = -1;
        }
        if (reasons & QTextBoundaryFinder::StartOfItem)
            begin = at;
    }
    return words;
}

}  // namespace lore
