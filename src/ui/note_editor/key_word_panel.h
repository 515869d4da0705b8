#pragma once

#include <QDialog>
#include <functional>

#include "edit/key_word_picker.h"
#include "ui/controls/panel_section.h"

class QLineEdit;
class QTreeWidget;

namespace lore {

class Theme;

/// The used key words as a list of boxes to check.
class SelectTagsDlg : public QDialog {
    Q_OBJECT

public:
    SelectTagsDlg(KeyWordPicker& picker, const Theme& theme, QWidget* parent = nullptr);
    QTreeWidget* List() const { return list_; }

private:
    void ApplyFilter(const QString& text);

    KeyWordPicker& picker_;
    QTreeWidget* list_;
};

/// The field of key words with the button that picks used ones.
class KeyWordPanel : public PanelSection {
    Q_OBJECT

public:
    /// `open` gathers the used key words for what stands in the field.
    using Opener = std::function<std::optional<KeyWordPicker>(const std::string& field)>;
    KeyWordPanel(Opener open, const Theme& theme, QWidget* parent = nullptr);

    QLineEdit* Field() const { return field_; }
    void SelectKeyWords();

private:
    Opener open_;
    const Theme& theme_;
    QLineEdit* field_;
};

}  // namespace lore
