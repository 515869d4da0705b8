#pragma once

#include <string>
#include <vector>

namespace lore {

/// Checks words by the dictionary of a language. Words are UTF-8.
class SpellChecker {
public:
    virtual ~SpellChecker() = default;
    /// The languages that have a dictionary, such as "en_US", in alphabetical order.
    virtual std::vector<std::string> Languages() const = 0;
    /// The language that is checked now; empty when there is none, and every word is right then.
    virtual std::string Language() const = 0;
    /// False if there is no such dictionary or it can't be read; the language stays then.
    virtual bool Select(const std::string& language) = 0;
    /// Whether a word is spelled right. A word in another script than the language's is nothing to judge: right.
    virtual bool Check(const std::string& word) = 0;
    /// Words that may have been meant, the likeliest first.
    virtual std::vector<std::string> Suggest(const std::string& word) = 0;
    /// Takes a word into the user's own dictionary, for all languages. False if it could not be written; the word is
    /// right for this run all the same.
    virtual bool Add(const std::string& word) = 0;
    /// The user's own words, in the order in which they came.
    virtual std::vector<std::string> UserWords() const { return {}; }
    /// Puts these in their place. False if they could not be written; they hold for this run all the same.
    virtual bool SetUserWords(const std::vector<std::string>&) { return false; }
    /// Holds a word right until the program ends.
    virtual void Ignore(const std::string& word) = 0;
};

}  // namespace lore
