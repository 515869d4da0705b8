#include <algorithm>

#include "app/category_editing.h"
#include "base/text.h"
#include "soak/soak_world.h"

namespace lore {

namespace {

constexpr size_t kMostCategories = 60;

/// The trees as the dialog has them at one moment.
struct Trees {
    std::set<Path> categories;
    std::map<std::string, std::array<Path, kSetCount>> paths;  // of notes, by GUID

    bool HasChild(const Path& parent, const std::string& name) const {
        Path child = parent;
        child.push_back(name);
        return categories.contains(child);
    }
    /// Everything at and below a category goes elsewhere, onto what may stand there.
    void Replace(const Path& from, const Path& to) {
        const auto moved = [&](const Path& path) {
            Path now = to;
            now.insert(now.end(), path.begin() + static_cast<std::ptrdiff_t>(from.size()), path.end());
            return now;
        };
        std::set<Path> replaced;
        for (const Path& path : categories)
            replaced.insert(StartsWith(path, from) ? moved(path) : path);
        categories = std::move(replaced);
        for (auto& [guid, sets] : paths)
            for (Path& path : sets)
                if (StartsWith(path, from))
                    path = moved(path);
    }
    void Unassign(const Path& from, int set) {
        for (auto& [guid, sets] : paths)
            for (int i = 0; i < kSetCount; ++i)
                if (SelectsSet(set, i) && StartsWith(sets[static_cast<size_t>(i)], from))
                    sets[static_cast<size_t>(i)].clear();
    }
    /// The notes without category in the view get one in a set. False if there are none.
    bool AssignUnassigned(const Path& to, int view) {
        bool any = false;
        for (auto& [guid, sets] : paths) {
            bool none = true;
            for (int i = 0; i < kSetCount; ++i)
                none = none && (!SelectsSet(view, i) || sets[static_cast<size_t>(i)].empty());
            if (none)
                sets[static_cast<size_t>(view == kAllSets ? 0 : view - 1)] = to;
            any = any || none;
        }
        return any;
    }
    void Erase(const Path& path) {
        std::erase_if(categories, [&](const Path& one) { return StartsWith(one, path); });
    }
};

class TreeWork {
public:
    TreeWork(Soak& soak, CategoryTrees& trees) : soak_(soak), trees_(trees) {
        for (const auto& [guid, note] : soak.Open().notes)
            now_.paths[guid] = note.paths;
        now_.categories = soak.Open().categories;
    }

    void Step() {
        const size_t kind = soak_.Below(9);
        const bool isFull = now_.categories.size() > kMostCategories;
        if (kind == 0 && (undo_.size() + redo_.size()) > 0)
            return GoBackOrForth();
        trees_.SetView(static_cast<int>(soak_.Below(4)));
        if (now_.categories.empty() || (kind == 1 && !isFull))
            return Create({});
        const Path path = soak_.AnyOf(now_.categories);
        if (isFull || kind == 2)
            return Delete(path);
        if (kind == 3)
            return Create(path);
        if (kind == 4)
            return Rename(path);
        if (kind == 5)
            return Unassign(path);
        if (kind == 6)
            return Assign(path);
        Move(path, soak_.Chance(20) ? Path() : soak_.AnyOf(now_.categories));
    }
    const Trees& Now() const { return now_; }
    /// Whether a note that may come back, or get back what it had, was filed in or below a category that has another
    /// path since.
    bool HasMovedPathOf(const std::vector<ModelUndo>& undoables) const {
        return std::any_of(undoables.begin(), undoables.end(), [this](const ModelUndo& undo) {
            return std::any_of(undo.notes.begin(), undo.notes.end(),
                               [this](const auto& it) { return HasMoved(it.second); }) ||
                   std::any_of(undo.changes.begin(), undo.changes.end(),
                               [this](const ModelChange& change) { return HasMoved(change.former); });
        });
    }

    /// A category that has gone takes the way back with it, also if one of its name and place is made later.
    void MarkGone(ModelBook& book) const {
        for (ModelUndo& undo : book.undoables)
            for (ModelChange& change : undo.changes) {
                if (change.What() != ModelChange::Part::Paths || !IsBelowAny(change.FormerPath(), deleted_))
                    continue;
                change.formerIsGone = !now_.categories.contains(change.FormerPath());
                // It was made again in the dialog, or its deletion was undone there.
                book.undoIsBlocked = book.undoIsBlocked || !change.formerIsGone;
            }
    }

private:
    static bool IsBelowAny(const Path& path, const std::vector<Path>& some) {
        return std::any_of(some.begin(), some.end(), [&](const Path& one) { return StartsWith(path, one); });
    }
    bool HasMoved(const ModelNote& note) const {
        return std::any_of(note.paths.begin(), note.paths.end(),
                           [this](const Path& path) { return IsBelowAny(path, moved_); });
    }
    int32_t IdOf(const Path& path) const {
        const std::vector<CProCategoryTree>* siblings = &trees_.Forest().Roots();
        int32_t id = -1;
        for (const std::string& name : path)
            for (const CProCategoryTree& node : *siblings)
                if (node.name == name) {
                    id = node.id;
                    siblings = &node.children;
                    break;
                }
        soak_.Require(id > 0, "a category of the dialog is missing");
        return id;
    }
    void Keep() {
        undo_.push_back(now_);
        redo_.clear();
    }
    void Told(const CategoryTrees::Changed& changed, bool wanted, const std::string& what) {
        soak_.Note("    " + what);
        soak_.Require(changed.has_value() == wanted, what + (wanted ? " was refused" : " wasn't refused"));
    }
    void GoBackOrForth() {
        const bool back = redo_.empty() || (!undo_.empty() && soak_.Chance(60));
        std::vector<Trees>&from = back ? undo_ : redo_, &to = back ? redo_ : undo_;
        to.push_back(now_);
        now_ = from.back();
        from.pop_back();
        back ? trees_.Undo() : trees_.Redo();
        soak_.Note(back ? "    undo" : "    redo");
    }
    void Create(const Path& parent) {
        const std::string name = soak_.AnyName();
        const bool isTaken = now_.HasChild(parent, name);
        soak_.prompts.texts = {name};
        const auto changed = parent.empty() ? trees_.CreateRoot() : trees_.CreateSubcategory(IdOf(parent));
        Told(changed, !isTaken, "create " + name);
        if (isTaken)
            return;
        Keep();
        Path made = parent;
        made.push_back(name);
        now_.categories.insert(made);
    }
    void Rename(const Path& path) {
        const std::string name = soak_.AnyName();
        const Path parent(path.begin(), path.end() - 1);
        const bool isTaken = now_.HasChild(parent, name);
        soak_.prompts.texts = {name};
        Told(trees_.RenameCategory(IdOf(path)), !isTaken, "rename " + path.back() + " to " + name);
        if (isTaken)
            return;
        Keep();
        Path renamed = parent;
        renamed.push_back(name);
        now_.Replace(path, renamed);
        moved_.push_back(path);
    }
    void Delete(const Path& path) {
        soak_.SayYes();
        Told(trees_.DeleteCategory(IdOf(path)), true, "delete " + path.back());
        Keep();
        now_.Unassign(path, kAllSets);
        now_.Erase(path);
        deleted_.push_back(path);
    }
    void Unassign(const Path& path) {
        bool any = false;
        for (const auto& [guid, sets] : now_.paths)
            for (int i = 0; i < kSetCount; ++i)
                any = any || (SelectsSet(trees_.View(), i) && StartsWith(sets[static_cast<size_t>(i)], path));
        soak_.SayYes();
        Told(trees_.DropOn(IdOf(path), kUnassignedID), any, "unassign " + path.back());
        if (!any)
            return;
        Keep();
        now_.Unassign(path, trees_.View());
    }
    void Assign(const Path& path) {
        Trees next = now_;
        const bool any = next.AssignUnassigned(path, trees_.View());
        soak_.SayYes();
        Told(trees_.DropOn(kUnassignedID, IdOf(path)), any, "assign to " + path.back());
        if (!any)
            return;
        Keep();
        now_ = std::move(next);
    }
    void Move(const Path& path, const Path& parent) {
        const bool isMoved = !StartsWith(parent, path) && parent != Path(path.begin(), path.end() - 1);
        soak_.SayYes();
        const auto changed =
            parent.empty() ? trees_.DropOnEmptyArea(IdOf(path)) : trees_.DropOn(IdOf(path), IdOf(parent));
        Told(changed, isMoved, "move " + path.back() + " to " + (parent.empty() ? "the roots" : parent.back()));
        if (!isMoved)
            return;
        Keep();
        Path moved = parent;
        moved.push_back(path.back());
        now_.Replace(path, moved);
        moved_.push_back(path);
    }

    Soak& soak_;
    CategoryTrees& trees_;
    Trees now_;
    std::vector<Trees> undo_, redo_;
    std::vector<Path> moved_, deleted_;
};

bool EditTrees(Soak& soak) {
    CategoryEditing editing(soak.App(), soak.Commands());
    TreeWork work(soak, editing.Model());
    for (size_t steps = 1 + soak.Below(5); steps > 0; --steps)
        work.Step();
    if (soak.Chance(10))
        return true;  // the dialog is cancelled
    soak.Require(editing.Save(), "the categories weren't saved");
    ModelBook& book = soak.Open();
    book.undoIsBlocked = book.undoIsBlocked || work.HasMovedPathOf(book.undoables);
    work.MarkGone(book);
    book.categories = work.Now().categories;
    for (auto& [guid, note] : book.notes)
        if (const auto& paths = work.Now().paths.at(guid); paths != note.paths) {
            note.paths = paths;
            note.version = soak.NewVersion();
            book.BlockUndoOf(note.id);  // a later edit may bring it back to the form in which it has landed
            if (soak.Chance(20))
                soak.CheckNote(guid);
        }
    return true;
}

}  // namespace

std::span<const SoakAction> CategoryActions() {
    static constexpr SoakAction actions[] = {{"edit the category trees", 40, EditTrees}};
    return actions;
}

}  // namespace lore
