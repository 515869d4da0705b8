#include "soak/soak_model.h"

#include <algorithm>

namespace lore {

bool StartsWith(const Path& path, const Path& start) {
    return path.size() >= start.size() && std::equal(start.begin(), start.end(), path.begin());
}

ModelNote* ModelBook::FindByID(int32_t id) {
    const auto found =
        std::find_if(notes.begin(), notes.end(), [id](const auto& entry) { return entry.second.id == id; });
    return found == notes.end() ? nullptr : &found->second;
}

ModelChange::Part ModelChange::What() const {
    return former.color != given.color         ? Part::Color
           : former.keyWords != given.keyWords ? Part::KeyWords
           : former.sources != given.sources   ? Part::Sources
                                               : Part::Paths;
}

const Path& ModelChange::FormerPath() const {
    return *std::mismatch(former.paths.begin(), former.paths.end(), given.paths.begin()).first;
}

void ModelBook::BlockUndoOf(int32_t note) {
    const auto namesIt = [note](const ModelChange& change) {
        return change.given.id == note && change.What() >= ModelChange::Part::Paths;
    };
    for (const ModelUndo& undo : undoables)
        undoIsBlocked = undoIsBlocked || undo.landed.contains(note) ||
                        std::any_of(undo.changes.begin(), undo.changes.end(), namesIt);
}

void ModelBook::AddCategory(const Path& path) {
    for (size_t length = 1; length <= path.size(); ++length)
        categories.insert(Path(path.begin(), path.begin() + static_cast<std::ptrdiff_t>(length)));
}

void ModelBook::AddCategoriesOf(const ModelNote& note) {
    for (const Path& path : note.paths)
        AddCategory(path);
}

ModelSources ModelBook::SourcesOf(const ModelNotes& some) const {
    ModelSources found;
    for (const auto& [name, note] : some)
        for (const std::string& guid : note.sources)
            found.emplace(guid, sources.at(guid));
    return found;
}

std::set<int32_t> ModelBook::NotesBelow(const Path& path, int set) const {
    std::set<int32_t> ids;
    for (const auto& [guid, note] : notes)
        for (int i = 0; i < kSetCount; ++i)
            if (SelectsSet(set, i) && StartsWith(note.paths[static_cast<size_t>(i)], path))
                ids.insert(note.id);
    return ids;
}

std::set<int32_t> ModelBook::Unassigned(int set) const {
    std::set<int32_t> ids;
    for (const auto& [guid, note] : notes) {
        bool none = true;
        for (int i = 0; i < kSetCount; ++i)
            none = none && (!SelectsSet(set, i) || note.paths[static_cast<size_t>(i)].empty());
        if (none)
            ids.insert(note.id);
    }
    return ids;
}

}  // namespace lore
