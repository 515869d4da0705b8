#include "ui/run_when_free.h"

#include <QApplication>
#include <QTimer>

namespace lore {

namespace {

constexpr int kRetry = 200;  // milliseconds

}  // namespace

void RunWhenFree(QObject& owner, const std::function<void()>& step, int delay) {
    QTimer::singleShot(delay, &owner, [&owner, step] {
        if (QApplication::activeModalWidget())
            RunWhenFree(owner, step, kRetry);
        else
            step();
    });
}

}  // namespace lore
