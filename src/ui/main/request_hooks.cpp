#include "ui/main/request_hooks.h"

#include <QApplication>
#include <QTimer>

#include "app/lorebinder_app.h"
#include "ui/controls/run_when_free.h"
#include "ui/look/qt_text.h"
#include "ui/main/help_actions.h"
#include "ui/main/main_window.h"
#include "ui/main/show_reminder.h"
#include "ui/note_editor/note_editor_window.h"

namespace lore {
namespace {

constexpr int kLookAgain = 200;  // milliseconds

/// Into the note that is being written, or into a new one. While a question stands over either, the capture waits: the
/// one that asks may hold on to what it would change, or close the note.
void Capture(MainWindow& window) {
    RunWhenIdle(window, [&window] {
        if (auto* const editor = qobject_cast<NoteEditorWindow*>(QApplication::activeModalWidget()))
            editor->PasteClipboard();
        else if (IsFree())
            RunWhenFree(window, [&window] { window.Capture(); });
        else
            QTimer::singleShot(kLookAgain, &window, [&window] { Capture(window); });
    });
}

/// Over the note that is being written too. Any other dialog may hold on to what the reminder's would change.
void Show(MainWindow& window, CLorebinderApp& app, const Theme& theme, const std::string& id) {
    QWidget* const modal = QApplication::activeModalWidget();
    if (IsIdle() && (!modal || qobject_cast<NoteEditorWindow*>(modal)))
        return ShowReminder(app, theme, modal ? *modal : window, id);
    QTimer::singleShot(kLookAgain, &window, [&window, &app, &theme, id] { Show(window, app, theme, id); });
}

}  // namespace

RequestHooks HooksOf(MainWindow& window, CLorebinderApp& app, const Theme& theme) {
    RequestHooks hooks;
    hooks.restore = hooks.bringToFront = [&window] { window.BringToFront(); };
    hooks.importFile = [&window](const std::filesystem::path& path) {
        RunWhenFree(window, [&window, path] { window.ImportFile(PathToQString(path)); });
    };
    hooks.capture = [&window] { Capture(window); };
    hooks.showReminder = [&window, &app, &theme](const std::string& id) {
        QTimer::singleShot(0, &window, [&window, &app, &theme, id] { Show(window, app, theme, id); });
    };
    hooks.close = [&window] { RunWhenFree(window, [&window] { window.close(); }); };
    hooks.checkForUpdates = [&window] { window.Help().CheckForUpdates(true); };
    hooks.checkAgentOptions = [&app] {
        app.FlushStore();  // shows what the agent has written
        Settings stored;
        stored.LoadOptions(app.Store());
        for (const Option option : {Option::RunAgent, Option::StartupAgent})
            app.GetSettings().Set(option, stored.Int(option));
    };
    return hooks;
}

}  // namespace lore
