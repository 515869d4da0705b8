#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "bibliography/source_groups.h"
#include "notes/panel_entries.h"

namespace lore {

/// The four panels, in the order of their tabs.
enum class PanelKind { Categories, Sources, KeyWords, Colors };

/// What a command of a panel does. "The notes" are those of the entry that its scope names.
enum class PanelAction {
    Gather,           ///< the notes are added to the current list
    TakeOut,          ///< the notes leave the current list
    AddNote,          ///< the focus note gets the value
    AttachKeyWord,    ///< all notes of the current list get the key word
    RemoveKeyWord,    ///< all notes of the current list lose the key word
    SetListColor,     ///< all notes of the current list get the colour
    RemoveListColor,  ///< those notes of the current list that have this colour lose it
    SetColor,         ///< the notes get a colour that the user is asked for
    Copy,             ///< to another NoteBook
    Print,
    Export,
    Delete,
    ClearTree,  ///< the notes of the entry's whole tree leave the current list
    SelectAll,  ///< the notes of all entries are added to the current list
    ClearAll    ///< the notes of all entries leave the current list
};

/// Commands that belong together in a menu.
enum class PanelFamily { List, Values, Output, Delete, Tree };
PanelFamily FamilyOf(PanelAction action);
/// What a command can't do without.
enum class PanelNeed { Notes, FocusNote, CurrentList };
PanelNeed NeedOf(PanelAction action);

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

/// The commands of a panel's entries, in the order of the menu.
std::span<const PanelCommand> PanelCommands(PanelKind panel);
/// Those that an entry offers. A note can be added neither to a group of sources nor to `<NO_SOURCE>` or
/// `<UNASSIGNED>`; without another NoteBook there is nowhere to copy to.
std::vector<PanelCommand> EntryCommands(PanelKind panel, const PanelEntry& entry, bool hasOtherNoteBooks);
/// What a panel offers where no entry stands.
std::span<const PanelCommand> AreaCommands(PanelKind panel);

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
