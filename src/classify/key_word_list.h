#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/id_marks.h"
#include "base/long_list.h"

namespace lore {

/// Stands in a list of note ids for the text that is in an edit field now. It is no note and never stands in a file.
inline constexpr int32_t kPseudoNote = 46942112;

/// A free tag with the notes that carry it.
struct CKeyWord {
    int32_t id = -1;  ///< the position that the last listing gave it; not stable
    std::string name;
    LongList notes;
    bool selected = false;  ///< state in a listing
};

/// All key words of a NoteBook, computed from the lines of its notes. Names differ by case. One key word may be UTF-8
/// in one line and Windows-1252 in another; its name has the form that was met first.
class CKeyWordList {
public:
    const std::vector<CKeyWord>& Entries() const { return entries_; }
    size_t Count() const { return entries_.size(); }
    bool IsEmpty() const { return entries_.empty(); }
    /// Null beyond the end.
    const CKeyWord* FindKeyWord(size_t position) const;
    /// The key word with exactly this name, or null.
    const CKeyWord* FindByName(std::string_view name) const;

    /// Parses a note's line of key words, separated by commas, and adds the note to each. New ones go to the end.
    void AddKeyWordsOfNote(std::string_view text, int32_t note);
    /// Takes a note out of every key word; a key word whose last note went is removed.
    void RemoveNote(int32_t note);
    /// The same for many notes in one walk.
    void RemoveNotes(const LongList& notes);
    /// Sorts by the lower-cased names; of two names equal but for case, the later one comes to stand first.
    void SortKeyWords();
    /// Sets the `id` of each entry to its position, and `selected` where its notes hold `note`.
    void NumberEntries(int32_t note = kPseudoNote);

private:
    LongList& NotesOf(std::string_view name);
    void Reindex();

    std::vector<CKeyWord> entries_;
    std::unordered_map<std::string, size_t> positions_;  // by name, as UTF-8
    IDMarks added_;                                      // notes whose line was ever added; no entry holds another note
};

/// The pieces of a line of key words as AddKeyWordsOfNote takes them: trimmed, empty ones between commas included.
std::vector<std::string_view> SplitKeyWords(std::string_view text);

/// The line with one more key word after ", ", or as it is if it holds the key word.
std::string WithKeyWord(std::string_view text, std::string_view name);
/// The line without a key word, the others joined with ", "; as it is if it doesn't hold the key word.
std::string WithoutKeyWord(std::string_view text, std::string_view name);

}  // namespace lore
