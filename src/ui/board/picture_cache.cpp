#include "ui/board/picture_cache.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QImageReader>
#include <algorithm>

namespace lore {
namespace {

constexpr int kBudget = 128 * 1024;  // kilobytes of decoded pictures
constexpr int kLoaders = 2;
constexpr int kMostSizes = 20000;  // files whose sizes are kept

QImage Load(const QString& path, const QSize& size) {
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const bool turned = reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
    if (reader.supportsOption(QImageIOHandler::ScaledSize))
        reader.setScaledSize(turned ? size.transposed() : size);
    QImage image = reader.read();
    if (image.isNull() || image.size() == size)
        return image;
    return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

}  // namespace

PictureCache::PictureCache() : loading_(kLoaders) {
    pixmaps_.setMaxCost(kBudget);
}

PictureCache::~PictureCache() {
    loading_.Forget();
}

QSize PictureCache::NaturalSize(const QString& path) {
    const QFileInfo file(path);
    const qint64 changed = file.lastModified().toMSecsSinceEpoch();
    if (const auto known = sizes_.constFind(path); known != sizes_.constEnd() && known->changed == changed)
        return known->size;
    if (sizes_.size() >= kMostSizes)
        sizes_.clear();
    QImageReader reader(path);
    reader.setAutoTransform(true);
    QSize size = reader.size();
    if (!size.isValid())
        size = reader.read().size();
    else if (reader.transformation().testFlag(QImageIOHandler::TransformationRotate90))
        size.transpose();
    sizes_.insert(path, {changed, size});
    return size;
}

QPixmap PictureCache::Get(const QString& path, const QSize& size) {
    const QString key =
        QStringLiteral("%1x%2 %3 %4").arg(size.width()).arg(size.height()).arg(sizes_.value(path).changed).arg(path);
    if (const QPixmap* there = pixmaps_.object(key))
        return *there;
    if (size.isEmpty() || underWay_.contains(key))
        return {};
    underWay_.insert(key);
    loading_.Run([this, key, path, size] {
        const QImage image = Load(path, size);
        QMetaObject::invokeMethod(
            this, [this, key, image] { Take(key, image); }, Qt::QueuedConnection);
    });
    return {};
}

void PictureCache::Take(const QString& key, const QImage& image) {
    underWay_.remove(key);
    const int cost = std::max<int>(1, static_cast<int>(image.sizeInBytes() / 1024));
    pixmaps_.insert(key, new QPixmap(QPixmap::fromImage(image)), std::min(cost, kBudget));
    emit Loaded();
}

void PictureCache::WaitForAll() {
    loading_.Wait();
    QCoreApplication::sendPostedEvents(this);
}

}  // namespace lore
