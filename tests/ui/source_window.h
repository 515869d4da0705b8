#pragma once

#include "sources/source_editor.h"
#include "ui/main_window.h"
#include "ui/note_editor/note_actions.h"
#include "ui/sources/edit_source_dlg.h"
#include "ui/sources/source_dialogs.h"

namespace lore {

/// Hands out the editor of a source that is new, as a child of the window; it goes behind `steps`.
template <typename Steps>
void InNewSource(MainWindow& window, SettingsStore& store, Theme& theme, const Steps& steps) {
    WritingCommands& commands = window.Notes()->Commands();
    SourceEditor editor = SourceEditor::ForNew(commands.Sources());
    const SourceDialogs windows(commands, store, theme);
    CEditSourceDlg dialog(editor, windows, &window);
    steps(dialog);
}

}  // namespace lore
