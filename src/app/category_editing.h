#pragma once

#include "app/writing_commands.h"
#include "edit/category_trees.h"

namespace lore {

/// What the dialog "Edit Category Trees" works with, for the time that it is open.
class CategoryEditing {
public:
    /// Both outlive the editing.
    CategoryEditing(CLorebinderApp& app, WritingCommands& commands);
    /// The ids that were given out stay given out, whether or not anything was saved.
    ~CategoryEditing();
    CategoryEditing(const CategoryEditing&) = delete;
    CategoryEditing& operator=(const CategoryEditing&) = delete;

    CategoryTrees& Model() { return trees_; }
    /// Saves the trees and every note that they touch; the current list follows. False if nothing could be saved, and
    /// the dialog stays open.
    bool Save();
    /// True if the trees may be dropped: nothing was changed, or the user says so.
    bool MayDrop();

private:
    void StoreCounter();

    CLorebinderApp& app_;
    WritingCommands& commands_;
    int maxCategoryID_;
    CategoryTrees trees_;
};

}  // namespace lore
