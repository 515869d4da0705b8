#pragma once

#include <QObject>

namespace lore {

/// Keys that mean the same in all windows and that the system doesn't pass on as such: Shift+F10 opens the context menu
/// of the control that has the focus, as the Menu key does.
class ThemeKeys : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* target, QEvent* event) override;
};

}  // namespace lore
