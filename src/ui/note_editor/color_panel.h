#pragma once

#include <QWidget>

#include "classify/search_color_list.h"
#include "edit/color_choice.h"

class QLabel;
class QPushButton;

namespace lore {

class Theme;

/// The border colour of the note: a button that shows it and offers those in use.
class ColorPanel : public QWidget {
    Q_OBJECT

public:
    ColorPanel(const CSearchColorList& used, Rgb color, const Theme& theme, QWidget* parent = nullptr);

    Rgb Color() const { return color_; }
    void SetColor(Rgb color);
    QPushButton* Button() const { return button_; }

signals:
    void Changed();

private:
    void FillMenu();
    void PickOther();
    QIcon Swatch(Rgb color) const;

    const CSearchColorList& used_;
    Rgb color_;
    const Theme& theme_;
    QPushButton* button_;
};

}  // namespace lore
