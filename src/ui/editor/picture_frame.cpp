#include "ui/editor/picture_frame.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/editor/block_place.h"
#include "ui/editor/note_formats.h"
#include "ui/editor/picture_object.h"
#include "ui/look/theme.h"

namespace lore {
namespace {

constexpr double kHandle = 10;  // pixels
constexpr double kSmallest = 12;

}  // namespace

QTextCursor PictureFrame::PictureAt(const QPoint& point) const {
    QTextCursor near = edit_.cursorForPosition(point);
    for (int shift = 0; shift <= 1; ++shift) {
        const int at = near.position() - shift;
        if (at < 0)
            break;
        QTextCursor picture(edit_.document());
        picture.setPosition(at);
        picture.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
        if (picture.charFormat().hasProperty(kPictureProperty) &&
            edit_.document()->characterAt(at) == QChar::ObjectReplacementCharacter && RectOf(picture).contains(point))
            return picture;
    }
    near.clearSelection();
    return near;
}

QRectF PictureFrame::RectOf(const QTextCursor& picture) const {
    const QSizeF size = PictureObject::ShownSize(*edit_.document(), picture.charFormat().toImageFormat());
    QTextCursor begin(picture);
    begin.setPosition(picture.selectionStart());
    const QTextBlock block = begin.block();
    const QTextLine line = block.layout()->lineForTextPosition(begin.positionInBlock());
    if (!line.isValid())
        return {};
    const QPointF origin = BlockOrigin(edit_, block);
    return QRectF(origin.x() + line.cursorToX(begin.positionInBlock()),
                  origin.y() + line.y() + line.ascent() - size.height(), size.width(), size.height());
}

bool PictureFrame::IsOnHandle(const QTextCursor& picture, const QPoint& point) const {
    const QPointF corner = RectOf(picture).bottomRight();
    return QRectF(corner.x() - kHandle, corner.y() - kHandle, 2 * kHandle, 2 * kHandle).contains(point);
}

void PictureFrame::BeginDrag(const QTextCursor& picture) {
    dragged_ = RectOf(picture);
    begun_ = dragged_->size();
    shape_ = dragged_->width() > 0 ? dragged_->height() / dragged_->width() : 1.0;
}

void PictureFrame::DragTo(const QPoint& point, double widest) {
    const double width = std::max(point.x() - dragged_->x(), (point.y() - dragged_->y()) / std::max(shape_, 0.01));
    dragged_->setWidth(std::clamp(width, kSmallest, std::max(kSmallest, widest)));
    dragged_->setHeight(std::max(1.0, dragged_->width() * shape_));
}

std::optional<QSizeF> PictureFrame::EndDrag() {
    const QSizeF size = dragged_->size(), change = size - begun_;
    dragged_.reset();
    return std::max(std::abs(change.width()), std::abs(change.height())) < 1 ? std::nullopt : std::optional(size);
}

void PictureFrame::Paint(QPainter& painter, const QTextCursor& picture) const {
    const QRectF rect = dragged_.value_or(RectOf(picture));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(theme_.Color(ColorRole::Accent), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect);
    painter.setBrush(theme_.Color(ColorRole::Accent));
    painter.drawEllipse(rect.bottomRight(), kHandle / 2, kHandle / 2);
}

}  // namespace lore
