#include "notes/note_brief.h"

namespace lore {

namespace {

/// A path that leads to the same category as the one that a brief was made from.
CProCategoryTree PathTo(const CategoryPlace& place) {
    CProCategoryTree path(place.id, {});
    if (!place.isEmpty && place.id < 1)
        path.children.emplace_back();  // without a child it would count as empty
    return path;
}

}  // namespace

NoteBrief MakeNoteBrief(const CNote& note) {
    NoteBrief brief;
    brief.id = note.id;
    brief.color = note.borderColor;
    brief.sources = note.sources;
    brief.keyWords = note.keyWords;
    brief.categories = CategoryPlaces(note);
    return brief;
}

std::array<CategoryPlace, kSetCount> CategoryPlaces(const CNote& note) {
    std::array<CategoryPlace, kSetCount> places;
    for (size_t set = 0; set < kSetCount; ++set) {
        const CProCategoryTree& path = note.categories[set];
        places[set] = {DeepestCategoryID(path), path.IsEmptyPath()};
    }
    return places;
}

void FileBrief(OpenNoteBook& book, const NoteBrief& note) {
    bool hasSource = false;
    for (const int32_t source : note.sources) {
        hasSource = hasSource || book.sources.FindSourceByID(source);
        book.sources.AddNoteID(source, note.id);
    }
    if (!hasSource)
        book.notesWithoutSource.AddUnique(note.id);
    for (size_t set = 0; set < kSetCount; ++set)
        book.categories.IndexNote(note.id, PathTo(note.categories[set]), static_cast<int>(set) + 1);
    book.keyWords.AddKeyWordsOfNote(note.keyWords, note.id);
    book.colors.AddNoteToColor(note.id, note.color);
}

}  // namespace lore
