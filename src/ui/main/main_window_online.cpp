#include <QApplication>
#include <QTimer>

#include "app/help_commands.h"
#include "app/online_commands.h"
#include "ui/controls/run_when_free.h"
#include "ui/main/main_window.h"
#include "ui/online/link_notebook_dialog.h"
#include "ui/online/sync_setup_dialog.h"

namespace lore {

namespace {
constexpr int kCheckAfter = 200;  // milliseconds behind the start
constexpr int kHideAfter = 200;   // milliseconds that the progress of the check stays
}  // namespace

void MainWindow::CheckLinkSoon() {
    QTimer::singleShot(kCheckAfter, this, &MainWindow::CheckLink);
}

void MainWindow::CheckLink() {
    if (!IsFree())
        return CheckLinkSoon();
    if (!CheckLinkAtStart(app_))
        return;
    ShowState();
    // A stand-by window, which comes with a cursor of its own, is hidden by whoever shows it.
    QTimer::singleShot(kHideAfter, this, [this] {
        if (!QApplication::overrideCursor())
            app_.Ports().progress.Hide();
    });
}

void MainWindow::CloseForSync(bool started) {
    syncs_ = started;
    if (syncs_)
        close();
}

void MainWindow::RunSync() {
    CloseForSync(lore::RunSync(app_));
}

void MainWindow::SetUpSync() {
    OnlineSession session(app_);
    SyncSetup setup(session.World());
    const auto openPage = [this](const std::string& address) { OpenHelpPage(Help(), address, "Lorebinder Online"); };
    const int result = SyncSetupDialog(setup, session.Config(), theme_, app_.Store(), openPage, this).exec();
    ShowState();
    if (result == SyncSetupDialog::kSyncAll)
        CloseForSync(LaunchSync(app_, kSyncCreate));
}

void MainWindow::LinkNoteBook() {
    OnlineSession session(app_);
    NoteBookLink link(session.World());
    LinkNoteBookDialog(link, session.Config(), theme_, app_.Store(), this).exec();
    ShowState();
}

}  // namespace lore
