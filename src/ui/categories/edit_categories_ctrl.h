#pragma once

#include <QTreeWidget>
#include <unordered_map>
#include <vector>

#include "notes/panel_entries.h"
#include "ui/controls/quiet_view.h"

namespace lore {

class Theme;

/// The forest as a tree: each category with its number of notes. Nodes are dragged onto others or onto the empty area;
/// what a drop does is the receiver's matter, the tree itself moves nothing.
class CEditCategoriesCtrl : public QuietView<QTreeWidget> {
    Q_OBJECT

public:
    CEditCategoriesCtrl(const Theme& theme, QWidget* parent);

    /// Shows the categories as CategoryEntries gives them. What was open stays open.
    void Show(const std::vector<PanelEntry>& entries);
    /// The category that is selected, -1 for none.
    int32_t Current() const;
    /// Goes to a category and opens what it lies in.
    void GoTo(int32_t id);
    /// The category that waits to be pasted, drawn dimmed; -1 for none.
    void MarkAsCut(int32_t id);
    QTreeWidgetItem* ItemOf(int32_t id) const;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

signals:
    /// `target` is -1 for the empty area.
    void NodeDropped(int id, int target);
    /// The menu of a node, or of the empty area (-1), is wanted at a place of the screen.
    void MenuRequested(int id, const QPoint& place);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    void SetDropTarget(QTreeWidgetItem* item);
    void Restyle();
    void GrowToNames();

    const Theme& theme_;
    std::unordered_map<int32_t, QTreeWidgetItem*> items_;
    QTreeWidgetItem* dropTarget_ = nullptr;
    int32_t cut_ = -1;
    bool isFilled_ = false;
};

}  // namespace lore
