#pragma once

#include <QAbstractItemModel>
#include <vector>

#include "notes/filter_panels.h"

namespace lore {

/// The shown entries of a filter panel as a tree.
class PanelModel : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Role { CountsRole = Qt::UserRole, InListRole, SwatchRole };

    explicit PanelModel(const FilterPanel& panel, QObject* parent = nullptr);

    /// The entries or what is shown of them have changed.
    void Rebuild();
    /// The position among the panel's entries, -1 for no index.
    static int PositionOf(const QModelIndex& index);
    QModelIndex IndexOf(int position) const;

    QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex&) const override { return 1; }
    QVariant data(const QModelIndex& index, int role) const override;

private:
    const FilterPanel& panel_;
    std::vector<std::vector<int>> children_;  // shown children of each position; the last element: those at the top
    std::vector<int> rows_;                   // row of each position below its parent
};

}  // namespace lore
