#include "bench/word_maker.h"

#include <algorithm>

namespace lore {

namespace {

constexpr size_t kWords = 60000;
constexpr char kLetters[] = "eeeeetttaaaooiinnsshhrrddllcumwfgypbvk";

void Capitalize(std::string& word) {
    word[0] = static_cast<char>(word[0] - 'a' + 'A');
}

}  // namespace

WordMaker::WordMaker(uint32_t seed) : random_(seed) {
    double sum = 0;
    for (size_t rank = 0; rank < kWords; ++rank) {
        std::string word;
        for (uint32_t length = 2 + Number(9); length > 0; --length)
            word += kLetters[Number(sizeof kLetters - 1)];
        words_.push_back(std::move(word));
        sums_.push_back(sum += 1.0 / (static_cast<double>(rank) + 2.7));
    }
}

const std::string& WordMaker::Word() {
    const double at = random_() / 4294967296.0 * sums_.back();
    const auto rank = std::upper_bound(sums_.begin(), sums_.end(), at) - sums_.begin();
    return words_[std::min(static_cast<size_t>(rank), kWords - 1)];
}

std::string WordMaker::Name() {
    std::string name = Word();
    Capitalize(name);
    return name;
}

std::string WordMaker::Title(size_t words) {
    std::string title = Name();
    for (size_t i = 1; i < words; ++i)
        title += ' ' + Word();
    return title;
}

}  // namespace lore
