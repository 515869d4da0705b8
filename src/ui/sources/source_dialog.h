#pragma once

#include "ui/controls/bar_faults.h"
#include "ui/controls/dialog_frame.h"
#include "ui/controls/fault_bar.h"
#include "ui/sources/source_windows.h"

class QLabel;
class QListWidget;

namespace lore {

/// What the dialogs on sources share: the quiet bar that tells of a write that failed while the dialog is open.
class SourceDialog : public DialogFrame {
    Q_OBJECT

public:
    SourceDialog(const QString& title, const char* place, const SourceWindows& windows, QWidget* parent);
    ~SourceDialog() override;

    /// A step that writes runs in it, so that it can be tried again.
    FaultBar* Faults() const { return bar_; }

protected:
    const SourceWindows& Windows() const { return windows_; }
    Prompts& GetPrompts() const { return windows_.commands.World().prompts; }

private:
    const SourceWindows& windows_;
    BarFaults faults_;
    FaultBar* bar_ = nullptr;
    FaultNotice* before_ = nullptr;
};

/// A dimmed line that says what can be done.
QLabel* MakeHint(const QString& text, const Theme& theme, QWidget* parent);
/// Moves the current row of a list whose order the user makes by so many rows; the list then tells of it as of a drag.
void MoveCurrentRow(QListWidget& list, int by);

}  // namespace lore
