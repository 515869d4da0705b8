#pragma once

#include <QAbstractTextDocumentLayout>
#include <QObject>

namespace lore {

/// The place of a group that a text only keeps: nothing is seen of it.
class KeptObject : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public:
    using QObject::QObject;
    QSizeF intrinsicSize(QTextDocument*, int, const QTextFormat&) override { return QSizeF(0, 1); }
    void drawObject(QPainter*, const QRectF&, QTextDocument*, int, const QTextFormat&) override {}
};

}  // namespace lore
