#include <QFileDialog>
#include <QHeaderView>
#include <QTimer>
#include <QTreeView>

#include "ui/look/flat_style.h"

namespace lore {

/// Qt gives the columns of its file dialog the widths of texts that are shorter than those of many a language.
void FlatStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    auto* const files = qobject_cast<QTreeView*>(widget);
    if (!files || !qobject_cast<QFileDialog*>(files->window()))
        return;
    QTimer::singleShot(0, files, [header = files->header()] {  // it has no columns yet
        for (int column = 1; column < header->count(); ++column)
            header->setSectionResizeMode(column, QHeaderView::ResizeToContents);
    });
}

}  // namespace lore
