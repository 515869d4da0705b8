#include "edit/category_trees.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "classify/category_edit.h"

namespace lore {

namespace {

/// How many ids all steps of Undo may hold together, and the bounds of their number.
constexpr size_t kKeptIDs = size_t{24} << 20;
constexpr size_t kFewestSteps = 5, kMostSteps = 200;

size_t SizeOf(const CProCategoryTree& node) {
    constexpr size_t kNodeItself = 60;
    size_t size = kNodeItself;
    for (const LongList& notes : node.notes)
        size += notes.Count();
    for (const CProCategoryTree& child : node.children)
        size += SizeOf(child);
    return size;
}

size_t StepsFor(const CProCategoryList& forest) {
    size_t size = 1;
    for (const CProCategoryTree& root : forest.Roots())
        size += SizeOf(root);
    return std::clamp(kKeptIDs / size, kFewestSteps, kMostSteps);
}

std::string Level(int level) {
    return "Level " + std::to_string(level + 1);
}

std::string Quoted(const std::string& name) {
    return "\"" + name + "\"";
}

bool IsBelow(const CProCategoryTree* node, int32_t id) {
    while (node && node->id != id)
        node = node->parent;
    return node;
}

}  // namespace

CategoryTrees::CategoryTrees(const CProCategoryList& master, int& maxCategoryID, Prompts& prompts)
    : maxCategoryID_(maxCategoryID), prompts_(prompts), mostSteps_(StepsFor(master)) {
    forest_.Assign(master);
}

std::string CategoryTrees::NodeText(const std::string& name, size_t notes) {
    return name + "  (" + std::to_string(notes) + ")";
}

void CategoryTrees::Keep() {
    undo_.emplace_back().Assign(forest_);
    if (undo_.size() > mostSteps_)
        undo_.pop_front();
    redo_.clear();
}

void CategoryTrees::Step(Steps& from, Steps& to) {
    if (from.empty())
        return;
    to.emplace_back().Assign(forest_);
    forest_.Assign(from.back());
    from.pop_back();
}

bool CategoryTrees::IsTaken(const std::string& name, int32_t parentID, int32_t self) const {
    const CProCategoryTree* const parent = parentID < 0 ? nullptr : forest_.FindByID(parentID);
    const std::vector<CProCategoryTree>& siblings = parent ? parent->children : forest_.Roots();
    // `<UNASSIGNED>` is a sibling of the roots.
    return std::any_of(siblings.begin(), siblings.end(),
                       [&](const CProCategoryTree& node) { return node.id != self && EqualNoCase(node.name, name); });
}

/// A refused name is told, and stays in the field to be changed.
std::optional<std::string> CategoryTrees::AskName(const std::string& title, const std::string& initial,
                                                  int32_t parentID, int32_t self) {
    std::string name = initial;
    while (true) {
        name = CleanText(Trim(prompts_.AskText("New Name:", title, name).value_or(std::string())));
        if (name.empty())
            return std::nullopt;
        if (!IsTaken(name, parentID, self))
            return name;
        prompts_.Message("There is already a category at this level with the same name.", "Invalid Category Name",
                         PromptIcon::Warning);
    }
}

CategoryTrees::Changed CategoryTrees::RenameCategory(int32_t id) {
    const CProCategoryTree* const node = std::as_const(forest_).FindByID(id);
    if (!node || !CanChange(id))
        return std::nullopt;
    const std::string before = node->name;
    const auto name = AskName("Rename Category", before, node->parentID, id);
    if (!name || *name == before || !Has(id))
        return std::nullopt;
    Keep();
    forest_.FindByID(id)->name = *name;
    return id;
}

CategoryTrees::Changed CategoryTrees::Create(int32_t parentID, const std::string& name) {
    Keep();
    const int32_t id = forest_.NewId(maxCategoryID_);
    maxCategoryID_ = std::max(maxCategoryID_, id);
    HangSubtree(forest_, {id, name}, parentID);
    return id;
}

CategoryTrees::Changed CategoryTrees::CreateSubcategory(int32_t parentID) {
    const CProCategoryTree* const parent = std::as_const(forest_).FindByID(parentID);
    if (!parent || !CanChange(parentID))
        return std::nullopt;
    const auto name = AskName("New " + Level(parent->GetLevel() + 1) + " Category", {}, parentID, -1);
    return name && Has(parentID) ? Create(parentID, *name) : std::nullopt;
}

CategoryTrees::Changed CategoryTrees::CreateRoot() {
    const auto name = AskName("New " + Level(0) + " Category", {}, -1, -1);
    return name ? Create(-1, *name) : std::nullopt;
}

CategoryTrees::Changed CategoryTrees::DeleteCategory(int32_t id) {
    const CProCategoryTree* const node = std::as_const(forest_).FindByID(id);
    if (!node || !CanChange(id) ||
        prompts_.Ask("Do you wish to delete the " + Level(node->GetLevel()) + " category " + Quoted(node->name) +
                         ", and all its subcategories?",
                     "Delete Category?") != PromptAnswer::Yes ||
        !Has(id))
        return std::nullopt;
    const int32_t parentID = std::as_const(forest_).FindByID(id)->parentID;
    const int32_t above = parentID < 0 ? kUnassignedID : parentID;
    Keep();
    UnassignNotes(forest_, TakeSubtree(forest_, id).notes);
    return above;
}

bool CategoryTrees::AgreesToMerge(const CProCategoryTree& moved, const CProCategoryTree& existing) {
    const std::string level = Level(existing.GetLevel());
    const std::string under = existing.parent ? " under " + existing.parent->name + " that is" : std::string();
    return prompts_.Ask("There is already a " + level + " Category" + under + " named " + Quoted(existing.name) +
                            ".\n\nDo you wish to merge the " + Quoted(moved.name) +
                            " Category that is being moved with the existing " + Quoted(existing.name) + " Category?",
                        "Merge " + level + " Categories With Same Name?") == PromptAnswer::Yes;
}

CategoryTrees::Changed CategoryTrees::Move(int32_t id, int32_t parentID) {
    const CProCategoryTree* const node = std::as_const(forest_).FindByID(id);
    if (!node || !CanChange(id) || node->parentID == parentID)
        return std::nullopt;
    const CProCategoryTree* const parent = parentID < 0 ? nullptr : std::as_const(forest_).FindByID(parentID);
    const CProCategoryTree* const existing =
        parent ? parent->FindChildByName(node->name) : std::as_const(forest_).FindRootByName(node->name);
    // A question and the moving put the nodes in other places: from here on only ids count.
    const bool merges = existing != nullptr;
    const int32_t target = existing ? existing->id : id;
    if (merges && (existing->IsUnassigned() || !AgreesToMerge(*node, *existing) || !Has(id) || !Has(target) ||
                   IsBelow(std::as_const(forest_).FindByID(target), id)))
        return std::nullopt;
    Keep();
    const CProCategoryTree moved = TakeSubtree(forest_, id);
    if (merges)
        MergeSubtree(forest_, moved, target, maxCategoryID_);
    else
        HangSubtree(forest_, moved, parentID);
    return target;
}

LongList CategoryTrees::UnassignedInView() const {
    const CProCategoryTree* const unassigned = forest_.FindByID(kUnassignedID);
    return unassigned ? unassigned->GetNotes(view_) : LongList();
}

CategoryTrees::Changed CategoryTrees::AssignUnassigned(int32_t targetId) {
    const CProCategoryTree& target = *std::as_const(forest_).FindByID(targetId);
    const LongList notes = UnassignedInView();
    const std::string set = "Category Set " + std::to_string(SetOfView());
    const bool all = view_ == kAllSets;
    if (notes.IsEmpty() ||
        prompts_.Ask("Do you wish to assign all of the notes that are currently unassigned " +
                         (all ? std::string() : "for " + set + " ") + "to the category tree:\n\n" + set + "\n" +
                         target.GetPathText(),
                     "Moving All Unassigned " + (all ? std::string() : set + " ") + "Categories?") !=
            PromptAnswer::Yes ||
        !Has(targetId))
        return std::nullopt;
    Keep();
    AssignNotes(forest_, notes, SetOfView(), targetId);
    return targetId;
}

CategoryTrees::Changed CategoryTrees::UnassignCategory(const CProCategoryTree& node) {
    const std::string level = Level(node.GetLevel()) + " Category assigned to: " + Quoted(node.name) + "?";
    const std::string set = "Category Set " + std::to_string(view_);
    const std::string text =
        view_ == kAllSets
            ? "Do you wish to unassign the Category Sets of all the notes that have a Category "
              "Set with its " +
                  level
            : "Do you wish to unassign the " + set + " of all the notes that have their " + set + " - " + level;
    SetLists notes;
    bool any = false;
    for (int i = 0; i < kSetCount; ++i)
        if (SelectsSet(view_, i)) {
            notes[static_cast<size_t>(i)] = node.notes[static_cast<size_t>(i)];
            any = any || !notes[static_cast<size_t>(i)].IsEmpty();
        }
    const int32_t id = node.id;
    if (!any || prompts_.Ask(text, "Unassign Notes Category Set?") != PromptAnswer::Yes)
        return std::nullopt;
    Keep();
    UnassignNotes(forest_, notes);
    return id;
}

CategoryTrees::Changed CategoryTrees::DropOn(int32_t id, int32_t targetId) {
    const CProCategoryTree* const node = std::as_const(forest_).FindByID(id);
    const CProCategoryTree* const target = std::as_const(forest_).FindByID(targetId);
    if (!node || !target || IsBelow(target, id))
        return std::nullopt;
    if (node->IsUnassigned())
        return AssignUnassigned(targetId);
    return target->IsUnassigned() ? UnassignCategory(*node) : Move(id, targetId);
}

CategoryTrees::Changed CategoryTrees::DropOnEmptyArea(int32_t id) {
    if (id != kUnassignedID)
        return Move(id, -1);
    const LongList notes = UnassignedInView();
    if (notes.IsEmpty())
        return std::nullopt;
    const auto name = AskName("New " + Level(0) + " Category", {}, -1, -1);
    if (!name || prompts_.Ask("Do you wish to create a new Level 1 Category called " + Quoted(*name) +
                                  ",\n and move all its attached notes into it?",
                              "Create New Level 1 Category?") != PromptAnswer::Yes)
        return std::nullopt;
    const Changed made = Create(-1, *name);
    AssignNotes(forest_, notes, SetOfView(), *made);
    return made;
}

}  // namespace lore
