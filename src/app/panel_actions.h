#pragma once

#include <functional>
#include <optional>

#include "app/writing_commands.h"
#include "edit/value_changes.h"
#include "notes/filter_panels.h"

namespace lore {

/// What a command of a filter panel has changed.
enum class PanelOutcome {
    Nothing,
    ListChanged,  ///< the current list has lost notes, or gained none
    Gathered,     ///< notes have come into the current list, newly added
    NotesChanged  ///< notes of the NoteBook, and the list with them
};

/// The commands of the four filter panels.
class PanelActions {
public:
    /// Asks for a colour; nothing if the user cancels.
    using ColorPicker = std::function<std::optional<Rgb>()>;

    /// `app` and `commands` outlive the actions.
    PanelActions(CLorebinderApp& app, WritingCommands& commands, ColorPicker pickColor);

    /// Carries out what the user has chosen. `focusNote` is the note that has the focus on the board, -1 for none.
    PanelOutcome Run(const PanelOrder& order, int32_t focusNote);

private:
    template <typename Change, typename... Value>
    PanelOutcome ChangeValues(Change change, const LongList& ids, const Value&... value);
    PanelOutcome SetPickedColor(const LongList& ids);
    PanelOutcome AddNote(const PanelOrder& order, int32_t focusNote);
    PanelOutcome AddToSource(int32_t note, int32_t source);
    LongList ListedWith(Rgb color) const;
    void Copy(const LongList& ids, int noteBook);
    void Export(const LongList& ids);
    std::vector<CNote> Find(const LongList& ids, const char* waitText);

    CLorebinderApp& app_;
    WritingCommands& commands_;
    ColorPicker pickColor_;
};

}  // namespace lore
