#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "notes/note_book_loader.h"
#include "notes/search_folded.h"
#include "notes/search_match.h"

namespace lore {

/// The searchable texts of the open NoteBook, kept in memory as far as a budget allows. It fills itself while a
/// NoteBook is loaded (LoadOptions::texts); Attach ends that. Afterwards whoever rewrites a note file calls UpdateFile.
class TextCache : public NoteTextSink {
public:
    static constexpr size_t kDefaultBudget = size_t{512} << 20;
    /// `budget`: bytes of text that may be held. A file whose texts would go over it isn't held.
    explicit TextCache(size_t budget = kDefaultBudget) : budget_(budget) {}
    /// For what is taken from now on.
    void SetBudget(size_t budget) { budget_ = budget; }

    void Begin(size_t fileCount) override;
    void Take(NotePlace place, int32_t noteId, std::string_view rtfText) override;
    void EndFile(size_t file) override;
    void Finish(const std::vector<ShownNote>& shown) override;
    /// After a load: the full path of each of its files, in the order of LoadReport::files.
    void Attach(const std::vector<std::string>& paths);

    /// Takes the texts of a file that was written in place of those that it had. `shown` says which of its notes show;
    /// the others aren't found. Empty: all.
    void UpdateFile(const std::string& path, const std::vector<CNote>& notes, const std::vector<bool>& shown = {});
    void RemoveFile(const std::string& path);
    void Clear();

    bool HoldsFile(const std::string& path) const { return files_.contains(path); }
    /// The folded plain text of a note, or nothing if it isn't held.
    std::optional<std::string_view> TextOf(int32_t id) const;
    /// How many bytes of text are held.
    size_t Bytes() const { return bytes_; }

    /// The notes of a file that match, in file order; nothing if the file isn't held.
    std::optional<std::vector<int32_t>> SearchFile(const std::string& path, const NoteMatcher& matcher) const;

private:
    struct Loading {
        FoldedTexts texts;
        bool overBudget = false;
    };
    struct Place {
        const FoldedTexts* file;
        uint32_t slice;
    };
    void Hold(const std::string& path, FoldedTexts texts);
    bool Reserve(size_t bytes);

    size_t budget_;
    std::atomic<size_t> bytes_ = 0;
    std::vector<Loading> loading_;
    std::map<std::string, FoldedTexts> files_;  // by path, which is the order of reading
    std::unordered_map<int32_t, Place> places_;
};

}  // namespace lore
