#include "ui/tab_walk.h"

#include <QtTest>
#include <QtWidgets>
#include <algorithm>

#include "ui/window_rules.h"

namespace lore {
namespace {

/// What screen readers were told of the focus.
struct Announcement {
    const QObject* about;
    bool ofChild;
    bool isNamed;
};

QList<Announcement> announcements;
QStringList heard;
bool listening = false;

/// What is heard of an event besides those of the focus; empty for nothing.
QString HeardOf(const QAccessibleEvent& event, const QAccessibleInterface& face) {
    switch (event.type()) {
        case QAccessible::StateChanged:
            if (!static_cast<const QAccessibleStateChangeEvent&>(event).changedStates().checked)
                return {};
            return face.state().checked ? "ticked " : "unticked ";
        case QAccessible::SelectionAdd:
        case QAccessible::SelectionRemove:
            if (qobject_cast<const QAbstractItemView*>(event.object()))
                return {};
            return event.type() == QAccessible::SelectionAdd ? "selected " : "unselected ";
        case QAccessible::ObjectShow:
            return face.role() == QAccessible::Notification ? "said " : QString();
        default:
            return {};
    }
}

/// Of other kinds nothing is asked, which may be about widgets that are only being made, or are going.
bool IsHeard(const QAccessibleEvent& event) {
    if (event.type() == QAccessible::ObjectShow)
        return event.object() && event.object()->objectName() == "notice";
    return event.type() == QAccessible::Focus || event.type() == QAccessible::StateChanged ||
           event.type() == QAccessible::SelectionAdd || event.type() == QAccessible::SelectionRemove;
}

void Hear(QAccessibleEvent& event) {
    const QAccessibleInterface* const face = event.accessibleInterface();
    const QString name = face && face->isValid() ? face->text(QAccessible::Name) : QString();
    if (event.type() != QAccessible::Focus) {
        if (const QString told = name.isEmpty() ? QString() : HeardOf(event, *face); !told.isEmpty())
            heard.append(told + name);
        return;
    }
    heard.append("focus " + name);
    const bool isNamed = !name.isEmpty() && face->role() != QAccessible::NoRole;
    announcements.append({event.object(), event.child() >= 0, isNamed});
}

constexpr int kMostSections = 7;

struct Exception {
    const char* name;
    const char* reason;
    bool isMovedFromAfar = false;  ///< by the arrow keys of the first control
};

/// Controls that the Tab key may pass by.
constexpr Exception kPassedBy[] = {
    {"found", "The arrow keys of the field above move in it, and Enter there chooses.", true},
    {"grid", "Its cells are fields of their own, which Tab reaches one by one."},
};

/// While one of these is seen, the window isn't walked.
constexpr Exception kBlocking[] = {
    {"progressPanel", "Work goes on that can only be stopped, by Esc; no other key reaches anything."},
};

template <size_t N>
const Exception* Find(const Exception (&exceptions)[N], const QWidget& widget) {
    const auto found = std::find_if(std::begin(exceptions), std::end(exceptions), [&](const Exception& exception) {
        return widget.objectName() == QLatin1String(exception.name);
    });
    return found == std::end(exceptions) ? nullptr : found;
}

/// While it lives, announcements are noted.
class Listener {
public:
    Listener() { listening = true; }
    ~Listener() { listening = false; }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
};

bool TakesTab(const QWidget& widget, const QWidget& window) {
    return (widget.focusPolicy() & Qt::TabFocus) == Qt::TabFocus && !widget.focusProxy() && widget.isEnabled() &&
           widget.isVisibleTo(&window) && widget.window() == &window;
}

bool IsPassedBy(const QWidget& widget, const QWidget& window) {
    const bool isControl =
        IsControl(widget) || qobject_cast<const QAbstractItemView*>(&widget) || qobject_cast<const QTextEdit*>(&widget);
    const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
    return isControl && widget.isEnabled() && !TakesTab(widget, window) && !widget.focusProxy() &&
           !(button && KeyboardReaches(*button)) && !Find(kPassedBy, widget);
}

QWidget* Press(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = {}) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QApplication::sendEvent(widget, &press);
    return QApplication::focusWidget();
}

QWidget* PressTab(QWidget* widget, bool back) {
    const auto* const text = qobject_cast<QTextEdit*>(widget);
    const bool writes = text && !text->isReadOnly() && !text->tabChangesFocus();
    const Qt::KeyboardModifiers control = writes ? Qt::ControlModifier : Qt::NoModifier;
    return Press(widget, back ? Qt::Key_Backtab : Qt::Key_Tab, back ? control | Qt::ShiftModifier : control);
}

/// Day, month and year of a date come one after the other, and so do the links of a text.
qsizetype PartsOf(const QWidget& control) {
    const auto* const label = qobject_cast<const QLabel*>(&control);
    return qobject_cast<const QDateTimeEdit*>(&control) ? kMostSections : label ? 1 + label->text().count("<a ") : 1;
}

void CheckAnnounced(const QWidget& reached, QStringList& faults) {
    const auto told = std::find_if(announcements.begin(), announcements.end(), [&](const Announcement& announcement) {
        const auto* const about = qobject_cast<const QWidget*>(announcement.about);
        return about == &reached || (about && reached.isAncestorOf(about));
    });
    if (told == announcements.end())
        faults.append("gets the focus untold: " + Described(reached));
    else if (!told->isNamed)
        faults.append("gets the focus without a role or a name: " + Described(reached));
}

/// Where a control is in its window, seen from another one. What is scrolled is where the area is that scrolls it, but
/// for what is scrolled with it.
QRect PlaceOf(const QWidget& widget, const QWidget& from, const QWidget& window) {
    const QWidget* seen = &widget;
    for (const QWidget* around = &widget; around != &window; around = around->parentWidget())
        if (qobject_cast<const QScrollArea*>(around) && !around->isAncestorOf(&from))
            seen = around;
    return QRect(seen->mapTo(&window, QPoint()), seen->size());
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
        announcements.clear();
        QWidget* now = here;
        for (qsizetype press = PartsOf(*here); press > 0 && now == here; --press)
            now = PressTab(here, back);
        if (!now || now == here) {
            faults.append("keeps the key: " + Described(*here));
            return met;
        }
        CheckAnnounced(*now, faults);
        if (now == first)
            return met;
        met.append(now);
    }
    faults.append("no way back to " + Described(*first) + " from " + Described(*met.last()) + ", " +
                  Described(*met[met.size() - 2]));
    return met;
}

void CheckRound(const QList<QWidget*>& stops, const QWidget& window, QStringList& faults) {
    const QList<QWidget*> met = Walk(stops.first(), false, stops.size() + 5, faults);
    const bool isRound = faults.isEmpty();
    for (const QWidget* const stop : stops)
        if (const auto count = std::count(met.begin(), met.end(), stop); isRound && count != 1)
            faults.append(QStringLiteral("comes %1 times: %2").arg(count).arg(Described(*stop)));
    for (qsizetype i = 1; i < met.size(); ++i)
        if (StandsBefore(PlaceOf(*met[i], *met[i - 1], window), PlaceOf(*met[i - 1], *met[i], window)))
            faults.append(Described(*met[i]) + " comes after " + Described(*met[i - 1]));
    QList<QWidget*> back = Walk(stops.first(), true, stops.size() + 5, faults);
    std::reverse(back.begin() + 1, back.end());
    if (faults.isEmpty() && back != met)
        faults.append("Shift+Tab goes another way");
}

/// Items that Qt doesn't tell of itself: cards, days, and lists that are moved in from somewhere else.
bool TellsOfItems(const QWidget& control) {
    QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&control));
    return face && face->childCount() > 1 && face->child(0) && !face->child(0)->object() &&
           QByteArray(control.metaObject()->className()).startsWith("lore::");
}

void CheckItemsAnnounced(QWidget& keys, QWidget& items, QStringList& faults) {
    keys.setFocus(Qt::TabFocusReason);
    announcements.clear();
    // A tall card is scrolled through before the next one comes.
    for (const int key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_End, Qt::Key_Home})
        if (announcements.isEmpty() || key == Qt::Key_Up)
            Press(&keys, key);
    const auto told = std::count_if(announcements.begin(), announcements.end(), [&](const Announcement& announcement) {
        return announcement.about == &items && announcement.ofChild && announcement.isNamed;
    });
    if (told == 0 || told != announcements.size())
        faults.append("the current item stays untold: " + Described(items));
}

void CheckItems(const QList<QWidget*>& stops, const QWidget& window, QStringList& faults) {
    for (QWidget* const stop : stops)
        if (TellsOfItems(*stop))
            CheckItemsAnnounced(*stop, *stop, faults);
    for (QWidget* const widget : ShownIn(window)) {
        const Exception* const exception = Find(kPassedBy, *widget);
        auto* const view = qobject_cast<QAbstractItemView*>(widget);
        if (exception && exception->isMovedFromAfar && view && view->model()->rowCount() > 1)
            CheckItemsAnnounced(*stops.first(), *view, faults);
    }
}

}  // namespace

bool TellsOfFocusChild(QWidget& control) {
    const Listener listener;
    announcements.clear();
    control.setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
    return !announcements.isEmpty() && announcements.last().about == &control && announcements.last().ofChild;
}

QStringList ToldDuring(const std::function<void()>& steps) {
    const Listener listener;
    QCoreApplication::processEvents();
    heard.clear();
    steps();
    QCoreApplication::processEvents();
    return heard;
}

bool TakesKeys(const QWidget& window) {
    const QWidget* const modal = QApplication::activeModalWidget();
    const QList<QWidget*> shown = ShownIn(window);
    return window.isWindow() && window.windowType() != Qt::Popup && (!modal || modal == &window) &&
           std::none_of(shown.begin(), shown.end(), [](const QWidget* widget) { return Find(kBlocking, *widget); });
}

QList<QWidget*> TabStopsOf(const QWidget& window) {
    QList<QWidget*> stops;
    if (TakesTab(window, window))
        stops.append(const_cast<QWidget*>(&window));
    for (QWidget* next = window.nextInFocusChain(); next && next != &window; next = next->nextInFocusChain())
        if (TakesTab(*next, window) && !IsReachedByArrows(*next))
            stops.append(next);
    return stops;
}

QStringList FaultsOfTabWalk(QWidget& window) {
    QStringList faults;
    if (!TakesKeys(window))
        return faults;
    for (const QWidget* const widget : ShownIn(window))
        if (IsPassedBy(*widget, window))
            faults.append("Tab passes by: " + Described(*widget));
    const QList<QWidget*> stops = TabStopsOf(window);
    if (stops.isEmpty())
        return faults;
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window))
        return {"never active"};
    const Listener listener;
    const QPointer<QWidget> before = window.focusWidget();
    if (stops.size() > 1)
        CheckRound(stops, window, faults);
    CheckItems(stops, window, faults);
    if (before)
        before->setFocus(Qt::OtherFocusReason);
    else if (QApplication::focusWidget())
        QApplication::focusWidget()->clearFocus();
    return faults;
}

}  // namespace lore

// Without a display Qt tells nobody anything, and installs no handler either. These stand in place of its own functions
// for the whole test program, as if a screen reader ran.
bool QAccessible::isActive() {
    return true;
}

void QAccessible::updateAccessibility(QAccessibleEvent* event) {
    if (event->type() == QAccessible::TableModelChanged) {
        QAccessibleInterface* const face = event->accessibleInterface();
        if (face && face->tableInterface())
            face->tableInterface()->modelChange(static_cast<QAccessibleTableModelChangeEvent*>(event));
    } else if (lore::listening && lore::IsHeard(*event)) {
        lore::Hear(*event);
    }
}
