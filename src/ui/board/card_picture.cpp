#include "ui/board/card_picture.h"

#include <QFontMetricsF>
#include <algorithm>
#include <array>
#include <cmath>

#include "notes/picture_scale.h"
#include "ui/board/picture_cache.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {
namespace {

struct PictureButton {
    CardHit::Part part;
    const char* icon;
    const char* text;
};
constexpr std::array<PictureButton, 5> kButtons = {{{CardHit::ZoomIn, "zoom-in", "Zoom In"},
                                                    {CardHit::ZoomOut, "zoom-out", "Zoom Out"},
                                                    {CardHit::ShiftLeft, "arrow-left", "Shift Left"},
                                                    {CardHit::ShiftRight, "arrow-right", "Shift Right"},
                                                    {CardHit::Restore, "rotate-ccw", "Restore"}}};
constexpr double kButtonSide = 24;
constexpr double kMissingHeight = 64;

// A picture never is wider than its card: one that is in itself is brought down to it before the zoom counts.
QSizeF ShownSize(const QSize& natural, double zoom, double width) {
    const double fit = std::min(1.0, width / natural.width());
    const double scale = fit * PictureScale(zoom, natural.width() * fit, natural.height() * fit, width);
    return QSizeF(std::max(1.0, std::round(natural.width() * scale)),
                  std::max(1.0, std::round(natural.height() * scale)));
}

}  // namespace

CardPicture::CardPicture(const CAttachment& attachment, int index, int width, const CardContext& context)
    : theme_(context.theme),
      pictures_(context.pictures),
      index_(index),
      path_(PathToQString(context.model.AttachmentPath(attachment))),
      title_(ToQString(attachment.title).simplified()),
      smallFont_(context.SmallFont()),
      buttonSide_(std::max(std::round(kButtonSide * context.Zoom()),
                           std::ceil(QFontMetricsF(context.SmallFont()).height() * 1.4))),
      width_(width) {
    const FontSetting& font = context.options.pictureTitle;
    titleFont_ = context.Font(ToQString(font.faceName), font.height * context.Zoom());
    titleFont_.setWeight(font.weight >= 600 ? QFont::Bold : QFont::Normal);
    titleFont_.setItalic(font.italic);
    titleFont_.setUnderline(font.underline);
    titleColor_ =
        font.color == 0 ? theme_.Color(ColorRole::Text) : Legible(ToQColor(font.color), theme_.Color(ColorRole::Card));
    const double line = std::ceil(std::max(QFontMetricsF(titleFont_).height(), buttonSide_));
    titleRect_ = QRectF(0, 0, width, line);
    const QSize natural = pictures_.NaturalSize(path_);
    missing_ = natural.isEmpty();
    const QSizeF size =
        missing_ ? QSizeF(width, kMissingHeight * context.Zoom()) : ShownSize(natural, attachment.zoom, width);
    const double free = (width - size.width()) / 2;
    const double left = free + std::clamp<double>(attachment.shift, -free, free);
    rect_ = QRectF(QPointF(std::round(left), line + kSpace), size);
}

QRectF CardPicture::ButtonRect(int button) const {
    const double left = width_ - buttonSide_ * static_cast<double>(kButtons.size() - static_cast<size_t>(button));
    return QRectF(left, (titleRect_.height() - buttonSide_) / 2, buttonSide_, buttonSide_);
}

void CardPicture::PaintButtons(QPainter& painter, const CardPaint& paint) const {
    const int side = static_cast<int>(std::lround(buttonSide_ * 0.66));
    for (size_t i = 0; i < kButtons.size(); ++i) {
        const QRectF rect = ButtonRect(static_cast<int>(i));
        if (paint.hot.part == kButtons[i].part && paint.hot.attachment == index_) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(theme_.Color(ColorRole::Hover));
            painter.drawRoundedRect(rect, kControlRadius, kControlRadius);
        }
        const QPixmap icon =
            theme_.IconPixmap(QString::fromLatin1(kButtons[i].icon), ColorRole::DimText, side, paint.devicePixelRatio);
        painter.drawPixmap(rect.center() - QPointF(side / 2.0, side / 2.0), icon);
    }
}

void CardPicture::Paint(QPainter& painter, const CardPaint& paint) const {
    const bool buttons = paint.hovered && !missing_;
    painter.setFont(titleFont_);
    painter.setPen(titleColor_);
    const double room = width_ - (buttons ? 2 : 1) * buttonSide_ * static_cast<double>(kButtons.size());
    const QFontMetricsF metrics(titleFont_);
    const bool wide = metrics.horizontalAdvance(title_) > room;
    painter.drawText(wide ? titleRect_.adjusted(0, 0, -buttonSide_ * kButtons.size(), 0) : titleRect_,
                     (wide ? Qt::AlignLeft : Qt::AlignHCenter) | Qt::AlignVCenter,
                     metrics.elidedText(title_, Qt::ElideRight, width_ - buttonSide_ * kButtons.size()));
    if (buttons)
        PaintButtons(painter, paint);
    const QPixmap picture =
        missing_ ? QPixmap() : pictures_.Get(path_, (rect_.size() * paint.devicePixelRatio).toSize());
    if (!picture.isNull())
        return painter.drawPixmap(rect_, picture, QRectF(picture.rect()));
    painter.setPen(QPen(theme_.Color(ColorRole::FaintEdge), 1, missing_ ? Qt::DashLine : Qt::SolidLine));
    painter.setBrush(theme_.Color(ColorRole::Raised));
    painter.drawRoundedRect(rect_.adjusted(0.5, 0.5, -0.5, -0.5), kControlRadius, kControlRadius);
    if (missing_) {
        painter.setFont(smallFont_);
        painter.setPen(theme_.Color(ColorRole::DimText));
        painter.drawText(rect_, Qt::AlignCenter, QStringLiteral("The picture can't be read"));
    }
}

CardHit CardPicture::HitTest(const QPointF& point) const {
    for (size_t i = 0; i < kButtons.size() && !missing_; ++i)
        if (ButtonRect(static_cast<int>(i)).contains(point))
            return {kButtons[i].part, index_, QString::fromLatin1(kButtons[i].text)};
    if (titleRect_.united(rect_).contains(point))
        return {CardHit::Picture, index_, {}};
    return {};
}

}  // namespace lore
