#pragma once

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>
#include <QWheelEvent>

namespace lore {

/// A box whose choice is carried out at once: keys that would choose while it is closed open its list instead, and the
/// wheel scrolls what is around it.
class OpeningCombo : public QComboBox {
public:
    using QComboBox::QComboBox;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        const QString text = event->text();
        const bool types = !text.isEmpty() && text[0].isPrint();
        if (!types && !IsStep(event->key()))
            return QComboBox::keyPressEvent(event);
        showPopup();
        if (types && !text[0].isSpace())
            view()->keyboardSearch(text);
    }
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }

private:
    static bool IsStep(int key) {
        return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown ||
               key == Qt::Key_Home || key == Qt::Key_End;
    }
};

}  // namespace lore
