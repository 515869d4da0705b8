#include "ui/request_hooks.h"

#include <QApplication>
#include <QTimer>

#include "app/lorebinder_app.h"
#include "ui/main_window.h"
#include "ui/qt_text.h"

namespace lore {

namespace {

constexpr int kRetry = 200;  // milliseconds

/// Runs a step once the event loop is back and no dialog is open.
void RunWhenFree(MainWindow& window, const std::function<void()>& step, int delay = 0) {
    QTimer::singleShot(delay, &window, [&window, step] {
        if (QApplication::activeModalWidget())
            RunWhenFree(window, step, kRetry);
        else
            step();
    });
}

}  // namespace

RequestHooks HooksOf(MainWindow& window, CLorebinderApp& app) {
    RequestHooks hooks;
    hooks.restore = hooks.bringToFront = [&window] { window.BringToFront(); };
    hooks.importFile = [&window](const std::filesystem::path& path) {
        RunWhenFree(window, [&window, path] { emit window.ImportRequested(PathToQString(path)); });
    };
    hooks.capture = [&window] { RunWhenFree(window, [&window] { emit window.CaptureRequested(); }); };
    hooks.close = [&window] { RunWhenFree(window, [&window] { window.close(); }); };
    hooks.checkAgentOptions = [&app] {
        Settings stored;
        stored.LoadOptions(app.Store());
        app.GetSettings().Set(Option::RunAgent, stored.Int(Option::RunAgent));
    };
    return hooks;
}

}  // namespace lore
