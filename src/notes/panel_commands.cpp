#include "notes/panel_commands.h"

#include <algorithm>

namespace lore {

namespace {

using Action = PanelAction;
using Scope = PanelScope;

constexpr PanelCommand kCategoryCommands[] = {
    {Action::Gather, Scope::All, "Get Notes With This Category"},
    {Action::Gather, Scope::OnlyAtLevel, "Get Notes Only At This Level"},
    {Action::Gather, Scope::OnlyInEntries, "Get Notes Only In Subcategories"},
    {Action::TakeOut, Scope::OnlyAtLevel, "Remove Notes Only At This Level"},
    {Action::AddNote, Scope::All, "Add Note To Level"},
    {Action::SetColor, Scope::OnlyAtLevel, "Set Border Color of Notes Only At This Level"},
    {Action::SetColor, Scope::All, "Set Border Color of All Notes With This Category"},
    {Action::Copy, Scope::All, "Copy All Notes With This Category To NoteBook"},
    {Action::Print, Scope::OnlyAtLevel, "Print Notes Only At This Level"},
    {Action::Print, Scope::All, "Print All Notes With This Category"},
    {Action::Export, Scope::OnlyAtLevel, "Export Notes Only At This Level"},
    {Action::Export, Scope::All, "Export All Notes With This Category"},
    {Action::Delete, Scope::OnlyAtLevel, "Delete Notes Only At This Level"},
    {Action::Delete, Scope::All, "Delete All Notes With This Category"},
    {Action::ClearTree, Scope::All, "Clear Current Tree"},
};
constexpr PanelCommand kSourceCommands[] = {
    {Action::Gather, Scope::All, "Get All Notes From This Source"},
    {Action::TakeOut, Scope::All, "Remove All Notes From This Source"},
    {Action::AddNote, Scope::All, "Add Note To Source"},
    {Action::SetColor, Scope::All, "Set Border Color of Notes From This Source"},
    {Action::Copy, Scope::All, "Copy Notes From This Source To NoteBook"},
    {Action::Print, Scope::All, "Print Notes From This Source"},
    {Action::Export, Scope::All, "Export Notes From This Source"},
    {Action::Delete, Scope::All, "Delete Notes From This Source"},
};
constexpr PanelCommand kKeyWordCommands[] = {
    {Action::Gather, Scope::All, "Get All Notes With This Key Word"},
    {Action::TakeOut, Scope::All, "Remove All Notes With This Key Word"},
    {Action::AddNote, Scope::All, "Add Note To Key Word"},
    {Action::AttachKeyWord, Scope::All, "Attach All Notes In List To This Key Word"},
    {Action::RemoveKeyWord, Scope::All, "Remove Key Word From All Notes In List"},
    {Action::SetColor, Scope::All, "Set Border Color of Notes With This Key Word"},
    {Action::Copy, Scope::All, "Copy Notes With This Key Word To NoteBook"},
    {Action::Print, Scope::All, "Print Notes With This Key Word"},
    {Action::Export, Scope::All, "Export Notes With This Key Word"},
    {Action::Delete, Scope::All, "Delete Notes With This Key Word"},
};
constexpr PanelCommand kColorCommands[] = {
    {Action::Gather, Scope::All, "Get All Notes With This Color"},
    {Action::TakeOut, Scope::All, "Remove All Notes With This Color"},
    {Action::AddNote, Scope::All, "Add Note To Color"},
    {Action::SetListColor, Scope::All, "Set All Notes In List To This Color"},
    {Action::RemoveListColor, Scope::All, "Remove This Color From All Notes In List"},
    {Action::Copy, Scope::All, "Copy Notes With This Color To NoteBook"},
    {Action::Print, Scope::All, "Print Notes With This Color"},
    {Action::Export, Scope::All, "Export Notes With This Color"},
    {Action::Delete, Scope::All, "Delete Notes With This Color"},
};
constexpr PanelCommand kCategoryAreaCommands[] = {
    {Action::SelectAll, Scope::All, "Select All"},
    {Action::ClearAll, Scope::All, "Clear All"},
};

constexpr PanelChoice kCategorySets[] = {
    {kAllSets, "All Categories"}, {1, "Category Set 1"}, {2, "Category Set 2"}, {3, "Category Set 3"}};
constexpr PanelChoice kSourceGroupings[] = {{static_cast<int32_t>(SourceGrouping::Author), "Authors"},
                                            {static_cast<int32_t>(SourceGrouping::Publication), "Publications"},
                                            {static_cast<int32_t>(SourceGrouping::Title), "Titles"}};

bool IsChoice(std::span<const PanelChoice> choices, int32_t number) {
    return std::any_of(choices.begin(), choices.end(), [&](const PanelChoice& c) { return c.number == number; });
}

}  // namespace

std::span<const PanelCommand> PanelCommands(PanelKind panel) {
    switch (panel) {
        case PanelKind::Categories:
            return kCategoryCommands;
        case PanelKind::Sources:
            return kSourceCommands;
        case PanelKind::KeyWords:
            return kKeyWordCommands;
        default:
            return kColorCommands;
    }
}

std::vector<PanelCommand> EntryCommands(PanelKind panel, const PanelEntry& entry, bool hasOtherNoteBooks) {
    const bool takesNotes = entry.value != PanelValue::NoSource && entry.value != PanelValue::SourceGroup &&
                            !(entry.value == PanelValue::Category && entry.id == kUnassignedID);
    std::vector<PanelCommand> commands;
    for (const PanelCommand& command : PanelCommands(panel)) {
        if ((command.action != Action::AddNote || takesNotes) && (command.action != Action::Copy || hasOtherNoteBooks))
            commands.push_back(command);
    }
    return commands;
}

std::span<const PanelCommand> AreaCommands(PanelKind panel) {
    return panel == PanelKind::Categories ? std::span<const PanelCommand>(kCategoryAreaCommands)
                                          : std::span<const PanelCommand>();
}

PanelFamily FamilyOf(PanelAction action) {
    if (action <= Action::TakeOut)
        return PanelFamily::List;
    if (action <= Action::SetColor)
        return PanelFamily::Values;
    if (action <= Action::Export)
        return PanelFamily::Output;
    return action == Action::Delete ? PanelFamily::Delete : PanelFamily::Tree;
}

PanelNeed NeedOf(PanelAction action) {
    if (action == Action::AddNote)
        return PanelNeed::FocusNote;
    return action >= Action::AttachKeyWord && action <= Action::RemoveListColor ? PanelNeed::CurrentList
                                                                                : PanelNeed::Notes;
}

std::span<const PanelChoice> CategorySetChoices() {
    return kCategorySets;
}
std::span<const PanelChoice> SourceGroupingChoices() {
    return kSourceGroupings;
}

int CategorySetOf(int32_t stored) {
    return IsChoice(kCategorySets, stored) ? stored : kAllSets;
}

SourceGrouping SourceGroupingOf(int32_t stored) {
    return IsChoice(kSourceGroupings, stored) ? static_cast<SourceGrouping>(stored) : SourceGrouping::Title;
}

}  // namespace lore
