#include "ui/board/card_attachments.h"

#include <QFileInfo>
#include <QFontMetricsF>
#include <QLocale>
#include <algorithm>
#include <array>
#include <cmath>

#include "notes/attachment_kind.h"
#include "notes/board_layout.h"
#include "ui/board/card_picture.h"
#include "ui/board/picture_cache.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {
namespace {

constexpr int kTilesAcross = 3;     // at most
constexpr double kTileWidth = 260;  // at least, in pixels at 100 %
constexpr double kTileIcon = 28;
constexpr double kTileLines = 16;  // least width in heights of its text

struct Tile {
    int attachment = 0;
    QRectF rect;
    QString title, info, icon;
    bool link = false;
};

class AttachmentBlock : public CardBlock {
public:
    AttachmentBlock(const CNote& note, int width, const CardContext& context)
        : theme_(context.theme), titleFont_(context.SmallFont()), infoFont_(context.SmallFont()) {
        titleFont_.setWeight(QFont::DemiBold);
        const double zoom = context.Zoom();
        padding_ = 2 * kSpace * zoom;
        const double line = std::ceil(QFontMetricsF(titleFont_).height());
        icon_ = std::max(kTileIcon * zoom, 1.5 * line);
        const double tileHeight = std::max(icon_, 2 * line) + 2 * padding_;
        const double gap = 2 * kSpace;
        const double least = std::max(kTileWidth * zoom, kTileLines * line);
        const int across = std::clamp(static_cast<int>((width + gap) / (least + gap)), 1, kTilesAcross);
        const double tileWidth = std::floor((width - gap * (across - 1)) / across);
        int column = 0;
        double y = 0;
        for (size_t i = 0; i < note.attachments.size(); ++i) {
            const CAttachment& attachment = note.attachments[i];
            const int index = static_cast<int>(i);
            if (IsShownPicture(attachment)) {
                y += column > 0 ? tileHeight + gap : 0;
                column = 0;
                pictures_.push_back(std::make_unique<CardPicture>(attachment, index, width, context));
                pictureTops_.push_back(y);
                y += pictures_.back()->Height() + gap;
                continue;
            }
            AddTile(attachment, index, QRectF(column * (tileWidth + gap), y, tileWidth, tileHeight), context);
            column = (column + 1) % across;
            y += column == 0 ? tileHeight + gap : 0;
        }
        height_ = y + (column > 0 ? tileHeight + gap : 0) + kSpace;
    }

    int Height() const override { return static_cast<int>(std::ceil(height_)); }

    void Paint(QPainter& painter, const CardPaint& paint) const override {
        for (size_t i = 0; i < pictures_.size(); ++i) {
            painter.save();
            painter.translate(0, pictureTops_[i]);
            pictures_[i]->Paint(painter, paint);
            painter.restore();
        }
        for (const Tile& tile : tiles_)
            if (tile.rect.intersects(paint.clip))
                PaintTile(painter, tile, paint);
    }

    CardHit HitTest(const QPointF& point) const override {
        for (size_t i = 0; i < pictures_.size(); ++i)
            if (CardHit hit = pictures_[i]->HitTest(point - QPointF(0, pictureTops_[i])); hit.part != CardHit::None)
                return hit;
        for (const Tile& tile : tiles_)
            if (tile.rect.contains(point))
                return {tile.link ? CardHit::WebLink : CardHit::Open, tile.attachment,
                        QStringLiteral("%1\n%2").arg(tile.title, tile.info)};
        return {};
    }

    QRectF AttachmentRect(int attachment) const override {
        for (size_t i = 0; i < pictures_.size(); ++i)
            if (pictures_[i]->Attachment() == attachment)
                return pictures_[i]->PictureRect().translated(0, pictureTops_[i]);
        for (const Tile& tile : tiles_)
            if (tile.attachment == attachment)
                return tile.rect;
        return {};
    }

private:
    void AddTile(const CAttachment& attachment, int index, const QRectF& rect, const CardContext& context) {
        Tile tile;
        tile.attachment = index;
        tile.rect = rect;
        tile.link = attachment.type == kWebLink;
        tile.title = ToQString(attachment.title.empty() ? attachment.sourceFile : attachment.title).simplified();
        tile.info = AttachmentInfo(attachment, context.model);
        tile.icon = AttachmentIcon(attachment.type);
        tiles_.push_back(std::move(tile));
    }

    void PaintTile(QPainter& painter, const Tile& tile, const CardPaint& paint) const {
        const bool hot = paint.hot.attachment == tile.attachment;
        painter.setPen(QPen(theme_.Color(hot ? ColorRole::Edge : ColorRole::FaintEdge), 1));
        painter.setBrush(theme_.Color(hot ? ColorRole::Hover : ColorRole::Raised));
        painter.drawRoundedRect(tile.rect.adjusted(0.5, 0.5, -0.5, -0.5), kControlRadius, kControlRadius);
        const QRectF inner = tile.rect.adjusted(padding_, padding_, -padding_, -padding_);
        const int side = static_cast<int>(std::lround(icon_ * 0.8));
        painter.drawPixmap(QPointF(inner.left() + (icon_ - side) / 2, inner.center().y() - side / 2.0),
                           theme_.IconPixmap(tile.icon, tile.link ? ColorRole::Link : ColorRole::DimText, side,
                                             paint.devicePixelRatio));
        const QRectF text = inner.adjusted(icon_ + padding_, 0, 0, 0);
        const QFontMetricsF titleMetrics(titleFont_), infoMetrics(infoFont_);
        painter.setFont(titleFont_);
        painter.setPen(theme_.Color(tile.link ? ColorRole::Link : ColorRole::Text));
        painter.drawText(QRectF(text.left(), text.top(), text.width(), text.height() / 2),
                         Qt::AlignLeft | Qt::AlignVCenter,
                         titleMetrics.elidedText(tile.title, Qt::ElideMiddle, text.width()));
        painter.setFont(infoFont_);
        painter.setPen(theme_.Color(ColorRole::DimText));
        painter.drawText(QRectF(text.left(), text.center().y(), text.width(), text.height() / 2),
                         Qt::AlignLeft | Qt::AlignVCenter,
                         infoMetrics.elidedText(tile.info, Qt::ElideRight, text.width()));
    }

    const Theme& theme_;
    QFont titleFont_, infoFont_;
    double padding_ = 0, icon_ = 0, height_ = 0;
    std::vector<Tile> tiles_;
    std::vector<std::unique_ptr<CardPicture>> pictures_;
    std::vector<double> pictureTops_;
};

}  // namespace

QString AttachmentInfo(const CAttachment& attachment, const BoardModel& model) {
    if (attachment.type == kWebLink)
        return ToQString(attachment.sourceFile).simplified();
    const QFileInfo file(PathToQString(model.AttachmentPath(attachment)));
    if (!file.isFile())
        return QStringLiteral("File not found");
    const QString size = QLocale(QLocale::English).formattedDataSize(file.size(), 0, QLocale::DataSizeSIFormat);
    return QStringLiteral("%1, %2").arg(ToQString(AttachmentKindName(attachment.type)), size);
}

QString AttachmentIcon(int32_t kind) {
    static constexpr std::pair<int32_t, const char*> kIcons[] = {{kImageFile, "image"},
                                                                 {kTextFile, "file-text"},
                                                                 {kDocumentFile, "file-type"},
                                                                 {kPdfFile, "file-text"},
                                                                 {kSpreadsheetFile, "file-spreadsheet"},
                                                                 {kMusicFile, "music"},
                                                                 {kVideoFile, "film"},
                                                                 {kHtmlFile, "globe"},
                                                                 {kCodeFile, "file-code"},
                                                                 {kCompressedFile, "file-archive"},
                                                                 {kWebLink, "link"}};
    for (const auto& [known, name] : kIcons)
        if (known == kind)
            return QString::fromLatin1(name);
    return QStringLiteral("file");
}

std::unique_ptr<CardBlock> MakeAttachmentBlock(const CNote& note, int width, const CardContext& context) {
    return std::make_unique<AttachmentBlock>(note, width, context);
}

}  // namespace lore
