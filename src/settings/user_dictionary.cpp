#include "settings/user_dictionary.h"

#include <algorithm>

#include "base/text.h"

namespace lore {

namespace {

constexpr size_t kLongestWord = 100;  // bytes

bool StandsBefore(const std::string& a, const std::string& b) {
    const int order = CompareNoCase(a, b);
    return order != 0 ? order < 0 : a < b;
}

std::string WordOf(const std::string& text) {
    return std::string(Trim(CleanText(text)));
}

}  // namespace

UserDictionary::UserDictionary(SpellChecker& checker) : checker_(checker), words_(checker.UserWords()) {
    std::sort(words_.begin(), words_.end(), StandsBefore);
}

bool UserDictionary::CanAdd(const std::string& text) const {
    const std::string word = WordOf(text);
    return !word.empty() && word.size() <= kLongestWord && word.find_first_of(" \t\r\n") == std::string::npos &&
           std::find(words_.begin(), words_.end(), word) == words_.end();
}

int UserDictionary::Insert(const std::string& word) {
    const auto place = std::upper_bound(words_.begin(), words_.end(), word, StandsBefore);
    const auto row = static_cast<int>(place - words_.begin());
    words_.insert(place, word);
    return row;
}

int UserDictionary::Add(const std::string& text) {
    if (!CanAdd(text))
        return -1;
    const int row = Insert(WordOf(text));
    Write();
    return row;
}

int UserDictionary::Replace(size_t row, const std::string& text) {
    if (row >= words_.size() || !CanAdd(text))
        return -1;
    words_.erase(words_.begin() + static_cast<std::ptrdiff_t>(row));
    const int place = Insert(WordOf(text));
    Write();
    return place;
}

void UserDictionary::Remove(size_t row) {
    if (row >= words_.size())
        return;
    words_.erase(words_.begin() + static_cast<std::ptrdiff_t>(row));
    Write();
}

void UserDictionary::Write() {
    checker_.SetUserWords(words_);
}

}  // namespace lore
