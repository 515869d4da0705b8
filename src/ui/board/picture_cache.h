#pragma once

#include <QCache>
#include <QHash>
#include <QObject>
#include <QPixmap>
#include <QSet>

#include "base/work_beside.h"

namespace lore {

/// Pictures of attachments at the size in which they are shown. They are decoded beside the window, so that a big photo
/// never stops the scrolling; until one is there the caller paints an empty frame.
class PictureCache : public QObject {
    Q_OBJECT

public:
    PictureCache();
    ~PictureCache() override;

    /// The size of the picture in a file, upright; empty for a file that holds none. Read once until the file changes.
    QSize NaturalSize(const QString& path);
    /// The picture in device pixels; null until Loaded has told of it, and for ever if the file can't be read.
    QPixmap Get(const QString& path, const QSize& size);
    /// Waits for all pictures that were asked for.
    void WaitForAll();

signals:
    void Loaded();

private:
    struct KnownSize {
        qint64 changed = 0;
        QSize size;
    };
    void Take(const QString& key, const QImage& image);

    QCache<QString, QPixmap> pixmaps_;  // cost: kilobytes
    QHash<QString, KnownSize> sizes_;
    QSet<QString> underWay_;
    WorkBeside loading_;  // ends before the rest goes
};

}  // namespace lore
