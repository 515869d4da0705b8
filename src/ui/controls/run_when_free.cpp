#include "ui/controls/run_when_free.h"

#include <QApplication>
#include <QTimer>
#include <utility>

namespace lore {

namespace {

constexpr int kRetry = 200;  // milliseconds

int commandsAtWork = 0;

std::function<void()> RunIf(bool (*mayRun)(), std::function<void()> run) {
    return [mayRun, run = std::move(run)] {
        if (mayRun())
            run();
    };
}

void RunOnce(bool (*mayRun)(), QObject& owner, const std::function<void()>& step, int delay) {
    QTimer::singleShot(delay, &owner, [mayRun, &owner, step] {
        if (mayRun())
            step();
        else
            RunOnce(mayRun, owner, step, kRetry);
    });
}

}  // namespace

Busy::Busy() {
    ++commandsAtWork;
}

Busy::~Busy() {
    --commandsAtWork;
}

bool IsIdle() {
    return commandsAtWork == 0;
}

bool IsFree() {
    return IsIdle() && !QApplication::activeModalWidget();
}

std::function<void()> UnlessAtWork(std::function<void()> run) {
    return RunIf(IsIdle, std::move(run));
}

std::function<void()> WhereFree(std::function<void()> run) {
    return RunIf(IsFree, std::move(run));
}

void RunWhenFree(QObject& owner, const std::function<void()>& step, int delay) {
    RunOnce(IsFree, owner, step, delay);
}

void RunWhenIdle(QObject& owner, const std::function<void()>& step) {
    if (IsIdle())
        step();
    else
        RunOnce(IsIdle, owner, step, kRetry);
}

}  // namespace lore
