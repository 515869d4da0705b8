#pragma once

#include <QObject>
#include <string>

#include "ports/settings_store.h"

class QTreeView;

namespace lore {

/// The columns of a list, the last of which takes the room that is left: as wide as what they hold, until the user
/// makes one of them wider or narrower. From then on all have the user's widths, the next time too.
class ListColumns : public QObject {
    Q_OBJECT

public:
    /// `list` has its columns, and owns this. `key` names it in the store, which outlives it.
    ListColumns(QTreeView& list, SettingsStore& store, std::string key);

    /// Call it whenever the list was filled.
    void Fit();

private:
    void StoreWidths();

    QTreeView& list_;
    SettingsStore& store_;
    std::string key_;
    bool isUsers_ = false;
    bool isFitting_ = false;
};

}  // namespace lore
