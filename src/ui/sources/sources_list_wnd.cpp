#include "ui/sources/sources_list_wnd.h"

#include <QContextMenuEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include "ui/look/theme.h"
#include "ui/sources/citation_layout.h"

namespace lore {

namespace {

/// What a box leaves free at its sides and between it and the next one.
constexpr int kGap = 2;

class SourceBoxDelegate : public QStyledItemDelegate {
public:
    SourceBoxDelegate(const SourceListModel& model, const SourceBoxFigures& figures, const Theme& theme,
                      CSourcesListWnd& list)
        : QStyledItemDelegate(&list), model_(model), figures_(figures), theme_(theme), list_(list) {}

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const override {
        return {0, SourceBoxHeight(figures_, model_.At(index.row()), list_.Characters())};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        if (option.rect.isEmpty())
            return;
        const CSource& source = model_.At(index.row());
        const bool selected = option.state & QStyle::State_Selected;
        const QColor text = theme_.Color(selected ? ColorRole::SelectionText : ColorRole::Text);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setBrush(theme_.Color(selected ? ColorRole::Selection : ColorRole::Raised));
        const bool hasKeyboard = selected && list_.hasFocus();
        painter->setPen(hasKeyboard ? QPen(theme_.Color(ColorRole::Accent), 2) : QPen(Qt::NoPen));
        painter->drawRoundedRect(QRectF(option.rect).adjusted(kGap + 1, kGap, -kGap - 1, -kGap), kControlRadius,
                                 kControlRadius);
        PaintMark(*painter, option.rect, source, selected);
        painter->setPen(text);
        const CitationLayout citation(source, figures_, list_.Characters());
        const int top = option.rect.top() + (option.rect.height() - citation.Height()) / 2;
        const int left = option.rect.left() + figures_.textLeft;
        citation.Paint(*painter,
                       QRect(left, top, option.rect.right() + 1 - kSourceTextRightRoom - left, citation.Height()));
        painter->restore();
    }

private:
    void PaintMark(QPainter& painter, const QRect& box, const CSource& source, bool selected) const {
        const int size = figures_.markSize;
        const QRect place(box.left() + figures_.markLeft, box.top() + (box.height() - size) / 2, size, size);
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme_.Color(ColorRole::Field));
        painter.drawEllipse(place);
        const int inner = size * 14 / 25;
        const QPixmap icon =
            theme_.IconPixmap(SourceMarkIcon(source.SourceType), selected ? ColorRole::Accent : ColorRole::DimText,
                              inner, list_.devicePixelRatioF());
        painter.drawPixmap(QRect(place.left() + (size - inner) / 2, place.top() + (size - inner) / 2, inner, inner),
                           icon);
    }

    const SourceListModel& model_;
    const SourceBoxFigures& figures_;
    const Theme& theme_;
    CSourcesListWnd& list_;
};

}  // namespace

CSourcesListWnd::CSourcesListWnd(SourceListModel& model, const SourceBoxFigures& figures, const Theme& theme,
                                 QWidget* parent)
    : QuietView(parent), figures_(figures) {
    setObjectName("sources");
    setAccessibleName(tr("Sources"));
    setItemDelegate(new SourceBoxDelegate(model, figures, theme, *this));
    setModel(&model);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setResizeMode(QListView::Fixed);
    verticalScrollBar()->setSingleStep(figures.characterHeight);
    connect(&theme, &Theme::Changed, viewport(), qOverload<>(&QWidget::update));
}

void CSourcesListWnd::SelectRow(int row) {
    const QModelIndex index = model()->index(row, 0);
    if (!index.isValid()) {
        clearSelection();
        setCurrentIndex({});
        return;
    }
    setCurrentIndex(index);
    scrollTo(index);
}

int CSourcesListWnd::SelectedRow() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void CSourcesListWnd::mousePressEvent(QMouseEvent* event) {
    if (!indexAt(event->pos()).isValid()) {
        SelectRow(-1);
        return event->accept();
    }
    QuietView::mousePressEvent(event);
}

void CSourcesListWnd::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard) {
        if (SelectedRow() >= 0)
            emit MenuRequested(viewport()->mapToGlobal(visualRect(currentIndex()).center()));
        return;
    }
    const QModelIndex under = indexAt(viewport()->mapFromGlobal(event->globalPos()));
    if (!under.isValid())
        return;
    setCurrentIndex(under);
    emit MenuRequested(event->globalPos());
}

void CSourcesListWnd::resizeEvent(QResizeEvent* event) {
    const int characters = CharactersALine(figures_, viewport()->width());
    if (std::exchange(characters_, characters) != characters)
        scheduleDelayedItemsLayout();
    QuietView::resizeEvent(event);
}

void CSourcesListWnd::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QuietView::selectionChanged(selected, deselected);
    emit RowSelected(SelectedRow());
}

}  // namespace lore
