#pragma once

#include <QAbstractTextDocumentLayout>
#include <QObject>
#include <QTextImageFormat>

namespace lore {

/// The place of a picture. Its format states the size that the note has for it; where the text is narrower, the picture
/// is shown as wide as the text, so that it follows the window without a change of the text.
class PictureObject : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public:
    using QObject::QObject;

    /// How large a picture stands in the text now.
    static QSizeF ShownSize(const QTextDocument& text, const QTextImageFormat& format);

    QSizeF intrinsicSize(QTextDocument* text, int position, const QTextFormat& format) override;
    void drawObject(QPainter* painter, const QRectF& rect, QTextDocument* text, int position,
                    const QTextFormat& format) override;
};

}  // namespace lore
