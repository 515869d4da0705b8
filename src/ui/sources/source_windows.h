#pragma once

#include <cstdint>
#include <optional>

#include "app/writing_commands.h"

class QWidget;

namespace lore {

class Theme;

/// What the windows on sources share, and how one opens another. All of it outlives them.
class SourceWindows {
public:
    SourceWindows(WritingCommands& writing, SettingsStore& settings, const Theme& look)
        : commands(writing), store(settings), theme(look) {}
    virtual ~SourceWindows() = default;

    WritingCommands& commands;
    SettingsStore& store;
    const Theme& theme;

    /// Opens the editor on a source of the NoteBook, or on a new one (null). Gives the id of what was saved, nothing
    /// when the user cancels.
    virtual std::optional<int32_t> EditSource(const CSource* source, QWidget* parent) const = 0;
    /// Opens the user-defined types. True if they were saved.
    virtual bool EditTypes(QWidget* parent) const = 0;
};

}  // namespace lore
