#include "ui/window_rules.h"

#include <QtTest>
#include <QtWidgets>

#include "ui/look/theme.h"

namespace lore {

bool IsInsideOfControl(const QWidget& widget) {
    const QWidget* const parent = widget.parentWidget();
    if (widget.objectName() == "qt_tabwidget_tabbar" || widget.objectName() == "qt_toolbar_ext_button")
        return false;
    return qobject_cast<const QScrollBar*>(&widget) || widget.objectName().startsWith("qt_") ||
           (parent &&
            (qobject_cast<const QAbstractSpinBox*>(parent) || qobject_cast<const QComboBox*>(parent) ||
             qobject_cast<const QTabBar*>(parent) || qobject_cast<const QLineEdit*>(parent) ||
             qobject_cast<const QHeaderView*>(&widget) ||
             (qobject_cast<const QAbstractItemView*>(parent) && qobject_cast<const QAbstractButton*>(&widget)) ||
             (parent->objectName().startsWith("qt_") && parent->objectName() != "qt_scrollarea_viewport" &&
              parent->objectName() != "qt_tabwidget_stackedwidget")));
}

QList<QWidget*> ShownIn(const QWidget& window) {
    QList<QWidget*> shown;
    for (QWidget* const widget : window.findChildren<QWidget*>())
        if (widget->isVisibleTo(&window) && widget->window() == window.window() && !IsInsideOfControl(*widget))
            shown.append(widget);
    return shown;
}

bool IsControl(const QWidget& widget) {
    return qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QLineEdit*>(&widget) ||
           qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QAbstractSpinBox*>(&widget) ||
           qobject_cast<const QAbstractSlider*>(&widget) || (widget.focusPolicy() & Qt::TabFocus) != 0;
}

QString NameOf(const QWidget& widget) {
    QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget));
    return face ? face->text(QAccessible::Name) : QString();
}

QString Described(const QWidget& widget) {
    return QStringLiteral("%1 \"%2\" (%3)")
        .arg(QLatin1String(widget.metaObject()->className()), widget.objectName(), NameOf(widget));
}

bool IsReachedByArrows(const QWidget& widget) {
    const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
    return button && !button->isChecked() &&
           (button->autoExclusive() || (button->group() && button->group()->exclusive()));
}

bool KeyboardReaches(const QAbstractButton& button) {
    const auto* const tool = qobject_cast<const QToolButton*>(&button);
    return (button.focusPolicy() & Qt::TabFocus) != 0 || IsReachedByArrows(button) || !button.shortcut().isEmpty() ||
           (tool && tool->defaultAction() && !tool->defaultAction()->shortcuts().isEmpty());
}

namespace {

bool HasRole(const QWidget& widget) {
    QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget));
    return face && face->isValid() && face->role() != QAccessible::NoRole;
}

/// The name of a box is what is chosen in it, on this desktop: a label or its description says what it is for.
bool SaysWhatFor(const QComboBox& box) {
    QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(const_cast<QComboBox*>(&box));
    return !face->text(QAccessible::Description).isEmpty() || !face->relations(QAccessible::Label).isEmpty();
}

/// A line takes 32,767 characters by itself, fewer than a stored text may have.
bool CutsLongText(const QLineEdit& line) {
    return line.maxLength() == QLineEdit().maxLength();
}

QString AltKeyOf(const QWidget& widget) {
    QString text;
    if (const auto* const label = qobject_cast<const QLabel*>(&widget); label && label->buddy())
        text = label->text();
    else if (const auto* const button = qobject_cast<const QAbstractButton*>(&widget))
        text = qobject_cast<const QToolButton*>(&widget) ? QString() : button->text();
    else if (const auto* const group = qobject_cast<const QGroupBox*>(&widget))
        text = group->title();
    return QKeySequence::mnemonic(text).toString();
}

void CheckAltKeys(const QList<QWidget*>& widgets, QStringList& faults) {
    QMap<QString, QString> taken;
    const auto take = [&](const QString& key, const QString& owner) {
        if (key.isEmpty())
            return;
        if (taken.contains(key))
            faults.append(QStringLiteral("%1 stands for %2 and for %3").arg(key, taken[key], owner));
        taken[key] = owner;
    };
    for (const QWidget* const widget : widgets) {
        take(AltKeyOf(*widget), Described(*widget));
        if (const auto* const tabs = qobject_cast<const QTabBar*>(widget))
            for (int i = 0; i < tabs->count(); ++i)
                take(QKeySequence::mnemonic(tabs->tabText(i)).toString(), tabs->tabText(i));
        if (const auto* const menus = qobject_cast<const QMenuBar*>(widget))
            for (const QAction* const menu : menus->actions())
                take(QKeySequence::mnemonic(menu->text()).toString(), menu->text());
    }
}

/// What can be chosen has to fit; in a list of a set width, what has been chosen, unless it can be typed there.
bool CutsChoice(const QComboBox& box) {
    QStyleOptionComboBox option;
    option.initFrom(&box);
    option.editable = box.isEditable();
    option.frame = box.hasFrame();
    option.iconSize = box.iconSize();
    const QRect room = box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box);
    const bool isSet = box.sizeAdjustPolicy() == QComboBox::AdjustToMinimumContentsLengthWithIcon;
    QStringList texts;
    if (isSet && !box.isEditable())
        texts.append(box.currentText());
    for (int i = 0; i < box.count() && !isSet; ++i)
        texts.append(box.itemText(i));
    const int icon = box.itemIcon(box.currentIndex()).isNull() ? 0 : box.iconSize().width() + kSpace;
    return std::any_of(texts.begin(), texts.end(), [&](const QString& text) {
        return box.fontMetrics().horizontalAdvance(text) + icon > room.width() - 2 ||
               box.fontMetrics().height() > room.height();
    });
}

bool IsCut(const QWidget& widget) {
    if (const auto* const box = qobject_cast<const QComboBox*>(&widget))
        return CutsChoice(*box);
    if (const auto* const label = qobject_cast<const QLabel*>(&widget)) {
        if (label->text().isEmpty() || !label->pixmap().isNull())
            return false;
        return label->wordWrap()
                   ? label->heightForWidth(label->width()) > label->height()
                   : label->sizeHint().width() > label->width() || label->sizeHint().height() > label->height();
    }
    const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
    if (!button || button->text().isEmpty())
        return false;
    if (const auto* const tool = qobject_cast<const QToolButton*>(&widget);
        tool && tool->toolButtonStyle() == Qt::ToolButtonIconOnly)
        return false;
    return button->minimumSizeHint().width() > button->width() || button->minimumSizeHint().height() > button->height();
}

bool IsScrolled(const QWidget& widget, const QWidget& window) {
    for (const QWidget* around = widget.parentWidget(); around && around != &window; around = around->parentWidget())
        if (qobject_cast<const QScrollArea*>(around))
            return true;
    return false;
}

/// A window that can't be made as small as the screen has its buttons where nobody gets at them.
void CheckRoom(const QWidget& window, const QList<QWidget*>& seen, QStringList& faults) {
    const QSize least = window.minimumSize().expandedTo(window.minimumSizeHint()), screen = window.screen()->size();
    if (window.isWindow() && least != least.boundedTo(screen))
        faults.append(QStringLiteral("at least %1x%2, more than the screen").arg(least.width()).arg(least.height()));
    for (const QWidget* const widget : seen)
        if (qobject_cast<const QPushButton*>(widget) && !IsScrolled(*widget, window) &&
            !window.rect().contains(QRect(widget->mapTo(&window, QPoint()), widget->size())))
            faults.append("beyond the window's edge: " + Described(*widget));
}

void CheckKeysShown(const QList<QAction*>& entries, const QString& above, QStringList& faults) {
    for (const QAction* const entry : entries) {
        if (entry->menu())
            CheckKeysShown(entry->menu()->actions(), above + entry->text() + " > ", faults);
        else if (!entry->isSeparator() && !entry->actionGroup() && entry->shortcut().isEmpty())
            faults.append(above + entry->text());
    }
}

}  // namespace

QStringList FaultsOfWindow(const QWidget& window) {
    QStringList faults;
    const QList<QWidget*> seen = ShownIn(window);
    CheckRoom(window, seen, faults);
    for (const QWidget* const widget : seen) {
        if (IsControl(*widget)) {
            if (!HasRole(*widget))
                faults.append("no role: " + Described(*widget));
            if (NameOf(*widget).isEmpty())
                faults.append("no name: " + Described(*widget));
        }
        if (const auto* const button = qobject_cast<const QAbstractButton*>(widget);
            button && !KeyboardReaches(*button))
            faults.append("only for a mouse: " + Described(*widget));
        if (const auto* const line = qobject_cast<const QLineEdit*>(widget); line && CutsLongText(*line))
            faults.append("cuts long texts: " + Described(*widget));
        if (const auto* const box = qobject_cast<const QComboBox*>(widget); box && !SaysWhatFor(*box))
            faults.append("only its choice for a name: " + Described(*widget));
        for (const QToolButton* const inner : widget->findChildren<QToolButton*>(Qt::FindDirectChildrenOnly))
            if (widget->inherits("QLineEdit") && NameOf(*inner).isEmpty())
                faults.append("a button inside without a name: " + Described(*widget));
        if (IsCut(*widget))
            faults.append(QStringLiteral("cut: %1, %2x%3 of %4x%5")
                              .arg(Described(*widget))
                              .arg(widget->width())
                              .arg(widget->height())
                              .arg(widget->sizeHint().width())
                              .arg(widget->sizeHint().height()));
    }
    CheckAltKeys(seen, faults);
    return faults;
}

QStringList CommandsWithoutKeys(const QMenuBar& bar) {
    QStringList faults;
    CheckKeysShown(bar.actions(), {}, faults);
    return faults;
}

}  // namespace lore
