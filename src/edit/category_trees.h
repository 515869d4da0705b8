#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

#include "classify/category_list.h"
#include "ports/prompts.h"

namespace lore {

/// "Edit Category Trees": changes a copy of the forest. Nothing reaches the NoteBook before the copy is saved.
/// Each command asks what it needs to know, and gives the category to go to, or nothing where nothing was changed.
class CategoryTrees {
public:
    using Changed = std::optional<int32_t>;

    /// `maxCategoryID` is the stored counter. It is raised by ids that are given out, and stays raised if the copy is
    /// dropped.
    CategoryTrees(const CProCategoryList& master, int& maxCategoryID, Prompts& prompts);

    const CProCategoryList& Forest() const { return forest_; }
    bool IsChanged() const { return !undo_.empty(); }
    /// The category set in view, which commands on notes work on: 1 to 3, or kAllSets.
    int View() const { return view_; }
    void SetView(int set) { view_ = set; }
    /// "Lenses  (12)".
    static std::string NodeText(const std::string& name, size_t notes);

    /// `<UNASSIGNED>` is no category that can be changed.
    static bool CanChange(int32_t id) { return id > 0 && id != kUnassignedID; }
    Changed RenameCategory(int32_t id);
    Changed CreateSubcategory(int32_t parentID);
    Changed CreateRoot();
    Changed DeleteCategory(int32_t id);

    /// A node is dropped on another one. Categories move below the target, or merge with its child of the same name;
    /// `<UNASSIGNED>` on a category files the notes there, a category on `<UNASSIGNED>` unassigns its notes.
    Changed DropOn(int32_t id, int32_t targetId);
    /// A node is dropped where no node stands: a category becomes a root, `<UNASSIGNED>` a new root with its notes.
    Changed DropOnEmptyArea(int32_t id);

    bool CanUndo() const { return !undo_.empty(); }
    bool CanRedo() const { return !redo_.empty(); }
    void Undo() { Step(undo_, redo_); }
    void Redo() { Step(redo_, undo_); }

private:
    using Steps = std::deque<CProCategoryList>;

    std::optional<std::string> AskName(const std::string& title, const std::string& initial, int32_t parentID,
                                       int32_t self);
    /// After a question: another command may have changed the forest meanwhile.
    bool Has(int32_t id) const { return forest_.FindByID(id); }
    bool IsTaken(const std::string& name, int32_t parentID, int32_t self) const;
    Changed Create(int32_t parentID, const std::string& name);
    Changed Move(int32_t id, int32_t parentID);
    bool AgreesToMerge(const CProCategoryTree& moved, const CProCategoryTree& existing);
    Changed AssignUnassigned(int32_t targetId);
    Changed UnassignCategory(const CProCategoryTree& node);
    LongList UnassignedInView() const;
    int SetOfView() const { return view_ == kAllSets ? 1 : view_; }
    /// Keeps the forest as it is now for Undo.
    void Keep();
    void Step(Steps& from, Steps& to);

    CProCategoryList forest_;
    int& maxCategoryID_;
    Prompts& prompts_;
    int view_ = kAllSets;
    Steps undo_, redo_;
    size_t mostSteps_;
};

}  // namespace lore
