#pragma once

#include <QApplication>
#include <QStyle>
#include <QStyledItemDelegate>

namespace lore {

/// Draws the text of its items itself, above the ground that the style gives them.
class GroundDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void PaintGround(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
        QStyleOptionViewItem ground = option;
        initStyleOption(&ground, index);
        ground.text.clear();
        QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &ground, &painter, option.widget);
    }
};

}  // namespace lore
