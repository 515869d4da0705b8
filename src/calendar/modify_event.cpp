#include "calendar/modify_event.h"

namespace lore {

namespace {

constexpr ModifyEventTexts kDelete = {
    .title = "Deleting Recurring Event Series",
    .explanation =
        "You are deleting an event that is part of a recurring series, please choose how you would "
        "like to affect the series:",
    .seriesGroup = "Delete Series:",
    .entireSeries = "Delete Entire Event Series",
    .allFollowing = "Delete All Following Events in Series",
    .singleGroup = "Delete Single Event:",
    .onlyThis = "Delete Only This Event",
    .cancel = "Cancel Delete",
};
constexpr ModifyEventTexts kModify = {
    .title = "Modifying Recurring Event Series",
    .explanation =
        "You have changed an event in a recurring series, please choose how you would like "
        "these changes distributed:",
    .seriesGroup = "Apply to Series:",
    .entireSeries = "Apply to Entire Event Series",
    .allFollowing = "Apply to All Following Events in Series",
    .singleGroup = "Only This Event:",
    .onlyThis = "Apply Only to This Event",
    .cancel = "Cancel Changes",
};
constexpr ModifyEventTexts kReminders = {
    .title = "Adding/Updating Reminders in a Recurring Event Series",
    .explanation =
        "You have added/updated reminders of an event in a recurring series, please choose how to "
        "distribute these reminder changes:",
    .seriesGroup = "Add/Update Reminders to Series:",
    .entireSeries = "Add to Entire Event Series",
    .allFollowing = "Add to All Following Events in Series",
    .singleGroup = "Add/Update Reminders to this Event:",
    .onlyThis = "Add Only to This Event",
    .cancel = "",
};

}  // namespace

const ModifyEventTexts& TextsOf(ModifyEventMode mode) {
    switch (mode) {
        case ModifyEventMode::Delete:
            return kDelete;
        case ModifyEventMode::Modify:
            return kModify;
        case ModifyEventMode::Reminders:
            break;
    }
    return kReminders;
}

}  // namespace lore
