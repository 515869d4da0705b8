#pragma once

#include "ui/controls/dialog_frame.h"

namespace lore {

class Theme;

/// The box "About Lorebinder...".
class FWAboutBoxDlg : public DialogFrame {
    Q_OBJECT

public:
    FWAboutBoxDlg(const Theme& theme, SettingsStore& store, QWidget* parent);
};

}  // namespace lore
