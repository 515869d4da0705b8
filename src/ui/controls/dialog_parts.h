#pragma once

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>

namespace lore {

/// A button that never takes the place of a dialog's main one.
inline QPushButton* MakeButton(const QString& text, QWidget* parent) {
    auto* const button = new QPushButton(text, parent);
    button->setAutoDefault(false);
    return button;
}

/// A label that leads to a control with its Alt key.
inline QLabel* MakeLabel(const QString& text, QWidget* buddy, QWidget* parent) {
    auto* const label = new QLabel(text, parent);
    label->setBuddy(buddy);
    return label;
}
/// As MakeLabel(); the control is named by it too.
inline QLabel* MakeFieldLabel(const QString& text, QWidget* buddy, QWidget* parent) {
    buddy->setAccessibleName(QString(text).remove(QLatin1Char('&')).remove(QLatin1Char(':')));
    return MakeLabel(text, buddy, parent);
}

/// Names a box that no label leads to. Screen readers of this desktop take what is chosen in it for its name, so that
/// only its description says what it is for.
inline void NameBox(QComboBox& box, const QString& name) {
    box.setAccessibleName(name);
    box.setAccessibleDescription(name);
}

/// The layout of a part inside a window, which has the margins.
template <typename Layout>
Layout* MakeInner(QWidget* part, int spacing) {
    auto* const layout = new Layout(part);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    return layout;
}
/// The same for a grid or a form, with the distance of its columns and that of its rows.
template <typename Layout>
Layout* MakeInner(QWidget* part, int across, int down) {
    auto* const layout = MakeInner<Layout>(part, down);
    layout->setHorizontalSpacing(across);
    return layout;
}

/// A shortcut of a list alone, since a list takes keys that have a text for its search.
template <typename Work>
void AddListKey(QAbstractItemView* list, const QKeySequence& keys, Work work) {
    auto* const shortcut = new QShortcut(keys, list, nullptr, nullptr, Qt::WidgetShortcut);
    QObject::connect(shortcut, &QShortcut::activated, list, work);
}

}  // namespace lore
