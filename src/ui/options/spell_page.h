#pragma once

#include <QWidget>

#include "ports/spell_checker.h"
#include "settings/option_pages.h"

class QTextEdit;
class QVBoxLayout;

namespace lore {

class Theme;

/// The page "Spell Checker".
class OptSpellChkPg : public QWidget {
    Q_OBJECT

public:
    /// `checker` may be null: nothing is checked on this computer.
    OptSpellChkPg(OptionsWorld& world, const Theme& theme, SpellChecker* checker, QWidget* parent);

private:
    void AddDictionaries(QVBoxLayout& layout);
    void AddMarks(QVBoxLayout& layout);
    void AddColors(QVBoxLayout& layout);
    void EditUserWords();
    void ShowSample();

    SpellPage model_;
    OptionsWorld& world_;
    const Theme& theme_;
    SpellChecker* checker_;
    QTextEdit* sample_ = nullptr;
};

}  // namespace lore
