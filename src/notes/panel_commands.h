#pragma once

#include <cstdint>
#include <span>

#include "bibliography/source_groups.h"
#include "notes/panel_entries.h"

namespace lore {

/// The four panels, in the order of their tabs.
enum class PanelKind { Categories, Sources, KeyWords, Colors };

enum class PanelAction {
    Gather,  ///< the notes are added to the current list
    TakeOut  ///< the notes leave the current list
};

/// Which notes of an entry a command works on.
enum class PanelScope {
    All,           ///< the notes of the entry and of all below it
    OnlyAtLevel,   ///< those that no entry below it has
    OnlyInEntries  ///< those of the entries below it
};

/// One line of a panel's context menu.
struct PanelCommand {
    PanelAction action;
    PanelScope scope;
    const char* text;
};

/// The commands of a panel's entries, in the order of the menu. They hold for `<NO_SOURCE>` too.
std::span<const PanelCommand> PanelCommands(PanelKind panel);

/// One line of the choice above a panel, with the number that the settings keep.
struct PanelChoice {
    int32_t number;
    const char* text;
};

/// "Show Category Set:" and "Show Sources By:".
inline constexpr char kCategorySetLabel[] = "Show Category Set:";
inline constexpr char kSourceGroupingLabel[] = "Show Sources By:";
std::span<const PanelChoice> CategorySetChoices();
std::span<const PanelChoice> SourceGroupingChoices();

/// The set or grouping for a stored number; all sets and titles for a number that is none.
int CategorySetOf(int32_t stored);
SourceGrouping SourceGroupingOf(int32_t stored);

}  // namespace lore
