#include "ui/board/card.h"

#include <QFontMetricsF>
#include <algorithm>
#include <iterator>
#include <string_view>

#include "notes/board_commands.h"
#include "notes/board_layout.h"
#include "ui/board/card_attachments.h"
#include "ui/board/card_pills.h"
#include "ui/board/card_sources.h"
#include "ui/board/card_text.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {
namespace {

// The space that parts a card from its neighbours.
constexpr int kAbove = 7, kBelow = 3;
constexpr int kBorderWidth = kSpace;
constexpr int kRingWidth = 2;
constexpr double kActionSide = 24;
// How far the letters of a block may reach over its edges.
constexpr int kReachAside = 22, kReachAbove = 16;

/// The buttons that a card shows under the mouse, from left to right.
struct CardAction {
    CardHit::Part part;
    BoardCommand command;
    const char* icon;
};
constexpr CardAction kActions[] = {{CardHit::Edit, BoardCommand::EditNote, "pencil"},
                                   {CardHit::Delete, BoardCommand::DeleteNote, "trash-2"},
                                   {CardHit::Remove, BoardCommand::RemoveFromList, "x"}};

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
      actionSide_(std::max(kActionSide, QFontMetricsF(context.theme.Font(TextSize::Small)).height() * 1.4)),
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

QRectF Card::ActionRect(size_t action) const {
    const QRectF outline = Outline();
    const double fromRight = static_cast<double>(std::size(kActions) - action) * actionSide_;
    return QRectF(outline.right() - fromRight - kSpace, outline.top() + kSpace, actionSide_, actionSide_);
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

void Card::PaintActions(QPainter& painter, const CardPaint& paint) const {
    const int side = static_cast<int>(actionSide_ * 0.66);
    const QRectF all = ActionRect(0).united(ActionRect(std::size(kActions) - 1));
    painter.setPen(QPen(theme_.Color(ColorRole::FaintEdge), 1));
    painter.setBrush(theme_.Color(ColorRole::Card));
    painter.drawRoundedRect(all.adjusted(0.5, 0.5, -0.5, -0.5), kControlRadius, kControlRadius);
    for (size_t i = 0; i < std::size(kActions); ++i) {
        const QRectF rect = ActionRect(i);
        if (paint.hot.part == kActions[i].part) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(theme_.Color(ColorRole::Hover));
            painter.drawRoundedRect(rect.adjusted(1, 1, -1, -1), kControlRadius - 1, kControlRadius - 1);
        }
        painter.drawPixmap(
            rect.center() - QPointF(side / 2.0, side / 2.0),
            theme_.IconPixmap(QString::fromLatin1(kActions[i].icon), ColorRole::DimText, side, paint.devicePixelRatio));
    }
}

void Card::PaintMarks(QPainter& painter, const CardPaint& paint) const {
    if (paint.hovered)
        PaintActions(painter, paint);
    if (!newlyAdded_)
        return;
    const QString text = QStringLiteral("New");
    QFont font = theme_.Font(TextSize::Small);
    font.setWeight(QFont::DemiBold);
    const QFontMetricsF metrics(font);
    QRectF tag(0, 0, metrics.horizontalAdvance(text) + 4 * kSpace, metrics.height() + 2);
    tag.moveTopRight(QPointF(ActionRect(0).left() - 2 * kSpace, 1));
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
    for (size_t i = 0; i < std::size(kActions); ++i) {
        const std::string_view text = BoardCommandText(kActions[i].command);
        if (ActionRect(i).contains(point))
            return {kActions[i].part, -1, QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()))};
    }
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
