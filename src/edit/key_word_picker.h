#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "classify/key_word_list.h"
#include "ports/progress.h"
#include "ports/prompts.h"

namespace lore {

/// What stands beside the field of key words.
inline constexpr char kKeyWordsNote[] = "NOTE:  Separate all tags with commas.";

/// The used key words with a box to check for each. Those that stand in the field begin checked.
class KeyWordPicker {
public:
    /// `field` is what stands in the edit field. The note with the id `note`, if above 0, isn't counted.
    KeyWordPicker(const CKeyWordList& used, std::string_view field, int32_t note);

    size_t Count() const { return keyWords_.Count(); }
    /// "lamp - (3)", where the text of the field counts as one note.
    std::string ItemText(size_t position) const;
    bool IsChecked(size_t position) const { return keyWords_.Entries()[position].selected != toggled_[position]; }
    /// Checks or clears a box.
    void Toggle(size_t position);
    /// The checked key words in the order of checking, each with ", " after it.
    std::string FieldText() const;

private:
    CKeyWordList keyWords_;
    std::vector<bool> toggled_;  // against the state at the start
    std::vector<size_t> checked_;
};

/// Gathers the used key words; nothing, and told, if there are none.
std::optional<KeyWordPicker> OpenKeyWordPicker(const CKeyWordList& used, std::string_view field, int32_t note,
                                               Prompts& prompts, Progress& progress);

}  // namespace lore
