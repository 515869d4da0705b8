#include "ui/main/panel_model.h"

#include <QColor>

#include "ui/look/qt_text.h"

namespace lore {

PanelModel::PanelModel(const FilterPanel& panel, QObject* parent) : QAbstractItemModel(parent), panel_(panel) {
    Rebuild();
}

void PanelModel::Rebuild() {
    beginResetModel();
    const size_t count = panel_.Entries().size();
    children_.assign(count + 1, {});
    rows_.assign(count, 0);
    for (const int position : panel_.Shown()) {
        const int parent = panel_.Entries()[static_cast<size_t>(position)].parent;
        auto& siblings = children_[parent < 0 ? count : static_cast<size_t>(parent)];
        rows_[static_cast<size_t>(position)] = static_cast<int>(siblings.size());
        siblings.push_back(position);
    }
    endResetModel();
}

int PanelModel::PositionOf(const QModelIndex& index) {
    return index.isValid() ? static_cast<int>(index.internalId()) : -1;
}

QModelIndex PanelModel::IndexOf(int position) const {
    return createIndex(rows_[static_cast<size_t>(position)], 0, static_cast<quintptr>(position));
}

QModelIndex PanelModel::index(int row, int column, const QModelIndex& parent) const {
    const auto& siblings = parent.isValid() ? children_[parent.internalId()] : children_.back();
    if (column != 0 || row < 0 || row >= static_cast<int>(siblings.size()))
        return {};
    return createIndex(row, 0, static_cast<quintptr>(siblings[static_cast<size_t>(row)]));
}

QModelIndex PanelModel::parent(const QModelIndex& index) const {
    const int above = index.isValid() ? panel_.Entries()[index.internalId()].parent : -1;
    return above < 0 ? QModelIndex() : IndexOf(above);
}

int PanelModel::rowCount(const QModelIndex& parent) const {
    return static_cast<int>(parent.isValid() ? children_[parent.internalId()].size() : children_.back().size());
}

QVariant PanelModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const int position = PositionOf(index);
    const PanelEntry& entry = panel_.Entries()[static_cast<size_t>(position)];
    switch (role) {
        case Qt::DisplayRole:
            return ToQString(entry.name);
        case Qt::AccessibleTextRole:
        case Qt::ToolTipRole:
            // A swatch has no word of its own.
            return ToQString((entry.value == PanelValue::Color ? entry.name + " " : "") + panel_.Caption(position));
        case CountsRole:
            return ToQString(panel_.Counts(position));
        case InListRole:
            return entry.inList;
        case SwatchRole:
            return entry.value == PanelValue::Color ? QVariant(ToQColor(entry.color)) : QVariant();
        default:
            return {};
    }
}

}  // namespace lore
