#include <QApplication>
#include <QTimer>

#include "app/online_commands.h"
#include "ui/main_window.h"

namespace lore {

namespace {
constexpr int kCheckAfter = 200;  // milliseconds behind the start
constexpr int kHideAfter = 200;   // milliseconds that the progress of the check stays
}  // namespace

void MainWindow::CheckLinkSoon() {
    QTimer::singleShot(kCheckAfter, this, &MainWindow::CheckLink);
}

void MainWindow::CheckLink() {
    if (QApplication::activeModalWidget())
        return CheckLinkSoon();
    if (!CheckLinkAtStart(app_))
        return;
    RefreshPanes();
    // A stand-by window, which comes with a cursor of its own, is hidden by whoever shows it.
    QTimer::singleShot(kHideAfter, this, [this] {
        if (!QApplication::overrideCursor())
            app_.Ports().progress.Hide();
    });
}

void MainWindow::RunSync() {
    syncs_ = lore::RunSync(app_);
    if (syncs_)
        close();
}

}  // namespace lore
