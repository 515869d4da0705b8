#pragma once

#include <QFont>
#include <QPainter>
#include <QString>

#include "notes/board_model.h"
#include "notes/board_options.h"

namespace lore {

class PictureCache;
class Theme;

/// What all parts of a card are laid out with.
struct CardContext {
    const BoardModel& model;
    const BoardOptions& options;
    const Theme& theme;
    PictureCache& pictures;
    QPaintDevice* device = nullptr;
    QColor textGround;  ///< behind the note's text; another one for the focus note

    /// A font of the board: a face at a height in pixels.
    QFont Font(const QString& face, double pixels) const;
    /// The system font in small size, zoomed.
    QFont SmallFont() const;
    double Zoom() const { return options.zoom; }
};

/// What stands under a point of a card.
struct CardHit {
    enum Part {
        None,
        Picture,
        ZoomIn,
        ZoomOut,
        ShiftLeft,
        ShiftRight,
        Restore,
        Open,
        WebLink,
        TextLink,
        Edit,
        Delete,
        Remove
    };
    Part part = None;
    int attachment = -1;
    QString text;  ///< the address for TextLink, else what a tool tip says
};

/// How a card is painted at this moment.
struct CardPaint {
    QRectF clip;           ///< in coordinates of the block
    bool hovered = false;  ///< the mouse is over the card, or it is the focus card
    CardHit hot;           ///< what the mouse is over
    qreal devicePixelRatio = 1;
};

/// One part of a card below the other. It is laid out for a width when it is made.
class CardBlock {
public:
    CardBlock() = default;
    CardBlock(const CardBlock&) = delete;
    CardBlock& operator=(const CardBlock&) = delete;
    virtual ~CardBlock() = default;

    virtual int Height() const = 0;
    /// The painter's origin is the block's top left corner.
    virtual void Paint(QPainter& painter, const CardPaint& paint) const = 0;
    virtual CardHit HitTest(const QPointF&) const { return {}; }
    /// The rectangle of an attachment within the block; empty if it isn't here.
    virtual QRectF AttachmentRect(int) const { return {}; }
};

}  // namespace lore
