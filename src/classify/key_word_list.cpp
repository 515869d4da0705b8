#include "classify/key_word_list.h"

#include <algorithm>
#include <numeric>

#include "base/text.h"
#include "base/text_join.h"
#include "classify/note_lists.h"

namespace lore {

std::vector<std::string_view> SplitKeyWords(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(','), text.size()));
    text = text.substr(0, text.find_last_not_of(',') + 1);
    text = TrimLeft(text);
    std::vector<std::string_view> pieces;
    if (text.empty())
        return pieces;
    // A comma at the very front, after blanks, doesn't make the text a list by itself.
    if (text.find(',', 1) == std::string_view::npos)
        return {Trim(text)};
    for (size_t comma = 0; comma != std::string_view::npos; text.remove_prefix(comma + 1)) {
        comma = text.find(',');
        pieces.push_back(Trim(text.substr(0, comma)));
        if (comma == std::string_view::npos)
            break;
    }
    return pieces;
}

std::string WithKeyWord(std::string_view text, std::string_view name) {
    const std::vector<std::string_view> pieces = SplitKeyWords(text);
    if (std::any_of(pieces.begin(), pieces.end(), [&](std::string_view piece) { return IsSameText(piece, name); }))
        return std::string(text);
    // A separator that the user left at the end would make an empty key word.
    std::string_view line = Trim(text);
    while (!line.empty() && line.back() == ',')
        line = TrimRight(line.substr(0, line.size() - 1));
    return JoinTexts(std::string(line) + (line.empty() ? "" : ", "), name);
}

std::string WithoutKeyWord(std::string_view text, std::string_view name) {
    std::vector<std::string_view> pieces = SplitKeyWords(text);
    if (std::erase_if(pieces, [&](std::string_view piece) { return IsSameText(piece, name); }) == 0)
        return std::string(text);
    std::string line;
    for (const std::string_view& piece : pieces) {
        if (&piece != pieces.data())
            line += ", ";
        line += piece;
    }
    return line;
}

const CKeyWord* CKeyWordList::FindKeyWord(size_t position) const {
    return position < entries_.size() ? &entries_[position] : nullptr;
}

const CKeyWord* CKeyWordList::FindByName(std::string_view name) const {
    const auto found = positions_.find(ToUtf8(name));
    return found == positions_.end() ? nullptr : &entries_[found->second];
}

void CKeyWordList::AddKeyWordsOfNote(std::string_view text, int32_t note) {
    const bool isNew = added_.Add(note);
    for (const std::string_view piece : SplitKeyWords(text)) {
        LongList& notes = NotesOf(piece);
        if (!isNew)
            notes.AddUnique(note);
        else if (notes.IsEmpty() || notes[notes.Count() - 1] != note)
            notes.AddTail(note);
    }
}

LongList& CKeyWordList::NotesOf(std::string_view name) {
    const auto [place, isNew] = positions_.emplace(ToUtf8(name), entries_.size());
    if (isNew)
        entries_.emplace_back().name = name;
    return entries_[place->second].notes;
}

void CKeyWordList::RemoveNote(int32_t note) {
    RemoveNotes(LongList{note});
}

void CKeyWordList::RemoveNotes(const LongList& notes) {
    const size_t gone = std::erase_if(
        entries_, [&](CKeyWord& entry) { return RemoveEach(entry.notes, notes) && entry.notes.IsEmpty(); });
    if (gone > 0)
        Reindex();
}

void CKeyWordList::Reindex() {
    positions_.clear();
    for (size_t i = 0; i < entries_.size(); ++i)
        positions_.emplace(ToUtf8(entries_[i].name), i);
}

void CKeyWordList::SortKeyWords() {
    std::vector<std::string> lowered;
    lowered.reserve(entries_.size());
    for (const CKeyWord& entry : entries_)
        lowered.push_back(ToLower(entry.name));
    // From the last to the first, so that a stable sort puts the later of two equal names in front.
    std::vector<size_t> order(entries_.size());
    std::iota(order.rbegin(), order.rend(), size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) { return lowered[a] < lowered[b]; });
    std::vector<CKeyWord> sorted;
    sorted.reserve(entries_.size());
    for (const size_t position : order)
        sorted.push_back(std::move(entries_[position]));
    entries_ = std::move(sorted);
    Reindex();
}

void CKeyWordList::NumberEntries(int32_t note) {
    for (size_t i = 0; i < entries_.size(); ++i) {
        entries_[i].id = static_cast<int32_t>(i);
        entries_[i].selected = entries_[i].notes.Contains(note);
    }
}

}  // namespace lore
