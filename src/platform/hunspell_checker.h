#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <unordered_set>

#include "ports/fault_notice.h"
#include "ports/spell_checker.h"

class Hunspell;

namespace lore {

/// Spelling by Hunspell and the dictionaries that are installed.
class HunspellChecker : public SpellChecker {
public:
    /// `dictionaries`: folders with pairs of .aff and .dic files; the first of two with one name counts. `userWords`:
    /// the file of the user's own words, UTF-8, one a line; it need not exist. A file that can't be read or written is
    /// told to `faults`.
    HunspellChecker(const std::vector<std::filesystem::path>& dictionaries, std::filesystem::path userWords,
                    FaultNotice& faults);
    ~HunspellChecker() override;

    std::vector<std::string> Languages() const override;
    std::string Language() const override { return language_; }
    bool Select(const std::string& language) override;
    bool Check(const std::string& word) override;
    std::vector<std::string> Suggest(const std::string& word) override;
    bool Add(const std::string& word) override;
    std::vector<std::string> UserWords() const override { return userWords_; }
    bool SetUserWords(const std::vector<std::string>& words) override;
    void Ignore(const std::string& word) override;

    /// Where distributions keep dictionaries.
    static std::vector<std::filesystem::path> SystemFolders();

private:
    class Encoding;

    void ReadUserWords();
    bool WriteUserWords();
    bool IsOwn(const std::string& word) const;
    std::vector<std::string> Near(const std::string& word);
    bool IsOtherScript(const std::string& word) const;

    std::map<std::string, std::filesystem::path> dictionaries_;  ///< path without the ending, by language
    std::filesystem::path userFile_;
    FaultNotice& faults_;
    std::string language_;
    int script_ = 0;  ///< of the language, as Unicode numbers it
    std::unique_ptr<Hunspell> engine_;
    std::unique_ptr<Encoding> encoding_;
    std::vector<std::string> userWords_;          ///< in the order of the file
    std::unordered_set<std::string> rightWords_;  ///< the user's and the ignored ones
};

}  // namespace lore
