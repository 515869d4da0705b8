#pragma once

#include <QProxyStyle>

class QStyleOptionButton;

namespace lore {

class ThemeLook;
enum class ColorRole;

/// The Fusion style without its bevels and gradients: flat fields and buttons with round corners, thin scroll bars,
/// tabs with a line under the active one, an accent ring around what has the keyboard, and icons of the one set.
class FlatStyle : public QProxyStyle {
    Q_OBJECT

public:
    explicit FlatStyle(const ThemeLook& theme);

    using QProxyStyle::polish;
    void polish(QWidget* widget) override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override;
    QIcon standardIcon(StandardPixmap standard, const QStyleOption* option, const QWidget* widget) const override;

private:
    void DrawButton(const QStyleOption& option, QPainter& painter) const;
    void DrawToolButton(const QStyleOption& option, QPainter& painter) const;
    void DrawField(const QStyleOption& option, QPainter& painter, bool filled) const;
    void DrawCheckMark(const QStyleOption& option, QPainter& painter, bool round) const;
    void DrawFocusRing(const QStyleOption& option, QPainter& painter) const;
    void DrawLabel(const QStyleOptionButton& button, QPainter& painter, const QWidget* widget) const;
    void DrawTab(const QStyleOption& option, QPainter& painter) const;
    void DrawHeader(const QStyleOption& option, QPainter& painter) const;
    void DrawArrow(QPainter& painter, const QString& icon, const QRect& room, int side, bool enabled) const;
    void DrawComboBox(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
    void DrawSpinBox(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
    void DrawScrollBar(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
    void DrawProgress(const QStyleOption& option, QPainter& painter) const;
    int BesideChoice(const QStyleOption* option, const QWidget* widget) const;
    void FillRound(QPainter& painter, const QRectF& rect, double radius, ColorRole ground) const;
    void FillRound(QPainter& painter, const QRectF& rect, double radius, ColorRole ground, ColorRole edge) const;

    const ThemeLook& theme_;
};

}  // namespace lore
