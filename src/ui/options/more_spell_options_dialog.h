#pragma once

#include "settings/option_pages.h"
#include "ui/controls/dialog_frame.h"

namespace lore {

/// Which words the spell checker skips. Every box writes at once.
class MoreSpellOptionsDialog : public DialogFrame {
    Q_OBJECT

public:
    MoreSpellOptionsDialog(SpellPage& model, SettingsStore& store, QWidget* parent);
};

}  // namespace lore
