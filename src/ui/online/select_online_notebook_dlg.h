#pragma once

#include "online/online_notebook_choice.h"
#include "ui/controls/dialog_frame.h"

class QLabel;
class QListWidget;

namespace lore {

/// The dialog "Select Online NoteBook". Accepted with a NoteBook selected in the model.
class CSelectOnlineNoteBookDlg : public DialogFrame {
    Q_OBJECT

public:
    /// The model outlives the dialog.
    CSelectOnlineNoteBookDlg(OnlineNoteBookChoice& choice, const Theme& theme, SettingsStore& store, QWidget* parent);

private:
    void Refill();
    void Create();
    void TakeChoice();

    OnlineNoteBookChoice& choice_;
    QListWidget* list_ = nullptr;
    QLabel* empty_ = nullptr;
};

}  // namespace lore
