#pragma once

#include <QObject>
#include <functional>
#include <memory>

class QDialog;
class QSocketNotifier;

namespace lore {

/// Sees to what comes from outside as an order to quit, such as the end of the desktop's session, and closes window
/// after window whatever is going on. While a command is at work the order waits: a window that closes then would store
/// what is half done.
class QuitGuard : public QObject {
public:
    QuitGuard();
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    bool waits_ = false;
};

/// While one lives, the signals that ask a process to end (SIGTERM, SIGINT, SIGHUP) are such an order too. One that
/// comes a second or more behind the first ends the process at once, unless somebody refused the first in the meantime.
/// Those that the process was started to ignore stay so. One at a time.
class QuitSignals {
public:
    QuitSignals();
    ~QuitSignals();
    QuitSignals(const QuitSignals&) = delete;
    QuitSignals& operator=(const QuitSignals&) = delete;

private:
    std::unique_ptr<QSocketNotifier> arrived_;
};

/// True while windows are closed by such an order. Nobody may be there to answer, so that what a window would ask about
/// is kept.
bool IsQuitting();

/// For a dialog with changes that is about to ask whether they are to be dropped. While such an order closes it, the
/// dialog stays, `save` runs as if its main button had been pressed, and the order is given again: true. For a
/// dialog that is still there then, and outside of such an order: false.
bool SavesBeforeQuit(QDialog& dialog, const std::function<void()>& save);

}  // namespace lore
