#include "app/category_editing.h"

#include "edit/category_changes.h"

namespace lore {

CategoryEditing::CategoryEditing(CLorebinderApp& app, WritingCommands& commands)
    : app_(app),
      commands_(commands),
      maxCategoryID_(app.GetSettings().Int(Option::MaxCategoryID)),
      trees_(app.NoteBook().categories, maxCategoryID_, app.Ports().prompts) {}

CategoryEditing::~CategoryEditing() {
    StoreCounter();
}

void CategoryEditing::StoreCounter() {
    IdCounters counters = app_.Counters();
    if (counters.MaxCategoryID >= maxCategoryID_)
        return;
    counters.MaxCategoryID = maxCategoryID_;
    app_.StoreCounters(counters);
}

bool CategoryEditing::Save() {
    if (!trees_.IsChanged())
        return true;
    if (app_.TellIfClosed())
        return false;
    StoreCounter();
    Progress& progress = app_.Ports().progress;
    progress.ShowStandBy("Updating Category Changes....");
    const SavedCategories result = SaveCategoryTrees(commands_.World(), trees_.Forest(), &app_.List());
    if (!result.notes.changed.IsEmpty())
        app_.SortList();
    progress.HideStandBy();
    return result.saved;
}

bool CategoryEditing::MayDrop() {
    return !trees_.IsChanged() || app_.Ports().prompts.Ask("Do you wish to discard your changes to the category trees?",
                                                           "Discard Changes?") == PromptAnswer::Yes;
}

}  // namespace lore
