#include "ui/command_bar/command_bar_model.h"

#include <QApplication>
#include <QPainter>
#include <QTextCharFormat>
#include <QTextLayout>

#include "ui/qt_text.h"
#include "ui/theme.h"

namespace lore {

namespace {

constexpr size_t kMostRows = 50;

const char* IconOf(FoundKind kind) {
    switch (kind) {
        case FoundKind::Command:
            return "command";
        case FoundKind::NoteBook:
            return "notebook-text";
        case FoundKind::Category:
            return "folder-tree";
        case FoundKind::Source:
            return "book-open";
        case FoundKind::KeyWord:
            return "tag";
        case FoundKind::Note:
            return "file-text";
        case FoundKind::Search:
            return "search";
    }
    return "command";
}

/// Characters as the finder counts them, as positions of a QString.
QList<QTextLayout::FormatRange> Strong(const QString& text, const QVariantList& marks) {
    QTextCharFormat strong;
    strong.setFontWeight(QFont::Bold);
    QList<QTextLayout::FormatRange> ranges;
    qsizetype mark = 0;
    int character = 0;
    for (qsizetype i = 0; i < text.size() && mark < marks.size(); ++character) {
        const qsizetype length = text[i].isHighSurrogate() ? 2 : 1;
        if (marks[mark].toInt() == character) {
            ranges.append({static_cast<int>(i), static_cast<int>(length), strong});
            ++mark;
        }
        i += length;
    }
    return ranges;
}

}  // namespace

void CommandBarModel::Show(const CommandFinder& finder, const QString& typed) {
    beginResetModel();
    rows_.clear();
    for (FoundItem& found : finder.Find(FromQString(typed), kMostRows))
        rows_.push_back({finder.Items()[found.item], std::move(found.marks)});
    const QString wanted = typed.trimmed();
    if (!wanted.isEmpty())
        rows_.push_back({{FoundKind::Search, wanted.toStdString(), tr("Search the notes").toStdString(), 0}, {}});
    endResetModel();
}

int CommandBarModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant CommandBarModel::data(const QModelIndex& index, int role) const {
    const Row& row = rows_[static_cast<size_t>(index.row())];
    switch (role) {
        case Qt::DisplayRole:
            return QString::fromStdString(row.item.text);
        case DetailRole:
            return QString::fromStdString(row.item.detail);
        case Qt::AccessibleTextRole:
            return QString::fromStdString(row.item.text + ", " + row.item.detail);
        case IconRole:
            return QString::fromLatin1(IconOf(row.item.kind));
        case MarksRole:
            return QVariantList(row.marks.begin(), row.marks.end());
        default:
            return {};
    }
}

void CommandBarDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    ground.text.clear();
    QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &ground, painter, option.widget);
    const bool selected = option.state & QStyle::State_Selected;
    const ColorRole textRole = selected ? ColorRole::SelectionText : ColorRole::Text;
    const ColorRole dimRole = selected ? ColorRole::SelectionText : ColorRole::DimText;
    QRect room = option.rect.adjusted(kSpace * 3, 0, -kSpace * 3, 0);
    painter->save();
    const int size = option.fontMetrics.height();
    const QIcon icon = theme_.Icon(index.data(CommandBarModel::IconRole).toString(), dimRole);
    icon.paint(painter, QRect(room.left(), room.center().y() - size / 2, size, size));
    room.setLeft(room.left() + size + kSpace * 2);

    const QString detail = option.fontMetrics.elidedText(index.data(CommandBarModel::DetailRole).toString(),
                                                         Qt::ElideLeft, room.width() / 2);
    painter->setPen(theme_.Color(dimRole));
    painter->drawText(room, Qt::AlignRight | Qt::AlignVCenter, detail);
    room.setRight(room.right() - option.fontMetrics.horizontalAdvance(detail) - kSpace * 3);

    const QString text = index.data(Qt::DisplayRole).toString();
    painter->setPen(theme_.Color(textRole));
    painter->setClipRect(room);
    QTextLayout layout(text, option.font);
    QTextOption flow;
    flow.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(flow);
    layout.setFormats(Strong(text, index.data(CommandBarModel::MarksRole).toList()));
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    layout.draw(painter, QPointF(room.left(), room.center().y() - line.height() / 2));
    painter->restore();
}

QSize CommandBarDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    return {kSpace * 20, option.fontMetrics.height() + kSpace * 3};
}

}  // namespace lore
