#include "ui/categories/edit_categories_ctrl.h"

#include <QContextMenuEvent>
#include <QDrag>
#include <QDragMoveEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <unordered_set>

#include "edit/category_trees.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {

namespace {

constexpr int kIdRole = Qt::UserRole;
constexpr int kOpenDelay = 600;  // ms that a drag rests on a closed node
/// A forest of so many categories opens as a whole.
constexpr size_t kOpensWhole = 150;

int32_t IdOf(const QTreeWidgetItem* item) {
    return item ? item->data(0, kIdRole).toInt() : -1;
}

}  // namespace

CEditCategoriesCtrl::CEditCategoriesCtrl(const Theme& theme, QWidget* parent) : QuietView(parent), theme_(theme) {
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setIndentation(kSpace * 5);
    setExpandsOnDoubleClick(false);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setDragDropMode(QAbstractItemView::DragDrop);
    setDropIndicatorShown(false);
    setAutoScroll(true);
    setAutoExpandDelay(kOpenDelay);
    setAccessibleName(tr("Category trees"));
    header()->setStretchLastSection(true);
    header()->setResizeContentsPrecision(0);
    setHorizontalScrollMode(ScrollPerPixel);
    for (const auto told : {&QTreeWidget::expanded, &QTreeWidget::collapsed})
        connect(this, told, this, &CEditCategoriesCtrl::GrowToNames);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &CEditCategoriesCtrl::GrowToNames);
    connect(&theme_, &Theme::Changed, this, &CEditCategoriesCtrl::Restyle);
}

void CEditCategoriesCtrl::Show(const std::vector<PanelEntry>& entries) {
    std::unordered_set<int32_t> open;
    for (const auto& [id, item] : items_)
        if (item->isExpanded())
            open.insert(id);
    const bool opensAll = !std::exchange(isFilled_, true) && entries.size() <= kOpensWhole;
    const int32_t current = Current();
    const QSignalBlocker quiet(this);
    dropTarget_ = nullptr;
    items_.clear();
    clear();
    std::vector<QTreeWidgetItem*> made;
    QList<QTreeWidgetItem*> roots;
    for (const PanelEntry& entry : entries) {
        auto* const item = new QTreeWidgetItem;
        item->setText(0, ToQString(CategoryTrees::NodeText(entry.name, entry.notes.size())));
        item->setData(0, kIdRole, entry.id);
        if (entry.parent < 0)
            roots.append(item);
        else
            made[static_cast<size_t>(entry.parent)]->addChild(item);
        made.push_back(item);
        items_.emplace(entry.id, item);
    }
    addTopLevelItems(roots);
    for (const auto& [id, item] : items_)
        if (opensAll || open.contains(id))
            item->setExpanded(true);
    Restyle();
    GrowToNames();
    if (QTreeWidgetItem* const item = ItemOf(current))
        setCurrentItem(item);
}

int32_t CEditCategoriesCtrl::Current() const {
    return IdOf(currentItem());
}

QTreeWidgetItem* CEditCategoriesCtrl::ItemOf(int32_t id) const {
    const auto found = items_.find(id);
    return found == items_.end() ? nullptr : found->second;
}

void CEditCategoriesCtrl::GoTo(int32_t id) {
    QTreeWidgetItem* const item = ItemOf(id);
    if (!item)
        return;
    for (QTreeWidgetItem* above = item->parent(); above; above = above->parent())
        above->setExpanded(true);
    setCurrentItem(item);
    scrollToItem(item);
}

/// Rows reach as far as the window does, and farther where a name in sight ends behind that.
void CEditCategoriesCtrl::GrowToNames() {
    const int needed = sizeHintForColumn(0);
    if (needed > header()->minimumSectionSize())
        header()->setMinimumSectionSize(needed);
}

void CEditCategoriesCtrl::scrollTo(const QModelIndex& index, ScrollHint hint) {
    QScrollBar& across = *horizontalScrollBar();
    const int before = across.value();
    QuietView::scrollTo(index, hint);
    GrowToNames();
    updateGeometries();
    // The base class shows where rows begin, not names.
    across.setValue(before);
    const int begin = visualRect(index).left() - indentation();
    const int end = visualRect(index).left() + sizeHintForIndex(index).width();
    across.setValue(before + std::min(begin, 0) + std::max(0, std::min(begin, end - viewport()->width())));
}

void CEditCategoriesCtrl::MarkAsCut(int32_t id) {
    cut_ = id;
    Restyle();
}

void CEditCategoriesCtrl::Restyle() {
    const QSignalBlocker quiet(this);
    for (const auto& [id, item] : items_) {
        const bool dim = id == cut_ || id == kUnassignedID;
        item->setForeground(0, theme_.Color(dim ? ColorRole::DimText : ColorRole::Text));
        QFont face = font();
        face.setItalic(id == cut_);
        item->setFont(0, face);
    }
}

void CEditCategoriesCtrl::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard) {
        const QRect place = currentItem() ? visualItemRect(currentItem()) : QRect(kSpace, kSpace, 1, 1);
        emit MenuRequested(Current(), viewport()->mapToGlobal(place.bottomLeft()));
        return;
    }
    emit MenuRequested(IdOf(itemAt(event->pos())), event->globalPos());
}

void CEditCategoriesCtrl::SetDropTarget(QTreeWidgetItem* item) {
    if (std::exchange(dropTarget_, item) != item)
        viewport()->update();
}

void CEditCategoriesCtrl::startDrag(Qt::DropActions) {
    if (!currentItem())
        return;
    // The base class would take the node out of the tree when the drag ends.
    auto* const drag = new QDrag(this);
    drag->setMimeData(model()->mimeData({currentIndex()}));
    drag->setPixmap(viewport()->grab(visualItemRect(currentItem())));
    drag->exec(Qt::MoveAction);
    SetDropTarget(nullptr);
}

void CEditCategoriesCtrl::dragEnterEvent(QDragEnterEvent* event) {
    if (event->source() == this)
        event->accept();
    else
        event->ignore();
}

void CEditCategoriesCtrl::dragMoveEvent(QDragMoveEvent* event) {
    // The base class opens nodes and scrolls; whether a drop is taken is decided here.
    QuietView::dragMoveEvent(event);
    event->setDropAction(Qt::MoveAction);
    event->setAccepted(event->source() == this);
    SetDropTarget(itemAt(event->position().toPoint()));
}

void CEditCategoriesCtrl::dragLeaveEvent(QDragLeaveEvent* event) {
    SetDropTarget(nullptr);
    QuietView::dragLeaveEvent(event);
}

void CEditCategoriesCtrl::dropEvent(QDropEvent* event) {
    const int32_t target = IdOf(itemAt(event->position().toPoint()));
    SetDropTarget(nullptr);
    setState(NoState);
    stopAutoScroll();
    if (event->source() != this || Current() < 0)
        return event->ignore();
    event->setDropAction(Qt::MoveAction);
    event->accept();
    // After the drag, which holds the mouse until it ends.
    QMetaObject::invokeMethod(
        this, [this, id = Current(), target] { emit NodeDropped(id, target); }, Qt::QueuedConnection);
}

void CEditCategoriesCtrl::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                                  const QModelIndex& index) const {
    QuietView::drawRow(painter, option, index);
    if (!dropTarget_ || itemFromIndex(index) != dropTarget_)
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(theme_.Color(ColorRole::Accent), 2));
    painter->drawRoundedRect(QRectF(option.rect).adjusted(1, 1, -1, -1), kControlRadius / 2.0, kControlRadius / 2.0);
    painter->restore();
}

}  // namespace lore
