#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <string>

#include "ports/prompts.h"

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
/// comes a second or more after the first ends the process at once, unless somebody refused the first in the meantime.
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

/// True while a dialog saves for such an order. A question then takes the answer that changes least.
bool IsSavingToQuit();

/// For what such an order could not close yet: gives it again once who waits for a window that has closed has gone on.
void OrderQuitAgain();

/// Has the dialog saved as if its main button had been pressed, and gives the order again. False if the dialog is still
/// there then, and outside of an order.
bool SavesBeforeQuit(QDialog& dialog, const std::function<void()>& save);

/// Whether a dialog may go without its main button: nothing in it has changed, or the user drops the changes to `what`.
/// While such an order closes it, it isn't asked first: `save` runs as if the main button had been pressed, and the
/// order is given again.
bool MayClose(QDialog& dialog, Prompts& prompts, bool hasChanged, const std::string& what,
              const std::function<void()>& save);

}  // namespace lore
