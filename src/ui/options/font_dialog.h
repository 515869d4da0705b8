#pragma once

#include <optional>

#include "settings/font_setting.h"
#include "ui/controls/dialog_frame.h"

class QCheckBox;
class QDoubleSpinBox;
class QFontComboBox;
class QLabel;

namespace lore {

class Theme;

/// A font as the settings hold it, for Qt; its size is in points on a screen at 100 %.
QFont ToQFont(const FontSetting& font);

/// Chooses a font with its size, emphasis and colour, and shows a sample.
class FontDialog : public DialogFrame {
    Q_OBJECT

public:
    FontDialog(const QString& title, const FontSetting& font, const Theme& theme, SettingsStore& store,
               QWidget* parent);

    FontSetting Chosen() const;

private:
    QWidget* MakeControls(const FontSetting& font);
    void PickColor();
    void ShowSample();

    const Theme& theme_;
    FontSetting before_;
    uint32_t color_;
    QFontComboBox* face_ = nullptr;
    QDoubleSpinBox* size_ = nullptr;
    QCheckBox* bold_ = nullptr;
    QCheckBox* italic_ = nullptr;
    QCheckBox* underline_ = nullptr;
    QPushButton* colorButton_ = nullptr;
    QLabel* sample_ = nullptr;
};

}  // namespace lore
