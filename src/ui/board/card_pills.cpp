#include "ui/board/card_pills.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "notes/board_layout.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {
namespace {

constexpr double kKeyWordBox = 32;  // pixels at 100 %

enum class PillShape { Level, Chip, Plain };

struct Pill {
    QRectF rect;
    QString text;  // cut to the room
    QString fullText;
    PillShape shape = PillShape::Level;
    bool arrowBefore = false;
};

class PillBlock : public CardBlock {
public:
    PillBlock(const CardContext& context, int width)
        : theme_(context.theme),
          font_(context.SmallFont()),
          metrics_(font_, context.device),
          width_(width),
          padding_(std::ceil(metrics_.height() * 0.5)),
          gap_(std::ceil(metrics_.height() * 0.25)),
          pillHeight_(std::ceil(metrics_.height() * 1.35)) {}

    int Height() const override { return static_cast<int>(std::ceil(height_)); }

    void Paint(QPainter& painter, const CardPaint& paint) const override {
        painter.setFont(font_);
        for (const Pill& pill : pills_)
            if (pill.rect.intersects(paint.clip))
                PaintPill(painter, pill, paint.devicePixelRatio);
    }

    CardHit HitTest(const QPointF& point) const override {
        for (const Pill& pill : pills_)
            if (pill.rect.contains(point) && pill.text != pill.fullText)
                return {CardHit::None, -1, pill.fullText};
        return {};
    }

    void FillPath(const QStringList& names, int setNumber) {
        double x = 0, y = 0;
        if (setNumber > 0)
            x = AddPlain(QString::number(setNumber), x, y) + gap_;
        const double indent = x;
        for (const QString& name : names) {
            const bool arrow = name != names.front();
            const double arrowWidth = arrow ? ArrowWidth() : 0;
            double width = std::min(PillWidth(name), width_ - indent - arrowWidth);
            if (x + arrowWidth + width > width_ && x > indent) {
                x = indent;
                y += pillHeight_ + gap_;
            }
            Add(name, QRectF(x + arrowWidth, y, width, pillHeight_), PillShape::Level, arrow);
            x += arrowWidth + width;
        }
        height_ = y + pillHeight_;
    }

    /// `count`: of all key words, the names are the first ones.
    void FillChips(const QStringList& names, size_t count, double boxHeight) {
        height_ = std::max(boxHeight, pillHeight_ + gap_);
        const double y = (height_ - pillHeight_) / 2;
        const double moreWidth = PillWidth(QStringLiteral("+%1").arg(count));
        double x = 0;
        for (qsizetype i = 0; i < names.size(); ++i) {
            const bool last = static_cast<size_t>(i) + 1 == count;
            const double room = width_ - x - (last ? 0 : gap_ + moreWidth);
            double width = PillWidth(names[i]);
            if (i == 0)
                width = std::min(width, room);
            if (width > room)
                return AddMore(names.mid(i), count - static_cast<size_t>(i), x, y);
            Add(names[i], QRectF(x, y, width, pillHeight_), PillShape::Chip, false);
            x += width + gap_;
        }
        if (count > static_cast<size_t>(names.size()))
            AddMore({}, count - static_cast<size_t>(names.size()), x, y);
    }

private:
    double PillWidth(const QString& text) const { return std::ceil(metrics_.horizontalAdvance(text)) + 2 * padding_; }
    double ArrowWidth() const { return std::ceil(metrics_.height() * 0.9); }

    void Add(const QString& text, const QRectF& rect, PillShape shape, bool arrow) {
        const double room = rect.width() - 2 * padding_ + 1;
        pills_.push_back({rect, metrics_.elidedText(text, Qt::ElideRight, room), text, shape, arrow});
    }

    double AddPlain(const QString& text, double x, double y) {
        const double width = std::ceil(metrics_.horizontalAdvance(text));
        pills_.push_back({QRectF(x, y, width, pillHeight_), text, text, PillShape::Plain, false});
        return x + width;
    }

    void AddMore(const QStringList& rest, size_t count, double x, double y) {
        const QString text = QStringLiteral("+%1").arg(count);
        pills_.push_back({QRectF(x, y, PillWidth(text), pillHeight_), text, rest.join(QStringLiteral(", ")),
                          PillShape::Chip, false});
    }

    void PaintPill(QPainter& painter, const Pill& pill, qreal ratio) const {
        if (pill.arrowBefore) {
            const double side = std::round(ArrowWidth() * 0.8);
            const QPixmap arrow =
                theme_.IconPixmap(QStringLiteral("chevron-right"), ColorRole::DimText, static_cast<int>(side), ratio);
            painter.drawPixmap(QPointF(pill.rect.left() - (ArrowWidth() + side) / 2, pill.rect.center().y() - side / 2),
                               arrow);
        }
        if (pill.shape == PillShape::Plain) {
            painter.setPen(theme_.Color(ColorRole::DimText));
            painter.drawText(pill.rect, Qt::AlignCenter, pill.text);
            return;
        }
        const bool chip = pill.shape == PillShape::Chip;
        const double radius = chip ? pill.rect.height() / 2 : kControlRadius;
        painter.setPen(chip ? QPen(theme_.Color(ColorRole::Edge), 1) : QPen(Qt::NoPen));
        painter.setBrush(chip ? QBrush(Qt::NoBrush) : QBrush(theme_.Color(ColorRole::Raised)));
        painter.drawRoundedRect(pill.rect.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
        painter.setPen(theme_.Color(ColorRole::Text));
        painter.drawText(pill.rect, Qt::AlignCenter, pill.text);
    }

    const Theme& theme_;
    QFont font_;
    QFontMetricsF metrics_;
    double width_, padding_, gap_, pillHeight_;
    double height_ = 0;
    std::vector<Pill> pills_;
};

}  // namespace

QStringList PathNames(const CProCategoryTree& path) {
    QStringList names;
    for (const std::string& name : PathLevels(path))
        names.append(ToQString(name));
    return names;
}

QStringList KeyWordNames(const std::string& keyWords, size_t* count) {
    QStringList names;
    for (const std::string& word : ShownKeyWords(keyWords, count))
        names.append(ToQString(word).simplified());
    return names;
}

std::unique_ptr<CardBlock> MakePathBlock(const CProCategoryTree& path, int setNumber, int width,
                                         const CardContext& context) {
    auto block = std::make_unique<PillBlock>(context, width);
    block->FillPath(PathNames(path), setNumber);
    return block;
}

std::unique_ptr<CardBlock> MakeKeyWordBlock(const std::string& keyWords, int width, const CardContext& context) {
    auto block = std::make_unique<PillBlock>(context, width);
    size_t count = 0;
    const QStringList names = KeyWordNames(keyWords, &count);
    block->FillChips(names, count, std::floor(kKeyWordBox * context.Zoom()));
    return block;
}

}  // namespace lore
