#include "edit/key_word_picker.h"

#include "base/text.h"
#include "base/text_join.h"

namespace lore {

KeyWordPicker::KeyWordPicker(const CKeyWordList& used, std::string_view field, int32_t note) : keyWords_(used) {
    if (note > 0)
        keyWords_.RemoveNote(note);
    keyWords_.AddKeyWordsOfNote(Trim(field), kPseudoNote);
    keyWords_.SortKeyWords();
    keyWords_.NumberEntries();
    toggled_.resize(keyWords_.Count());
    for (size_t i = 0; i < keyWords_.Count(); ++i) {
        if (keyWords_.Entries()[i].selected)
            checked_.push_back(i);
    }
}

std::string KeyWordPicker::ItemText(size_t position) const {
    const CKeyWord& keyWord = keyWords_.Entries()[position];
    return keyWord.name + " - (" + std::to_string(keyWord.notes.Count()) + ")";
}

void KeyWordPicker::Toggle(size_t position) {
    if (IsChecked(position))
        std::erase(checked_, position);
    else
        checked_.push_back(position);
    toggled_[position] = !toggled_[position];
}

std::string KeyWordPicker::FieldText() const {
    std::string text;
    for (const size_t position : checked_)
        text = JoinTexts(text, keyWords_.Entries()[position].name + ", ");
    return text;
}

std::optional<KeyWordPicker> OpenKeyWordPicker(const CKeyWordList& used, std::string_view field, int32_t note,
                                               Prompts& prompts, Progress& progress) {
    progress.ShowStandBy("Loading Used Key Words....");
    KeyWordPicker picker(used, field, note);
    progress.HideStandBy();
    if (picker.Count() > 0)
        return picker;
    prompts.Message("No Key Words are currently attached to Notes.", "No Key Words", PromptIcon::Warning);
    return std::nullopt;
}

}  // namespace lore
