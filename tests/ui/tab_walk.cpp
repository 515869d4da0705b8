#include "ui/tab_walk.h"

#include <QApplication>
#include <QDateTimeEdit>
#include <QKeyEvent>
#include <QPointer>
#include <QRadioButton>
#include <QTextEdit>
#include <QtTest>
#include <algorithm>

namespace lore {
namespace {

constexpr int kMostSections = 7;

QString Described(const QWidget* widget) {
    if (!widget)
        return QStringLiteral("nothing");
    const QWidget* const parent = widget->parentWidget();
    return QStringLiteral("%1 \"%2\" %3 in %4 \"%5\"")
        .arg(QLatin1String(widget->metaObject()->className()), widget->objectName(), widget->accessibleName(),
             QLatin1String(parent ? parent->metaObject()->className() : "no window"),
             parent ? parent->objectName() : QString());
}

bool TakesTab(const QWidget& widget, const QWidget& window) {
    return (widget.focusPolicy() & Qt::TabFocus) == Qt::TabFocus && !widget.focusProxy() && widget.isEnabled() &&
           widget.isVisibleTo(&window) && widget.window() == &window;
}

/// Of radio buttons that exclude each other Tab reaches one; the arrows do the rest.
bool StandsForOthers(const QWidget& widget) {
    const auto* const radio = qobject_cast<const QRadioButton*>(&widget);
    return radio && !radio->isChecked();
}

QList<QWidget*> StopsOf(QWidget& window) {
    QList<QWidget*> stops;
    for (QWidget* next = window.nextInFocusChain(); next && next != &window; next = next->nextInFocusChain())
        if (TakesTab(*next, window) && !StandsForOthers(*next))
            stops.append(next);
    return stops;
}

void Press(QWidget* widget, bool back) {
    auto* const text = qobject_cast<QTextEdit*>(widget);
    const bool writes = text && !text->isReadOnly() && !text->tabChangesFocus();
    const Qt::KeyboardModifiers control = writes ? Qt::ControlModifier : Qt::NoModifier;
    QKeyEvent press(QEvent::KeyPress, back ? Qt::Key_Backtab : Qt::Key_Tab,
                    back ? control | Qt::ShiftModifier : control);
    QApplication::sendEvent(widget, &press);
}

QRect PlaceOf(const QWidget& widget, const QWidget& window) {
    return QRect(widget.mapTo(&window, QPoint()), widget.size());
}

/// In the row to the left, or above and not in a column further right.
bool StandsBefore(const QRect& next, const QRect& here) {
    const int shared = std::min(next.bottom(), here.bottom()) - std::max(next.top(), here.top());
    if (shared > std::min(next.height(), here.height()) / 2)
        return next.right() < here.left();
    return next.bottom() <= here.top() && next.left() < here.right();
}

/// The stops of one round, from a control on until it comes again.
QList<QWidget*> Walk(QWidget* first, bool back, qsizetype longest, QStringList& faults) {
    QList<QWidget*> met{first};
    first->setFocus(Qt::TabFocusReason);
    while (met.size() <= longest) {
        QWidget* const here = QApplication::focusWidget();
        // Day, month and year of a date come one after the other.
        for (int press = qobject_cast<QDateTimeEdit*>(here) ? kMostSections : 1;
             press > 0 && QApplication::focusWidget() == here; --press)
            Press(here, back);
        QWidget* const now = QApplication::focusWidget();
        if (!now || now == here) {
            faults.append("keeps the key: " + Described(here));
            return met;
        }
        if (now == first)
            return met;
        met.append(now);
    }
    faults.append("no way back to " + Described(first));
    return met;
}

}  // namespace

QStringList FaultsOfTabWalk(QWidget& window) {
    QStringList faults;
    const QList<QWidget*> stops = StopsOf(window);
    const QPointer<QWidget> before = QApplication::focusWidget();
    if (stops.size() < 2 || !before || before->window() != &window)
        return faults;
    const QList<QWidget*> met = Walk(stops.first(), false, stops.size() + 5, faults);
    for (QWidget* const stop : stops)
        if (const auto count = met.count(stop); faults.isEmpty() && count != 1)
            faults.append(QStringLiteral("comes %1 times: %2").arg(count).arg(Described(stop)));
    for (qsizetype i = 1; i < met.size(); ++i)
        if (StandsBefore(PlaceOf(*met[i], window), PlaceOf(*met[i - 1], window)))
            faults.append(Described(met[i]) + " comes behind " + Described(met[i - 1]));
    QList<QWidget*> back = Walk(stops.first(), true, stops.size() + 5, faults);
    std::reverse(back.begin() + 1, back.end());
    if (faults.isEmpty() && back != met)
        faults.append("Shift+Tab goes another way");
    if (before)
        before->setFocus(Qt::OtherFocusReason);
    return faults;
}

void WalkByTab(QWidget& window) {
    const QStringList faults = FaultsOfTabWalk(window);
    QVERIFY2(faults.isEmpty(), qPrintable(window.objectName() + ":\n" + faults.join('\n')));
}

}  // namespace lore
