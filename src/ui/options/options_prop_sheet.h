#pragma once

#include "ports/spell_checker.h"
#include "ui/controls/dialog_frame.h"
#include "ui/options/general_page.h"

class QTabWidget;

namespace lore {

class COptBackupPg;

/// The pages, in their order.
enum class OptionsTab { General, AutoBackup, SpellChecker, Agent };

/// What the options work on beside the settings. All outlive the sheet; the checker and the agent may be null.
struct OptionsParts {
    Theme& theme;
    SpellChecker* spelling = nullptr;
    Agent* agent = nullptr;
    OptionChoosers choosers;
};

/// The options: four pages and one button. Every control writes at once, so there is nothing to cancel.
class COptionsPropSheet : public DialogFrame {
    Q_OBJECT

public:
    COptionsPropSheet(OptionsWorld world, const OptionsParts& parts, OptionsTab tab, QWidget* parent);

    /// Stays open while the page that is shown can't be left.
    void done(int result) override;

private:
    void AddPage(QWidget* page, const QString& name);
    void LeavePage(int next);

    OptionsWorld world_;
    QTabWidget* tabs_ = nullptr;
    COptBackupPg* backup_ = nullptr;
    int page_ = 0;
};

}  // namespace lore
