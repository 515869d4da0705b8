#pragma once

#include <QAbstractButton>
#include <QShortcut>

namespace lore {

/// Ctrl+Enter presses a button wherever the focus of its window is.
inline void PressByCtrlEnter(QAbstractButton* button) {
    for (const int key : {Qt::Key_Return, Qt::Key_Enter})
        QObject::connect(new QShortcut(QKeySequence(Qt::CTRL | key), button), &QShortcut::activated, button,
                         &QAbstractButton::click);
}

}  // namespace lore
