#pragma once

#include <QListView>

#include "sources/source_boxes.h"
#include "ui/controls/quiet_view.h"
#include "ui/sources/source_list_model.h"

namespace lore {

class Theme;

/// A list of sources: a box for each, with the mark of its type and its wrapped citation. Citations are laid out when
/// they are seen.
class CSourcesListWnd : public QuietView<QListView> {
    Q_OBJECT

public:
    /// The model and the theme outlive the list.
    CSourcesListWnd(SourceListModel& model, const SourceBoxFigures& figures, const Theme& theme, QWidget* parent);

    /// Selects a row and brings it into view; -1 selects none.
    void SelectRow(int row);
    /// -1 without a selected row.
    int SelectedRow() const;
    int Characters() const { return characters_; }

signals:
    /// Another row is selected, or none (-1).
    void RowSelected(int row);
    /// A context menu is asked for on the selected row.
    void MenuRequested(const QPoint& globalPosition);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    const SourceBoxFigures& figures_;
    int characters_ = 0;
};

}  // namespace lore
