#pragma once

#include <QPoint>
#include <QRectF>
#include <QTextCursor>
#include <optional>

class QPainter;
class QTextEdit;

namespace lore {

class Theme;

/// The frame around the selected picture, with a handle at its corner that resizes it.
class PictureFrame {
public:
    PictureFrame(const QTextEdit& edit, const Theme& theme) : edit_(edit), theme_(theme) {}

    /// The picture under a point of the viewport, selected; a cursor without selection if there is none.
    QTextCursor PictureAt(const QPoint& point) const;
    /// Where a picture stands in the viewport.
    QRectF RectOf(const QTextCursor& picture) const;
    bool IsOnHandle(const QTextCursor& picture, const QPoint& point) const;

    void BeginDrag(const QTextCursor& picture);
    bool IsDragging() const { return dragged_.has_value(); }
    /// Follows the mouse; the shape of the picture stays.
    void DragTo(const QPoint& point, double widest);
    /// Ends dragging and gives the size in pixels of the screen; nothing if that is still the one it began with.
    std::optional<QSizeF> EndDrag();
    void CancelDrag() { dragged_.reset(); }

    void Paint(QPainter& painter, const QTextCursor& picture) const;

private:
    const QTextEdit& edit_;
    const Theme& theme_;
    std::optional<QRectF> dragged_;
    QSizeF begun_;
    double shape_ = 1.0;  ///< height by width
};

}  // namespace lore
