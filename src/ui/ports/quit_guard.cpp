#include "ui/ports/quit_guard.h"

#include <QCoreApplication>
#include <QDialog>
#include <QEvent>
#include <QScopedValueRollback>
#include <QSocketNotifier>
#include <QTimer>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

#include "ui/controls/run_when_free.h"

namespace lore {

namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};
constexpr char kHasSaved[] = "hasSavedBeforeQuit";
constexpr int64_t kOneOrder = 1000;  // milliseconds in which a shell or a desktop sends more than one signal

bool quitting = false, savingToQuit = false;
int wakePipe[2] = {-1, -1};
std::atomic<int64_t> orderedAt = 0;  // in milliseconds; 0 for no signal yet
static_assert(std::atomic<int64_t>::is_always_lock_free);

// Nothing but what may be done at any moment.
void OnSignal(int number) {
    const int before = errno;
    timespec now = {};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    const int64_t time = int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1'000'000 + 1;
    int64_t first = 0;
    if (orderedAt.compare_exchange_strong(first, time)) {
        [[maybe_unused]] const ssize_t written = ::write(wakePipe[1], "q", 1);
    } else if (time - first >= kOneOrder) {
        std::signal(number, SIG_DFL);
        std::raise(number);
    }
    errno = before;
}

/// Puts another handler in the place of this one, and leaves any else alone.
void Exchange(int number, void (*from)(int), void (*to)(int)) {
    struct sigaction action = {};
    if (::sigaction(number, nullptr, &action) != 0 || action.sa_handler != from)
        return;
    action.sa_handler = to;
    action.sa_flags = SA_RESTART;
    ::sigaction(number, &action, nullptr);
}

void PostQuit() {
    QCoreApplication::postEvent(QCoreApplication::instance(), new QEvent(QEvent::Quit));
}

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
            RunWhenIdle(*this, [this] {
                waits_ = false;
                PostQuit();
            });
        return true;
    }
    const bool before = std::exchange(quitting, true);
    target->event(event);
    quitting = before;
    if (!event->isAccepted())
        orderedAt = 0;
    return true;
}

QuitSignals::QuitSignals() {
    if (::pipe2(wakePipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    arrived_ = std::make_unique<QSocketNotifier>(wakePipe[0], QSocketNotifier::Read);
    QObject::connect(arrived_.get(), &QSocketNotifier::activated, [] {
        char byte = 0;
        if (::read(wakePipe[0], &byte, 1) > 0)
            PostQuit();
    });
    for (const int number : kSignals)
        Exchange(number, SIG_DFL, OnSignal);
}

QuitSignals::~QuitSignals() {
    for (const int number : kSignals)
        Exchange(number, OnSignal, SIG_DFL);
    arrived_.reset();
    for (int& end : wakePipe)
        ::close(std::exchange(end, -1));
}

bool IsQuitting() {
    return quitting;
}

bool IsSavingToQuit() {
    return savingToQuit;
}

void OrderQuitAgain() {
    QTimer::singleShot(1, QCoreApplication::instance(), PostQuit);
}

bool SavesBeforeQuit(QDialog& dialog, const std::function<void()>& save) {
    const bool tries = quitting && !dialog.property(kHasSaved).toBool();
    dialog.setProperty(kHasSaved, tries);
    if (!tries)
        return false;
    QTimer::singleShot(0, &dialog, [save] {
        {
            const QScopedValueRollback<bool> saving(savingToQuit, true);
            save();
        }
        OrderQuitAgain();
    });
    return true;
}

bool MayClose(QDialog& dialog, Prompts& prompts, bool hasChanged, const std::string& what,
              const std::function<void()>& save) {
    if (!hasChanged)
        return true;
    return !SavesBeforeQuit(dialog, save) &&
           prompts.Ask("Do you wish to close without saving the changes to " + what + "?", "Close Without Saving?") ==
               PromptAnswer::Yes;
}

}  // namespace lore
