#pragma once

#include <memory>
#include <vector>

#include "ui/board/card_block.h"

namespace lore {

/// One note laid out for a width: the blocks of what it shows with their places, ready to be painted.
class Card {
public:
    Card(const CNote& note, int width, bool focus, const CardContext& context);

    /// With the space around the card that parts it from its neighbours.
    int Height() const { return height_; }
    /// `at`: the card's top left corner.
    void Paint(QPainter& painter, const QPoint& at, const CardPaint& paint) const;
    /// `point` counts from the card's top left corner.
    CardHit HitTest(const QPointF& point) const;
    QRectF AttachmentRect(int attachment) const;

private:
    struct Placed {
        std::unique_ptr<CardBlock> block;
        QPointF at;
        int width = 0;
    };
    QRectF Outline() const;
    QRectF ActionRect(size_t action) const;
    void PaintActions(QPainter& painter, const CardPaint& paint) const;
    void PaintFrame(QPainter& painter) const;
    void PaintMarks(QPainter& painter, const CardPaint& paint) const;

    const Theme& theme_;
    int width_, height_ = 0;
    bool focus_, newlyAdded_;
    double actionSide_;
    QColor border_, textGround_;
    QRectF textRect_;
    std::vector<Placed> blocks_;
};

/// What a screen reader says of a note: its text, sources, categories, key words and attachments.
QString SpokenCard(const CNote& note, const BoardModel& model, const BoardOptions& options);

}  // namespace lore
