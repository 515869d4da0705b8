#pragma once

#include <QAbstractButton>
#include <QShortcut>

namespace lore {

/// Ctrl+Enter does what the main button of a window does, wherever the focus is. `owner` is the window, or a widget of
/// it that can be used then.
template <typename Work>
void OnCtrlEnter(QWidget* owner, Work work) {
    for (const int key : {Qt::Key_Return, Qt::Key_Enter})
        QObject::connect(new QShortcut(QKeySequence(Qt::CTRL | key), owner), &QShortcut::activated, owner, work);
}
inline void PressByCtrlEnter(QAbstractButton* button) {
    OnCtrlEnter(button, [button] { button->click(); });
}

}  // namespace lore
