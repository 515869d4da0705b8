#pragma once

#include <QColor>
#include <QMenu>
#include <functional>
#include <optional>

namespace lore {

/// A menu of colours by name, with "Automatic" (or no colour) first and any other colour last.
class ColorMenu : public QMenu {
    Q_OBJECT

public:
    /// `forText`: dark and strong colours; otherwise those of highlighting pens.
    ColorMenu(const QString& title, bool forText, QWidget* parent);

signals:
    /// An invalid colour is the automatic one.
    void ColorChosen(const QColor& color);

private:
    void AddColor(const QString& name, const QColor& color);
};

/// The name of the colour of the menus or of the calendar that comes nearest to this one.
QString NearestColorName(const QColor& color);

}  // namespace lore
