#pragma once

#include <QDBusVariant>
#include <QFont>
#include <QObject>
#include <QString>
#include <array>

#include "ui/look/theme_look.h"

class QApplication;

namespace lore {

/// Which palette is shown: the desktop's choice, or one by the user's wish.
enum class Appearance { System, Light, Dark };

using ThemeColors = std::array<QColor, static_cast<size_t>(ColorRole::Count_)>;

/// The colours of the light and of the dark palette.
const ThemeColors& LightColors();
const ThemeColors& DarkColors();

/// Contrast of two colours, 1 to 21.
double ContrastOf(const QColor& a, const QColor& b);
/// `text` itself if its contrast on `ground` is enough, else it is moved towards black or white until it is.
QColor Legible(const QColor& text, const QColor& ground, double contrast = 4.5);

/// The look of all windows: palette, style, type sizes and icons. One object, made in main and handed on by reference.
class Theme : public QObject, public ThemeLook {
    Q_OBJECT

public:
    /// Styles the whole application and follows the desktop's colour scheme from here on.
    explicit Theme(QApplication& application, Appearance appearance = Appearance::System);

    void SetAppearance(Appearance appearance);
    Appearance GetAppearance() const { return appearance_; }
    bool IsDark() const { return dark_; }

    QColor Color(ColorRole role) const override;
    /// A colour that the user chose for light ground, such as a highlight: on a dark ground it keeps its hue and gets a
    /// lightness on which light text is legible.
    QColor Ground(const QColor& chosen) const;
    /// The same for a few words that are to catch the eye.
    QColor Mark(const QColor& chosen) const;
    /// The system font in one of four sizes.
    QFont Font(TextSize size) const;
    using ThemeLook::Icon;
    QIcon Icon(const QString& name, ColorRole role) const override;
    /// The same as a picture of `size` device-independent pixels for a window's device pixel ratio.
    QPixmap IconPixmap(const QString& name, ColorRole role, int size, qreal devicePixelRatio) const;

signals:
    /// Colours or fonts are other ones now; own drawing has to be repeated. Icons follow by themselves.
    void Changed();

private slots:
    void OnPortalSetting(const QString& section, const QString& key, const QDBusVariant& value);

private:
    QColor Darkened(const QColor& chosen, float saturation, float lightness) const;
    void FollowPortal();
    void Apply();

    QApplication& application_;
    Appearance appearance_;
    bool systemDark_ = false;
    bool dark_ = false;
};

}  // namespace lore
