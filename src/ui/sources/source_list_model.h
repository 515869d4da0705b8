#pragma once

#include <QAbstractListModel>
#include <functional>

#include "bibliography/source.h"

namespace lore {

/// The rows of a list of formatted sources, wherever they stand.
class SourceListModel : public QAbstractListModel {
    Q_OBJECT

public:
    using CountOf = std::function<size_t()>;
    using RowAt = std::function<const CSource&(size_t row)>;

    SourceListModel(CountOf count, RowAt at, QObject* parent);

    /// The rows are other ones now.
    void Reset();
    const CSource& At(int row) const { return at_(static_cast<size_t>(row)); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    CountOf count_;
    RowAt at_;
};

}  // namespace lore
