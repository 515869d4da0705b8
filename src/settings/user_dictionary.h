#pragma once

#include <string>
#include <vector>

#include "ports/spell_checker.h"

namespace lore {

/// The user's own words as an editor shows them: in alphabetical order, each change written at once.
class UserDictionary {
public:
    explicit UserDictionary(SpellChecker& checker);

    const std::vector<std::string>& Words() const { return words_; }
    /// Whether a text can be taken in: one word, which isn't there yet.
    bool CanAdd(const std::string& text) const;
    /// Takes a word in and gives its row; -1 if it can't be. Blanks around it don't count.
    int Add(const std::string& text);
    /// Puts another word in the place of one and gives its row; -1 if it can't be, and the word stays.
    int Replace(size_t row, const std::string& text);
    void Remove(size_t row);

private:
    int Insert(const std::string& word);
    void Write();

    SpellChecker& checker_;
    std::vector<std::string> words_;
};

}  // namespace lore
