#pragma once

#include "ui/board/card_block.h"

namespace lore {

/// A picture of a card: its title with the five small buttons, and below it the picture, scaled and moved sideways.
class CardPicture {
public:
    CardPicture(const CAttachment& attachment, int index, int width, const CardContext& context);

    int Attachment() const { return index_; }
    double Height() const { return rect_.bottom(); }
    const QRectF& PictureRect() const { return rect_; }
    void Paint(QPainter& painter, const CardPaint& paint) const;
    CardHit HitTest(const QPointF& point) const;

private:
    QRectF ButtonRect(int button) const;
    void PaintButtons(QPainter& painter, const CardPaint& paint) const;

    const Theme& theme_;
    PictureCache& pictures_;
    int index_;
    QString path_, title_;
    QFont titleFont_;
    QColor titleColor_;
    QFont smallFont_;
    double buttonSide_, width_;
    QRectF titleRect_, rect_;
    bool missing_ = false;
};

}  // namespace lore
