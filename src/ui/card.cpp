#include "ui/card.h"

#include <QFontMetricsF>
#include <algorithm>

#include "notes/board_layout.h"
#include "ui/card_attachments.h"
#include "ui/card_pills.h"
#include "ui/card_sources.h"
#include "ui/card_text.h"
#include "ui/qt_text.h"
#include "ui/theme.h"

namespace lore {
namespace {

// The space that parts a card from its neighbours.
constexpr int kAbove = 7, kBelow = 3;
constexpr int kBorderWidth = kSpace;
constexpr int kRingWidth = 2;
constexpr double kRemoveSide = 24;
// How far the letters of a block may reach over its edges.
constexpr int kReachAside = 22, kReachAbove = 16;

/// What a part of a card is made of.
std::unique_ptr<CardBlock> MakeBlock(const CNote& note, const std::vector<const CSource*>& sources,
                                     const CardPart& part, const CardContext& context) {
    switch (part.kind) {
        case CardPartKind::Path:
            return MakePathBlock(note.categories[part.index], part.numbered ? static_cast<int>(part.index) + 1 : 0,
                                 part.width, context);
        case CardPartKind::KeyWords:
            return MakeKeyWordBlock(note.keyWords, part.width, context);
        case CardPartKind::Source: {
            const CSource& source = *sources[part.index];
            return MakeSourceBlock(source, context.model.SourceRemark(note, source), part.width, context);
        }
        case CardPartKind::Attachments:
            return MakeAttachmentBlock(note, part.width, context);
        case CardPartKind::Text:
            break;
    }
    return MakeTextBlock(note, part.width, context);
}

}  // namespace

Card::Card(const CNote& note, int width, bool focus, const CardContext& context)
    : theme_(context.theme),
      width_(width),
      focus_(focus),
      newlyAdded_(note.newlyAdded),
      removeSide_(std::max(kRemoveSide, QFontMetricsF(context.theme.Font(TextSize::Small)).height() * 1.4)),
      border_(Legible(ToQColor(note.borderColor), context.theme.Color(ColorRole::Board), 3.0)),
      textGround_(context.textGround) {
    const auto sources = context.model.SourcesOf(note);
    const CardLayout layout =
        LayOutCard(CardContentOf(note, sources.size()), context.options, width, [&](const CardPart& part) {
            blocks_.push_back({MakeBlock(note, sources, part, context), {}, part.width});
            return blocks_.back().block->Height();
        });
    for (size_t i = 0; i < blocks_.size(); ++i)
        blocks_[i].at = QPointF(layout.parts[i].left, layout.parts[i].top);
    textRect_ = QRectF(layout.textLeft, layout.textTop, layout.textWidth, layout.textHeight);
    height_ = layout.height;
}

QRectF Card::Outline() const {
    return QRectF(kRingWidth, kAbove, width_ - 2 * kRingWidth, height_ - kAbove - kBelow);
}

QRectF Card::RemoveRect() const {
    const QRectF outline = Outline();
    return QRectF(outline.right() - removeSide_ - kSpace, outline.top() + kSpace, removeSide_, removeSide_);
}

void Card::PaintFrame(QPainter& painter) const {
    const QRectF outline = Outline();
    painter.setPen(Qt::NoPen);
    painter.setBrush(border_);
    painter.drawRoundedRect(outline, kCardRadius, kCardRadius);
    painter.setBrush(theme_.Color(ColorRole::Card));
    painter.drawRoundedRect(outline.adjusted(kBorderWidth, 1, -1, -1), kCardRadius - 1, kCardRadius - 1);
    if (!focus_)
        return;
    painter.setPen(QPen(theme_.Color(ColorRole::Accent), kRingWidth));
    painter.setBrush(Qt::NoBrush);
    const double out = kRingWidth / 2.0;
    painter.drawRoundedRect(outline.adjusted(-out, -out, out, out), kCardRadius + out, kCardRadius + out);
    painter.setPen(Qt::NoPen);
    painter.setBrush(textGround_);
    painter.drawRoundedRect(textRect_, kControlRadius, kControlRadius);
}

void Card::PaintMarks(QPainter& painter, const CardPaint& paint) const {
    if (paint.hovered) {
        const QRectF rect = RemoveRect();
        const int side = static_cast<int>(removeSide_ * 0.66);
        painter.setPen(QPen(theme_.Color(ColorRole::FaintEdge), 1));
        painter.setBrush(theme_.Color(paint.hot.part == CardHit::Remove ? ColorRole::Hover : ColorRole::Card));
        painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), kControlRadius, kControlRadius);
        painter.drawPixmap(rect.center() - QPointF(side / 2.0, side / 2.0),
                           theme_.IconPixmap(QStringLiteral("x"), ColorRole::DimText, side, paint.devicePixelRatio));
    }
    if (!newlyAdded_)
        return;
    const QString text = QStringLiteral("New");
    QFont font = theme_.Font(TextSize::Small);
    font.setWeight(QFont::DemiBold);
    const QFontMetricsF metrics(font);
    QRectF tag(0, 0, metrics.horizontalAdvance(text) + 4 * kSpace, metrics.height() + 2);
    tag.moveTopRight(QPointF(Outline().right() - 3 * kSpace - removeSide_, 1));
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme_.Color(ColorRole::Accent));
    painter.drawRoundedRect(tag, tag.height() / 2, tag.height() / 2);
    painter.setFont(font);
    painter.setPen(theme_.Color(ColorRole::AccentText));
    painter.drawText(tag, Qt::AlignCenter, text);
}

void Card::Paint(QPainter& painter, const QPoint& at, const CardPaint& paint) const {
    painter.save();
    painter.translate(at);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintFrame(painter);
    CardPaint inner = paint;
    for (const Placed& placed : blocks_) {
        inner.clip = paint.clip.translated(-placed.at)
                         .intersected(QRectF(-kReachAside, -kReachAbove, placed.width + 2 * kReachAside,
                                             placed.block->Height() + 2 * kReachAbove));
        if (inner.clip.isEmpty())
            continue;
        painter.save();
        painter.translate(placed.at);
        placed.block->Paint(painter, inner);
        painter.restore();
    }
    PaintMarks(painter, paint);
    painter.restore();
}

CardHit Card::HitTest(const QPointF& point) const {
    if (RemoveRect().contains(point))
        return {CardHit::Remove, -1, QStringLiteral("Remove From Current List")};
    for (const Placed& placed : blocks_)
        if (QRectF(placed.at, QSizeF(placed.width, placed.block->Height())).contains(point))
            return placed.block->HitTest(point - placed.at);
    return {};
}

QRectF Card::AttachmentRect(int attachment) const {
    for (const Placed& placed : blocks_)
        if (const QRectF rect = placed.block->AttachmentRect(attachment); !rect.isEmpty())
            return rect.translated(placed.at);
    return {};
}

QString SpokenCard(const CNote& note, const BoardModel& model, const BoardOptions& options) {
    QStringList parts;
    if (note.newlyAdded)
        parts.append(QStringLiteral("New"));
    parts.append(note.plainText.empty() ? QStringLiteral("Note without text") : ToQString(note.plainText).simplified());
    if (options.showSources)
        for (const CSource* source : model.SourcesOf(note))
            parts.append(QStringLiteral("Source: ") + ToQString(source->FormattedText).simplified());
    if (options.showCategories)
        for (const CProCategoryTree& path : note.categories)
            if (IsShownPath(path))
                parts.append(QStringLiteral("Category: ") + PathNames(path).join(QStringLiteral(", ")));
    if (options.showKeyWords && !note.keyWords.empty())
        parts.append(QStringLiteral("Key words: ") + KeyWordNames(note.keyWords).join(QStringLiteral(", ")));
    for (const CAttachment& attachment : note.attachments)
        parts.append(QStringLiteral("Attachment: ") + ToQString(attachment.title).simplified());
    return parts.join(QStringLiteral(". "));
}

}  // namespace lore
