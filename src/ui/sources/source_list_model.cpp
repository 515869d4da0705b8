#include "ui/sources/source_list_model.h"

#include "bibliography/source_types.h"
#include "ui/look/qt_text.h"

namespace lore {

SourceListModel::SourceListModel(CountOf count, RowAt at, QObject* parent)
    : QAbstractListModel(parent), count_(std::move(count)), at_(std::move(at)) {}

void SourceListModel::Reset() {
    beginResetModel();
    endResetModel();
}

int SourceListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(count_());
}

QVariant SourceListModel::data(const QModelIndex& index, int role) const {
    // A copy asks for the current row where there is none.
    if (!index.isValid())
        return {};
    const CSource& source = At(index.row());
    if (role == Qt::DisplayRole)
        return ToQString(source.FormattedText).simplified();
    if (role == Qt::AccessibleTextRole)
        return QStringLiteral("%1: %2").arg(ToQString(SourceTypeName(source)),
                                            ToQString(source.FormattedText).simplified());
    return {};
}

}  // namespace lore
