#include "ui/note_editor/color_panel.h"

#include <QColorDialog>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QPushButton>

#include "ui/controls/dialog_parts.h"
#include "ui/editor/color_menu.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {

namespace {

constexpr size_t kMostOffered = 16;

/// A number alone says little where the swatch can't be seen.
QString Spoken(const std::string& name, Rgb color) {
    return color == 0 ? ToQString(name)
                      : QStringLiteral("%1, %2").arg(ToQString(name), NearestColorName(ToQColor(color)));
}

}  // namespace

ColorPanel::ColorPanel(const CSearchColorList& used, Rgb color, const Theme& theme, QWidget* parent)
    : QWidget(parent), used_(used), color_(color), theme_(theme), button_(MakeButton({}, this)) {
    auto* const row = MakeInner<QHBoxLayout>(this, kSpace * 2);
    button_->setObjectName("BorderColor");
    button_->setMenu(new QMenu(button_));
    button_->setIconSize(QSize(kSpace * 4, kSpace * 4));
    row->addWidget(MakeLabel(tr("Select Border Colo&r:"), button_, this));
    row->addWidget(button_, 1);
    connect(button_->menu(), &QMenu::aboutToShow, this, &ColorPanel::FillMenu);
    connect(&theme_, &Theme::Changed, this, [this] { SetColor(color_); });
    SetColor(color);
}

QIcon ColorPanel::Swatch(Rgb color) const {
    constexpr int kSide = kSpace * 4;
    QPixmap pixmap(QSize(kSide, kSide) * devicePixelRatioF());
    pixmap.setDevicePixelRatio(devicePixelRatioF());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(theme_.Color(ColorRole::Edge));
    painter.setBrush(color == 0 ? QBrush(Qt::NoBrush) : QBrush(ToQColor(color)));
    painter.drawRoundedRect(QRectF(0.5, 0.5, kSide - 1, kSide - 1), kSpace, kSpace);
    if (color == 0)
        painter.drawLine(QPointF(kSpace, kSide - kSpace), QPointF(kSide - kSpace, kSpace));
    return QIcon(pixmap);
}

void ColorPanel::SetColor(Rgb color) {
    const bool changes = color != color_;
    color_ = color;
    const QString name = Spoken(BorderColorName(color), color);
    button_->setIcon(Swatch(color));
    button_->setText(name);
    button_->setAccessibleName(tr("Border color: %1").arg(name));
    if (changes)
        emit Changed();
}

void ColorPanel::FillMenu() {
    QMenu& menu = *button_->menu();
    menu.clear();
    std::vector<ColorChoice> choices = ColorChoices(used_, color_);
    if (choices.size() > kMostOffered)
        choices.resize(kMostOffered);
    for (const ColorChoice& choice : choices) {
        const QString text =
            tr("%1  (%2)").arg(Spoken(choice.name, choice.color)).arg(static_cast<qulonglong>(choice.notes));
        QAction* const action = menu.addAction(Swatch(choice.color), text);
        action->setCheckable(true);
        action->setChecked(choice.color == color_);
        connect(action, &QAction::triggered, this, [this, color = choice.color] { SetColor(color); });
    }
    menu.addSeparator();
    menu.addAction(tr("&Other Color..."), this, &ColorPanel::PickOther);
}

void ColorPanel::PickOther() {
    const QColor picked = QColorDialog::getColor(ToQColor(color_), this, tr("Select Border Color"));
    if (picked.isValid())
        SetColor(MakeRgb(static_cast<unsigned>(picked.red()), static_cast<unsigned>(picked.green()),
                         static_cast<unsigned>(picked.blue())));
}

}  // namespace lore
