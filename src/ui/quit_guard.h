#pragma once

#include <QObject>

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

/// True while windows are closed by such an order. Nobody may be there to answer, so that what a window would ask about
/// is kept.
bool IsQuitting();

}  // namespace lore
