#include "ui/quit_guard.h"

#include <QCoreApplication>
#include <QEvent>
#include <utility>

#include "ui/run_when_free.h"

namespace lore {

namespace {
bool quitting = false;
}  // namespace

QuitGuard::QuitGuard() {
    QCoreApplication::instance()->installEventFilter(this);
}

bool QuitGuard::eventFilter(QObject* target, QEvent* event) {
    if (event->type() != QEvent::Quit || target != QCoreApplication::instance())
        return false;
    if (!IsIdle()) {
        event->ignore();
        if (!std::exchange(waits_, true))
            RunWhenIdle(*this, [this, target] {
                waits_ = false;
                QCoreApplication::postEvent(target, new QEvent(QEvent::Quit));
            });
        return true;
    }
    const bool before = std::exchange(quitting, true);
    target->event(event);
    quitting = before;
    return true;
}

bool IsQuitting() {
    return quitting;
}

}  // namespace lore
