#include "ui/command_bar/command_bar_model.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QTextCharFormat>
#include <QTextLayout>
#include <QToolTip>
#include <algorithm>

#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

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
        case FoundKind::OtherNote:
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
        rows_.push_back({finder.Items()[found.item], std::move(found.marks), std::nullopt});
    const QString wanted = typed.trimmed();
    if (!wanted.isEmpty())
        rows_.push_back({{FoundKind::Search, wanted.toStdString(), tr("Search the notes").toStdString(), 0}, {}, {}});
    endResetModel();
}

const std::string& CommandBarModel::TextOfRow(const Row& row) const {
    if (!row.text)
        row.text = textOf_ ? textOf_(row.item) : row.item.text;
    return *row.text;
}

int CommandBarModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant CommandBarModel::data(const QModelIndex& index, int role) const {
    const Row& row = rows_[static_cast<size_t>(index.row())];
    switch (role) {
        case Qt::DisplayRole:
            return QString::fromStdString(TextOfRow(row));
        case DetailRole:
            return QString::fromStdString(row.item.detail);
        case Qt::AccessibleTextRole:
            return QString::fromStdString(TextOfRow(row) + ", " + row.item.detail);
        case IconRole:
            return QString::fromLatin1(IconOf(row.item.kind));
        case MarksRole:
            return QVariantList(row.marks.begin(), row.marks.end());
        default:
            return {};
    }
}

namespace {

/// Where the parts of a row stand.
struct RowLook {
    QRect icon, text, detail;
    QString shownDetail;
};

RowLook LookOf(const QStyleOptionViewItem& option, const QModelIndex& index) {
    RowLook look;
    QRect room = option.rect.adjusted(kSpace * 3, 0, -kSpace * 3, 0);
    const int size = option.fontMetrics.height();
    look.icon = QRect(room.left(), room.center().y() - size / 2, size, size);
    room.setLeft(room.left() + size + kSpace * 2);
    look.detail = room;
    look.shownDetail = option.fontMetrics.elidedText(index.data(CommandBarModel::DetailRole).toString(), Qt::ElideLeft,
                                                     room.width() / 2);
    room.setRight(room.right() - option.fontMetrics.horizontalAdvance(look.shownDetail) - kSpace * 3);
    look.text = room;
    return look;
}

/// A line of text; wider than the room, it is cut before three points.
class ElidedLine {
public:
    ElidedLine(const QString& text, const QVariantList& marks, const QFont& font, int width) {
        LayOut(text, marks, font);
        if (layout_.lineAt(0).naturalTextWidth() <= width)
            return;
        isCut_ = true;
        const QString points(QChar(0x2026));
        const int kept = layout_.lineAt(0).xToCursor(width - QFontMetricsF(font).horizontalAdvance(points),
                                                     QTextLine::CursorOnCharacter);
        LayOut(text.left(std::max(kept, 0)) + points, marks, font);
    }
    bool IsCut() const { return isCut_; }
    void Draw(QPainter& painter, const QRect& room) {
        layout_.draw(&painter, QPointF(room.left(), room.center().y() - layout_.lineAt(0).height() / 2));
    }

private:
    void LayOut(const QString& text, const QVariantList& marks, const QFont& font) {
        layout_.clearLayout();
        layout_.setText(text);
        layout_.setFont(font);
        QTextOption flow;
        flow.setWrapMode(QTextOption::NoWrap);
        layout_.setTextOption(flow);
        layout_.setFormats(Strong(text, marks));
        layout_.beginLayout();
        layout_.createLine();
        layout_.endLayout();
    }

    QTextLayout layout_;
    bool isCut_ = false;
};

ElidedLine LineOf(const QStyleOptionViewItem& option, const QModelIndex& index, const RowLook& look) {
    return {index.data(Qt::DisplayRole).toString(), index.data(CommandBarModel::MarksRole).toList(), option.font,
            look.text.width()};
}

}  // namespace

void CommandBarDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    PaintGround(*painter, option, index);
    const bool selected = option.state & QStyle::State_Selected;
    const ColorRole textRole = selected ? ColorRole::SelectionText : ColorRole::Text;
    const ColorRole dimRole = selected ? ColorRole::SelectionText : ColorRole::DimText;
    const RowLook look = LookOf(option, index);
    painter->save();
    theme_.Icon(index.data(CommandBarModel::IconRole).toString(), dimRole).paint(painter, look.icon);
    painter->setPen(theme_.Color(dimRole));
    painter->drawText(look.detail, Qt::AlignRight | Qt::AlignVCenter, look.shownDetail);
    painter->setPen(theme_.Color(textRole));
    painter->setClipRect(look.text);
    LineOf(option, index, look).Draw(*painter, look.text);
    painter->restore();
}

bool CommandBarDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return GroundDelegate::helpEvent(event, view, option, index);
    const RowLook look = LookOf(option, index);
    const QString detail = index.data(CommandBarModel::DetailRole).toString();
    const bool isCut = LineOf(option, index, look).IsCut() || detail != look.shownDetail;
    const QString whole = QStringLiteral("<p>%1<br>%2</p>")
                              .arg(index.data(Qt::DisplayRole).toString().toHtmlEscaped(), detail.toHtmlEscaped());
    QToolTip::showText(event->globalPos(), isCut ? whole : QString(), view);
    return true;
}

QSize CommandBarDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    return {kSpace * 20, option.fontMetrics.height() + kSpace * 3};
}

}  // namespace lore
