#pragma once

#include <QListWidget>
#include <QTest>
#include <QTimer>

namespace lore {

/// Drags a row of a list with the mouse and lets it go above another one, behind the last one for count().
inline void DragRow(QListWidget& list, int from, int above) {
    QWidget& room = *list.viewport();
    const QRect start = list.visualItemRect(list.item(from));
    const bool isLast = above >= list.count();
    const QRect target = list.visualItemRect(list.item(isLast ? list.count() - 1 : above));
    const QPoint end(target.center().x(), isLast ? target.bottom() - 1 : target.top() + 1);
    // Once the list has taken up the row, the drag has an event loop of its own until the button is let go.
    QTimer::singleShot(0, &list, [&room, end] {
        QTest::mouseMove(&room, end - QPoint(0, 2));
        QTest::mouseMove(&room, end);
        QTest::mouseRelease(&room, Qt::LeftButton, Qt::NoModifier, end);
    });
    QTest::mousePress(&room, Qt::LeftButton, Qt::NoModifier, start.center());
    QTest::mouseMove(&room, start.center() + QPoint(QApplication::startDragDistance() + 2, 2));
    QTest::mouseMove(&room, start.center() + QPoint(QApplication::startDragDistance() + 6, 4));
    QTest::mouseRelease(&room, Qt::LeftButton, Qt::NoModifier, end);
}

}  // namespace lore
