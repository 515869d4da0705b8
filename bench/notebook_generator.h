#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "base/file_io.h"
#include "bench/word_maker.h"
#include "classify/category_list.h"
#include "notes/note.h"

namespace lore {

inline constexpr int kNotesPerFile = 10;

/// Makes the notes of a NoteBook one after the other, 1 to 5 kB of text each. Ten follow each other in one file: in
/// turn the file of a source and that of a day. One note in a thousand, from the 418th on, holds "Heliotrope NEEDLE."
class NoteMaker {
public:
    explicit NoteMaker(uint32_t seed);

    CNote Next();
    /// The forest that the paths of the notes lead into.
    const CProCategoryList& Categories() const { return categories_; }

private:
    void MakeCategories();
    void AddText(CNote& note);
    std::vector<std::string> Paragraphs();
    CProCategoryTree Path();

    WordMaker words_;
    int32_t made_ = 0;
    CProCategoryList categories_;
    std::vector<std::string> keyWords_;
};

/// What became of a generated NoteBook.
struct GeneratedBook {
    std::filesystem::path notes;  ///< the folder of the note files
    uint64_t textBytes = 0;       ///< of all plain texts
    FileResult written;           ///< the first failure
};

struct GeneratorOptions {
    int32_t count = 1000;  ///< of notes, 1 to 1,000,000
    uint32_t seed = 20240607;
    int32_t listed = 200;  ///< how many notes the list of the last view names
};

/// Writes the main NoteBook of a data folder: notes, sources, authors, categories and the list of the last view.
GeneratedBook GenerateNoteBook(const std::filesystem::path& dataFolder, const GeneratorOptions& options);

/// Writes the texts of the same notes, a hundred folders of plain files, as a person would keep them. False if one
/// could not be written.
bool WriteTexts(const std::filesystem::path& folder, const GeneratorOptions& options);

}  // namespace lore
