#include "ui/look/theme.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QPointer>
#include <QSvgRenderer>
#include <algorithm>
#include <memory>
#include <utility>

#include "ui/look/flat_style.h"
#include "ui/look/theme_keys.h"

namespace lore {
namespace {

/// The setting may hold any number.
Appearance KnownAppearance(Appearance appearance) {
    const bool isKnown = appearance == Appearance::Light || appearance == Appearance::Dark;
    return isKnown ? appearance : Appearance::System;
}

constexpr char kPortalService[] = "org.freedesktop.portal.Desktop";
constexpr char kPortalPath[] = "/org/freedesktop/portal/desktop";
constexpr char kPortalInterface[] = "org.freedesktop.portal.Settings";
constexpr char kAppearanceSection[] = "org.freedesktop.appearance";
constexpr char kColorSchemeKey[] = "color-scheme";
constexpr int kPortalTimeout = 300;  // milliseconds; the first window waits for the answer
constexpr unsigned kPrefersDark = 1;

/// Draws a line icon in a colour of the palette that is shown at that time, fainter when the control is disabled.
class LineIconEngine : public QIconEngine {
public:
    LineIconEngine(QString name, const Theme& theme, ColorRole role)
        : name_(std::move(name)), theme_(&theme), role_(role) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        FollowTheme();
        if (!renderer_)
            return;
        const int side = std::min(rect.width(), rect.height());
        QRectF square(0, 0, side, side);
        square.moveCenter(QRectF(rect).center());
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (mode == QIcon::Disabled)
            painter->setOpacity(painter->opacity() * 0.45);
        renderer_->render(painter, square);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }

    QIconEngine* clone() const override { return new LineIconEngine(*this); }

private:
    void FollowTheme() {
        if (!theme_ || color_ == theme_->Color(role_))
            return;
        color_ = theme_->Color(role_);
        QFile file(QStringLiteral(":/icons/%1.svg").arg(name_));
        if (!file.open(QIODevice::ReadOnly))
            return;
        const QByteArray svg = file.readAll().replace("currentColor", color_.name(QColor::HexRgb).toUtf8());
        renderer_ = std::make_shared<QSvgRenderer>(svg);
    }

    QString name_;
    QPointer<const Theme> theme_;
    ColorRole role_;
    QColor color_;  // of the picture that is loaded
    std::shared_ptr<QSvgRenderer> renderer_;
};

bool HasSessionBus() {
    if (qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtime.isEmpty() && QFile::exists(runtime + QStringLiteral("/bus"));
}

// The portal answers with a variant within a variant.
QVariant Unwrapped(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

QPalette PaletteOf(const ThemeColors& colors) {
    const auto of = [&colors](ColorRole role) { return colors[static_cast<size_t>(role)]; };
    QPalette palette(of(ColorRole::Raised), of(ColorRole::Window));
    const std::pair<QPalette::ColorRole, ColorRole> pairs[] = {{QPalette::Window, ColorRole::Window},
                                                               {QPalette::WindowText, ColorRole::Text},
                                                               {QPalette::Base, ColorRole::Field},
                                                               {QPalette::AlternateBase, ColorRole::Window},
                                                               {QPalette::Text, ColorRole::Text},
                                                               {QPalette::PlaceholderText, ColorRole::DimText},
                                                               {QPalette::Button, ColorRole::Raised},
                                                               {QPalette::ButtonText, ColorRole::Text},
                                                               {QPalette::BrightText, ColorRole::AccentText},
                                                               {QPalette::Highlight, ColorRole::Selection},
                                                               {QPalette::HighlightedText, ColorRole::SelectionText},
                                                               {QPalette::Link, ColorRole::Link},
                                                               {QPalette::LinkVisited, ColorRole::Link},
                                                               {QPalette::ToolTipBase, ColorRole::Raised},
                                                               {QPalette::ToolTipText, ColorRole::Text},
                                                               {QPalette::Mid, ColorRole::Edge},
                                                               {QPalette::Midlight, ColorRole::FaintEdge},
                                                               {QPalette::Light, ColorRole::Window},
                                                               {QPalette::Dark, ColorRole::Edge},
                                                               {QPalette::Shadow, ColorRole::Edge}};
    for (const auto& [to, from] : pairs)
        palette.setColor(to, of(from));
    QColor faint = of(ColorRole::Text);
    faint.setAlphaF(0.5f);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

}  // namespace

Theme::Theme(QApplication& application, Appearance appearance)
    : application_(application), appearance_(KnownAppearance(appearance)) {
    const QPalette desktop = application.palette();
    systemDark_ = desktop.color(QPalette::Window).lightness() < desktop.color(QPalette::WindowText).lightness();
    application.setStyle(new FlatStyle(*this));
    application.installEventFilter(new ThemeKeys(this));  // all windows of a program have a theme in common
    FollowPortal();
    Apply();
    connect(&application, &QApplication::fontDatabaseChanged, this, &Theme::Changed);
}

void Theme::SetAppearance(Appearance appearance) {
    appearance_ = KnownAppearance(appearance);
    Apply();
}

QColor Theme::Color(ColorRole role) const {
    return (dark_ ? DarkColors() : LightColors())[static_cast<size_t>(role)];
}

QColor Theme::Darkened(const QColor& chosen, float saturation, float lightness) const {
    if (!dark_ || chosen.lightness() < 96)
        return chosen;
    float hue = 0, ownSaturation = 0, ownLightness = 0;
    chosen.getHslF(&hue, &ownSaturation, &ownLightness);
    return QColor::fromHslF(std::max(hue, 0.f), std::min(ownSaturation, saturation), lightness);
}

QColor Theme::Ground(const QColor& chosen) const {
    return Darkened(chosen, 0.36f, 0.2f);
}

QColor Theme::Mark(const QColor& chosen) const {
    return Darkened(chosen, 0.75f, 0.3f);
}

QFont Theme::Font(TextSize size) const {
    constexpr double kScale[] = {0.88, 1.0, 1.25, 1.6};
    QFont font = QApplication::font();
    const double scale = kScale[static_cast<size_t>(size)];
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * scale);
    else
        font.setPixelSize(std::max(1, qRound(font.pixelSize() * scale)));
    if (size == TextSize::Title || size == TextSize::Display)
        font.setWeight(QFont::DemiBold);
    return font;
}

QIcon Theme::Icon(const QString& name, ColorRole role) const {
    return QIcon(new LineIconEngine(name, *this, role));
}

QPixmap Theme::IconPixmap(const QString& name, ColorRole role, int size, qreal devicePixelRatio) const {
    const int device = qRound(size * devicePixelRatio);
    const QString key =
        QStringLiteral("lore %1 %2 %3 %4").arg(name, Color(role).name()).arg(device).arg(devicePixelRatio);
    QPixmap picture;
    if (QPixmapCache::find(key, &picture))
        return picture;
    picture = LineIconEngine(name, *this, role).pixmap(QSize(device, device), QIcon::Normal, QIcon::Off);
    picture.setDevicePixelRatio(devicePixelRatio);
    QPixmapCache::insert(key, picture);
    return picture;
}

void Theme::OnPortalSetting(const QString& section, const QString& key, const QDBusVariant& value) {
    if (section != QLatin1String(kAppearanceSection) || key != QLatin1String(kColorSchemeKey))
        return;
    systemDark_ = Unwrapped(value.variant()).toUInt() == kPrefersDark;
    Apply();
}

void Theme::FollowPortal() {
    if (!HasSessionBus())
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(kPortalService, kPortalPath, kPortalInterface, QStringLiteral("SettingChanged"), this,
                SLOT(OnPortalSetting(QString, QString, QDBusVariant)));
    QDBusMessage call =
        QDBusMessage::createMethodCall(kPortalService, kPortalPath, kPortalInterface, QStringLiteral("Read"));
    call << QString::fromLatin1(kAppearanceSection) << QString::fromLatin1(kColorSchemeKey);
    const QDBusMessage answer = bus.call(call, QDBus::Block, kPortalTimeout);
    if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty())
        systemDark_ = Unwrapped(answer.arguments().constFirst()).toUInt() == kPrefersDark;
}

void Theme::Apply() {
    dark_ = appearance_ == Appearance::Dark || (appearance_ == Appearance::System && systemDark_);
    application_.setPalette(PaletteOf(dark_ ? DarkColors() : LightColors()));
    emit Changed();
}

}  // namespace lore
