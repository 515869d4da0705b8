#include "ui/controls/list_columns.h"

#include <QHeaderView>
#include <QTreeView>
#include <utility>

#include "ui/look/window_place.h"

namespace lore {

ListColumns::ListColumns(QTreeView& list, SettingsStore& store, std::string key)
    : QObject(&list), list_(list), store_(store), key_(std::move(key)) {
    QHeaderView& header = *list.header();
    header.setStretchLastSection(true);
    header.setSectionsMovable(false);  // the order isn't kept, and the last one has the rest
    if (const std::optional<QList<int>> widths = StoredSizes(store_, key_, header.count() - 1)) {
        isUsers_ = true;
        for (int column = 0; column < widths->size(); ++column)
            header.resizeSection(column, widths->at(column));
    }
    connect(&header, &QHeaderView::sectionResized, this, [this](int column) {
        if (!isFitting_ && column < list_.header()->count() - 1)
            StoreWidths();
    });
}

void ListColumns::Fit() {
    if (isUsers_)
        return;
    isFitting_ = true;
    for (int column = 0; column < list_.header()->count() - 1; ++column)
        list_.resizeColumnToContents(column);
    isFitting_ = false;
}

void ListColumns::StoreWidths() {
    isUsers_ = true;
    QList<int> widths;
    for (int column = 0; column < list_.header()->count() - 1; ++column)
        widths.append(list_.header()->sectionSize(column));
    StoreSizes(store_, key_, widths);
}

}  // namespace lore
