#pragma once

#include "calendar/modify_event.h"
#include "ui/controls/dialog_frame.h"

namespace lore {

/// Asks how far a change of one event of a series reaches.
class ModifyEventDialog : public DialogFrame {
    Q_OBJECT

public:
    ModifyEventDialog(ModifyEventMode mode, SettingsStore& store, QWidget* parent);
    /// Shows the dialog. Closing it is cancelling.
    SeriesReach AskReach();

private:
    QWidget* MakeGroup(const char* title, QWidget* first, QWidget* second);
    QPushButton* MakeChoice(const char* text, const char* name, SeriesReach reach);

    SeriesReach reach_ = SeriesReach::Cancel;
};

}  // namespace lore
