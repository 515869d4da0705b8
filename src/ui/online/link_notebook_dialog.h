#pragma once

#include "online/notebook_link.h"
#include "online/online_config.h"
#include "ui/controls/dialog_frame.h"

class QGridLayout;
class QLabel;
class QPushButton;

namespace lore {

/// The dialog "Link Desktop NoteBook with an Online NoteBook".
class LinkNoteBookDialog : public DialogFrame {
    Q_OBJECT

public:
    /// The model outlives the dialog.
    LinkNoteBookDialog(NoteBookLink& link, const OnlineConfig& config, const Theme& theme, SettingsStore& store,
                       QWidget* parent);

private:
    QLabel* AddRow(QGridLayout& rows, const QString& name, const char* objectName);
    void Link();
    void Clear();
    void ShowLink();

    NoteBookLink& link_;
    const Theme& theme_;
    SettingsStore& store_;
    QLabel *noteBook_ = nullptr, *status_ = nullptr, *onlineNoteBook_ = nullptr;
    QPushButton *with_ = nullptr, *clear_ = nullptr;
};

}  // namespace lore
