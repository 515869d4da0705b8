#include "ui/main/online_actions.h"

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include "app/online_commands.h"
#include "ui/controls/run_when_free.h"
#include "ui/main/help_actions.h"
#include "ui/online/link_notebook_dialog.h"
#include "ui/online/sync_setup_dialog.h"

namespace lore {

namespace {
constexpr int kCheckAfter = 200;  // milliseconds after the start
constexpr int kHideAfter = 200;   // milliseconds that the progress of the check stays
}  // namespace

OnlineActions::OnlineActions(CLorebinderApp& app, const Theme& theme, const HelpActions& help, QWidget& window)
    : QObject(&window), app_(app), theme_(theme), help_(help), window_(window) {}

void OnlineActions::CheckLinkSoon() {
    QTimer::singleShot(kCheckAfter, this, &OnlineActions::CheckLink);
}

void OnlineActions::CheckLink() {
    if (!IsFree())
        return CheckLinkSoon();
    if (!CheckLinkAtStart(app_))
        return;
    emit LinkChanged();
    // A stand-by window, which comes with a cursor of its own, is hidden by whoever shows it.
    QTimer::singleShot(kHideAfter, this, [this] {
        if (!QApplication::overrideCursor())
            app_.Ports().progress.Hide();
    });
}

void OnlineActions::CloseForSync(bool started) {
    hasStartedSync_ = started;
    if (started)
        window_.close();
}

void OnlineActions::RunSync() {
    CloseForSync(lore::RunSync(app_));
}

void OnlineActions::SetUpSync() {
    OnlineSession session(app_);
    SyncSetup setup(session.World());
    const auto openPage = [this](const std::string& address) { help_.OpenPage(address, "Lorebinder Online"); };
    const int result = SyncSetupDialog(setup, session.Config(), theme_, app_.Store(), openPage, &window_).exec();
    emit LinkChanged();
    if (result == SyncSetupDialog::kSyncAll)
        CloseForSync(LaunchSync(app_, kSyncCreate));
}

void OnlineActions::LinkNoteBook() {
    OnlineSession session(app_);
    NoteBookLink link(session.World());
    LinkNoteBookDialog(link, session.Config(), theme_, app_.Store(), &window_).exec();
    emit LinkChanged();
}

}  // namespace lore
