#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace lore {

/// Words that come as often as those of a language: the word of rank r comes 1 / (r + 2.7) times as often as the first.
/// The same seed gives the same words on every machine.
class WordMaker {
public:
    explicit WordMaker(uint32_t seed);

    /// The next word of a text, two to ten small letters.
    const std::string& Word();
    /// The next word with a capital.
    std::string Name();
    /// Some words, the first with a capital, blanks between them.
    std::string Title(size_t words);
    /// From 0 up to, not including, `limit`.
    uint32_t Number(uint32_t limit) { return random_() % limit; }

private:
    std::mt19937 random_;
    std::vector<std::string> words_;
    std::vector<double> sums_;
};

}  // namespace lore
