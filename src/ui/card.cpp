#include "ui/card.h"

#include <QFontMetricsF>
#include <algorithm>

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

// Distances of the blocks, in pixels at every zoom.
constexpr int kPillInset = 17, kTextInset = 16, kAttachmentInset = 21;
constexpr int kTextSide = 22, kTextAbove = 16, kTextBelow = 6, kTextBehind = 17, kTextNarrower = 85;

bool HasPath(const CProCategoryTree& path) {
    return path.id > 0;
}

bool HasAnyPath(const CNote& note) {
    return std::any_of(note.categories.begin(), note.categories.end(), HasPath);
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
    const BoardOptions& options = context.options;
    int y = 0;
    if (options.categoriesOnTop)
        AddPaths(note, y, context);
    if (options.keyWordsOnTop)
        AddKeyWords(note, y, context);
    if (options.sourcesOnTop)
        AddSources(note, y, context);
    AddText(note, y, context);
    AddAttachments(note, y, context);
    if (!options.sourcesOnTop)
        AddSources(note, y, context);
    if (!options.keyWordsOnTop)
        AddKeyWords(note, y, context);
    if (!options.categoriesOnTop)
        AddPaths(note, y, context);
    height_ = y;
}

void Card::Place(std::unique_ptr<CardBlock> block, int inset, int width, int y) {
    blocks_.push_back({std::move(block), QPointF(inset, y), width});
}

void Card::AddPaths(const CNote& note, int& y, const CardContext& context) {
    const BoardOptions& options = context.options;
    const size_t sets = options.onlySetOne ? 1 : kSetCount;
    const bool any = options.onlySetOne ? HasPath(note.categories[0]) : HasAnyPath(note);
    if (!options.showCategories || !any)
        return;
    y += options.categoriesOnTop ? 17 : (blocks_.empty() ? 0 : 8);
    const bool numbered = HasPath(note.categories[1]) || HasPath(note.categories[2]);
    bool above = false;
    for (size_t set = 0; set < sets; ++set) {
        if (!HasPath(note.categories[set]))
            continue;
        y += above ? 7 : 0;
        auto block = MakePathBlock(note.categories[set], numbered && sets > 1 ? static_cast<int>(set) + 1 : 0,
                                   width_ - 2 * kPillInset, context);
        const int height = block->Height();
        // The path of set 3 stands at a gap of 6, while the card's height counts 7.
        Place(std::move(block), kPillInset, width_ - 2 * kPillInset, set == 2 && above ? y - 1 : y);
        y += height;
        above = true;
    }
    y += options.categoriesOnTop ? 9 : 7;
}

void Card::AddKeyWords(const CNote& note, int& y, const CardContext& context) {
    if (!context.options.showKeyWords || KeyWordNames(note.keyWords).isEmpty())
        return;
    if (context.options.keyWordsOnTop)
        y += blocks_.empty() ? 17 : 0;
    else
        y += blocks_.empty() ? 0 : 9;
    auto block = MakeKeyWordBlock(note.keyWords, width_ - 2 * kPillInset, context);
    const int height = block->Height();
    Place(std::move(block), kPillInset, width_ - 2 * kPillInset, y);
    y += height + 8;
}

void Card::AddSources(const CNote& note, int& y, const CardContext& context) {
    if (!context.options.showSources)
        return;
    const auto sources = context.model.SourcesOf(note);
    if (sources.empty())
        return;
    const bool top = context.options.sourcesOnTop;
    if (top)
        y += blocks_.empty() ? 18 : 0;
    else
        y += blocks_.empty() ? 0 : 9;
    bool above = false;
    for (const CSource* source : sources) {
        y += above ? 8 : 0;
        auto block =
            MakeSourceBlock(*source, context.model.SourceRemark(note, *source), width_ - 2 * kPillInset, context);
        const int height = block->Height();
        Place(std::move(block), kPillInset, width_ - 2 * kPillInset, y);
        y += height;
        above = true;
    }
    y += top ? 8 : 9;
}

void Card::AddText(const CNote& note, int& y, const CardContext& context) {
    if (note.plainText.empty()) {
        y += kTextBehind;
        return;
    }
    y += blocks_.empty() ? 17 : 0;
    auto block = MakeTextBlock(note, std::max(1, width_ - kTextNarrower), context);
    const int height = block->Height();
    textRect_ = QRectF(kTextInset, y, width_ - 2 * kTextInset, kTextAbove + height + kTextBelow);
    Place(std::move(block), kTextInset + kTextSide, width_ - kTextNarrower, y + kTextAbove);
    y = static_cast<int>(textRect_.bottom()) + kTextBehind;
}

void Card::AddAttachments(const CNote& note, int& y, const CardContext& context) {
    if (note.attachments.empty())
        return;
    auto block = MakeAttachmentBlock(note, PictureWidth(width_), context);
    const int height = block->Height();
    Place(std::move(block), kAttachmentInset, width_ - 2 * kAttachmentInset, y);
    y += height;
}

int Card::PictureWidth(int cardWidth) {
    return std::max(1, cardWidth - 2 * kAttachmentInset);
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
                         .intersected(QRectF(-kTextSide, -kTextAbove, placed.width + 2 * kTextSide,
                                             placed.block->Height() + 2 * kTextAbove));
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
            if (HasPath(path))
                parts.append(QStringLiteral("Category: ") + PathNames(path).join(QStringLiteral(", ")));
    if (options.showKeyWords && !note.keyWords.empty())
        parts.append(QStringLiteral("Key words: ") + KeyWordNames(note.keyWords).join(QStringLiteral(", ")));
    for (const CAttachment& attachment : note.attachments)
        parts.append(QStringLiteral("Attachment: ") + ToQString(attachment.title).simplified());
    return parts.join(QStringLiteral(". "));
}

}  // namespace lore
