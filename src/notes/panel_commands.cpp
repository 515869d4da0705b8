#include "notes/panel_commands.h"

#include <algorithm>

namespace lore {

namespace {

constexpr PanelCommand kCategoryCommands[] = {
    {PanelAction::Gather, PanelScope::All, "Get Notes With This Category"},
    {PanelAction::Gather, PanelScope::OnlyAtLevel, "Get Notes Only At This Level"},
    {PanelAction::Gather, PanelScope::OnlyInEntries, "Get Notes Only In Subcategories"},
    {PanelAction::TakeOut, PanelScope::OnlyAtLevel, "Remove Notes Only At This Level"},
};
constexpr PanelCommand kSourceCommands[] = {
    {PanelAction::Gather, PanelScope::All, "Get All Notes From This Source"},
    {PanelAction::TakeOut, PanelScope::All, "Remove All Notes From This Source"},
};
constexpr PanelCommand kKeyWordCommands[] = {
    {PanelAction::Gather, PanelScope::All, "Get All Notes With This Key Word"},
    {PanelAction::TakeOut, PanelScope::All, "Remove All Notes With This Key Word"},
};
constexpr PanelCommand kColorCommands[] = {
    {PanelAction::Gather, PanelScope::All, "Get All Notes With This Color"},
    {PanelAction::TakeOut, PanelScope::All, "Remove All Notes With This Color"},
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
