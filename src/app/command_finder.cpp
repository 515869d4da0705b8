#include "app/command_finder.h"

#include <algorithm>
#include <tuple>

#include "base/text.h"

namespace lore {

namespace {

constexpr int kLetter = 1;
constexpr int kWordStart = 12;
constexpr int kNextToLast = 8;
constexpr int kTextStart = 6;
constexpr int kWholeWord = 10;
constexpr int kGap = 6;               // what a gap costs, however wide
constexpr size_t kLongestText = 400;  // characters of a text that are looked at
constexpr size_t kLongestWord = 40;   // and of a word that is typed

/// A letter without its accent, for those of Western and Central Europe; others as they are.
char32_t WithoutAccent(char32_t c) {
    constexpr char32_t kFirst = 0xE0;
    // From U+00E0 on, folded.
    static constexpr char kPlain[] = "aaaaaaaceeeeiiiidnooooo/ouuuuyty";
    if (c >= kFirst && c < kFirst + sizeof kPlain - 1 && c != 0xF7)
        return static_cast<char32_t>(kPlain[c - kFirst]);
    return c;
}

std::u32string Folded(std::string_view bytes) {
    std::u32string text = ToCodePoints(bytes);
    text.resize(std::min(text.size(), kLongestText));
    for (char32_t& c : text)
        c = WithoutAccent(FoldCase(c));
    return text;
}

std::vector<std::u32string> WordsOf(std::string_view typed) {
    std::vector<std::u32string> words(1);
    for (const char32_t c : Folded(typed)) {
        if (c != U' ' && c != U'\t')
            words.back() += c;
        else if (!words.back().empty())
            words.emplace_back();
    }
    if (words.back().empty())
        words.pop_back();
    for (std::u32string& word : words)
        word.resize(std::min(word.size(), kLongestWord));
    return words;
}

bool IsWordStart(const std::u32string& text, size_t at) {
    return at == 0 || (IsWordCharacter(text[at]) && !IsWordCharacter(text[at - 1]));
}

/// The best place of a word's letters in a text: score and positions. The score of a letter depends on where the letter
/// before it stands, so that the best way is worked out letter by letter over all places.
class WordMatch {
public:
    WordMatch(const std::u32string& text, const std::u32string& word) : text_(text), word_(word) {}

    bool Find(int& score, std::vector<int>& marks) {
        if (!CanMatch())
            return false;
        const size_t width = text_.size();
        best_.assign(word_.size() * width, kNone);
        from_.assign(word_.size() * width, -1);
        for (size_t letter = 0; letter < word_.size(); ++letter)
            Fill(letter, width);
        const auto last = best_.end() - static_cast<std::ptrdiff_t>(width);
        const auto top = std::max_element(last, best_.end());
        if (*top == kNone)
            return false;
        Follow(static_cast<int>(top - last), width, marks);
        score += *top + (IsWholeWord(marks) ? kWholeWord : 0);
        return true;
    }

private:
    static constexpr int kNone = INT32_MIN / 2;

    /// The quick test that most texts fail.
    bool CanMatch() const {
        size_t at = 0;
        for (const char32_t letter : word_) {
            at = text_.find(letter, at);
            if (at == std::u32string::npos)
                return false;
            ++at;
        }
        return true;
    }

    int Worth(size_t at) const {
        return kLetter + (IsWordStart(text_, at) ? kWordStart : 0) + (at == 0 ? kTextStart : 0);
    }

    /// Either directly after the letter before, or after a gap from its best place so far.
    void Fill(size_t letter, size_t width) {
        int* const row = &best_[letter * width];
        const int* const before = letter > 0 ? row - width : nullptr;
        int gapped = kNone, gappedFrom = -1;
        for (size_t at = 0; at < width; ++at) {
            if (text_[at] == word_[letter]) {
                int value = before ? gapped : 0;
                int place = before ? gappedFrom : -1;
                if (before && at > 0 && before[at - 1] != kNone && before[at - 1] + kNextToLast >= value) {
                    value = before[at - 1] + kNextToLast;
                    place = static_cast<int>(at) - 1;
                }
                if (value != kNone) {
                    row[at] = value + Worth(at);
                    from_[letter * width + at] = place;
                }
            }
            if (before && before[at] != kNone && before[at] - kGap > gapped) {
                gapped = before[at] - kGap;
                gappedFrom = static_cast<int>(at);
            }
        }
    }

    void Follow(int at, size_t width, std::vector<int>& marks) const {
        for (size_t letter = word_.size(); letter-- > 0 && at >= 0;) {
            marks.push_back(at);
            at = from_[letter * width + static_cast<size_t>(at)];
        }
    }

    /// `marks` ends with the positions of this word, the last letter first.
    bool IsWholeWord(const std::vector<int>& marks) const {
        const auto last = static_cast<size_t>(marks[marks.size() - word_.size()]);
        const auto first = static_cast<size_t>(marks.back());
        return last - first + 1 == word_.size() && IsWordStart(text_, first) &&
               (last + 1 == text_.size() || !IsWordCharacter(text_[last + 1]));
    }

    const std::u32string& text_;
    const std::u32string& word_;
    std::vector<int> best_, from_;
};

}  // namespace

void CommandFinder::Add(FindableItem item) {
    folded_.push_back(Folded(item.text));
    items_.push_back(std::move(item));
}

std::vector<FoundItem> CommandFinder::Find(std::string_view typed, size_t limit) const {
    const std::vector<std::u32string> words = WordsOf(typed);
    std::vector<FoundItem> found;
    for (size_t i = 0; i < items_.size(); ++i) {
        FoundItem match{i, 0, {}};
        const bool matches = std::all_of(words.begin(), words.end(), [&](const std::u32string& word) {
            return WordMatch(folded_[i], word).Find(match.score, match.marks);
        });
        if (!matches)
            continue;
        std::sort(match.marks.begin(), match.marks.end());
        match.marks.erase(std::unique(match.marks.begin(), match.marks.end()), match.marks.end());
        found.push_back(std::move(match));
        if (words.empty() && found.size() == limit)
            break;
    }
    if (words.empty())
        return found;
    const auto key = [this](const FoundItem& match) {
        return std::tuple(-match.score, items_[match.item].kind, folded_[match.item].size(), match.item);
    };
    const size_t count = std::min(limit, found.size());
    std::partial_sort(found.begin(), found.begin() + static_cast<std::ptrdiff_t>(count), found.end(),
                      [&key](const FoundItem& a, const FoundItem& b) { return key(a) < key(b); });
    found.resize(count);
    return found;
}

}  // namespace lore
