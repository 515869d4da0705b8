#include "ui/main/panel_delegate.h"

#include <QPainter>

#include "ui/look/theme.h"
#include "ui/main/panel_model.h"

namespace lore {

namespace {

QFont NameFont(const QFont& font, bool isInList) {
    QFont result = font;
    result.setWeight(isInList ? QFont::DemiBold : QFont::Normal);
    return result;
}

/// Gives its width.
int PaintSwatch(QPainter& painter, const QRect& room, const QColor& color, const QColor& edge) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(edge);
    painter.setBrush(color);
    const int size = room.height() - kSpace * 2;
    painter.drawRoundedRect(QRectF(room.left() + 0.5, room.top() + kSpace + 0.5, size * 2, size), kControlRadius / 2.0,
                            kControlRadius / 2.0);
    return size * 2;
}

}  // namespace

PanelDelegate::PanelDelegate(const Theme& theme, QObject* parent) : GroundDelegate(parent), theme_(theme) {}

void PanelDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    PaintGround(*painter, option, index);

    const bool selected = option.state & QStyle::State_Selected;
    const QRect room = option.rect.adjusted(kSpace, 0, -kSpace * 2, 0);
    const QString counts = index.data(PanelModel::CountsRole).toString();
    const int countsWidth = option.fontMetrics.horizontalAdvance(counts) + kSpace * 2;
    painter->save();
    painter->setPen(theme_.Color(selected ? ColorRole::SelectionText : ColorRole::DimText));
    painter->drawText(room, Qt::AlignRight | Qt::AlignVCenter, counts);
    QRect place = room.adjusted(0, 0, -countsWidth, 0);
    if (const QVariant swatch = index.data(PanelModel::SwatchRole); swatch.isValid())
        place.setLeft(place.left() + kSpace * 2 +
                      PaintSwatch(*painter, room, swatch.value<QColor>(), theme_.Color(ColorRole::Edge)));
    painter->setPen(theme_.Color(selected ? ColorRole::SelectionText : ColorRole::Text));
    painter->setFont(NameFont(option.font, index.data(PanelModel::InListRole).toInt() > 0));
    const QString name = index.data(Qt::DisplayRole).toString().simplified();
    painter->drawText(place, Qt::AlignLeft | Qt::AlignVCenter,
                      painter->fontMetrics().elidedText(name, Qt::ElideRight, place.width()));
    painter->restore();
}

QSize PanelDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    return {kSpace * 20, option.fontMetrics.height() + kSpace * 2};
}

}  // namespace lore
