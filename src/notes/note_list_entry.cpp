#include "notes/note_list_entry.h"

#include <algorithm>

#include "base/text.h"

namespace lore {

CitationText::CitationText(std::string text) {
    std::string folded = ToLower(text);
    shared_ = std::make_shared<const Shared>(Shared{std::move(text), std::move(folded)});
}

const CProCategoryTree* FindSortPath(const CNote& note) {
    const auto found =
        std::find_if(note.categories.begin(), note.categories.end(), [](const auto& path) { return path.id > 0; });
    return found == note.categories.end() ? nullptr : &*found;
}

std::shared_ptr<const CProCategoryTree> CopySortPath(const CNote& note) {
    const CProCategoryTree* const path = FindSortPath(note);
    return path ? std::make_shared<const CProCategoryTree>(*path) : nullptr;
}

void ListedNote::RenewSortPath() {
    const CProCategoryTree* const path = FindSortPath(*note);
    if (!path || !sortPath || !path->IsSameTree(*sortPath))
        sortPath = CopySortPath(*note);
}

}  // namespace lore
