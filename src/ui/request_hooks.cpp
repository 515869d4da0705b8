#include "ui/request_hooks.h"

#include <QApplication>

#include "app/lorebinder_app.h"
#include "ui/main_window.h"
#include "ui/note_editor/note_editor_window.h"
#include "ui/qt_text.h"
#include "ui/run_when_free.h"
#include "ui/show_reminder.h"

namespace lore {
namespace {

NoteEditorWindow* OpenEditor() {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        auto* const editor = qobject_cast<NoteEditorWindow*>(widget);
        if (editor && editor->isVisible())
            return editor;
    }
    return nullptr;
}

}  // namespace

RequestHooks HooksOf(MainWindow& window, CLorebinderApp& app, const Theme& theme) {
    RequestHooks hooks;
    hooks.restore = hooks.bringToFront = [&window] { window.BringToFront(); };
    hooks.importFile = [&window](const std::filesystem::path& path) {
        RunWhenFree(window, [&window, path] { emit window.ImportRequested(PathToQString(path)); });
    };
    hooks.capture = [&window] {
        RunWhenIdle(window, [&window] {
            if (NoteEditorWindow* const editor = OpenEditor())
                editor->PasteClipboard();
            else
                RunWhenFree(window, [&window] { emit window.CaptureRequested(); });
        });
    };
    hooks.showReminder = [&window, &app, &theme](const std::string& id) {
        RunWhenFree(window, [&window, &app, &theme, id] { ShowReminder(app, theme, window, id); });
    };
    hooks.close = [&window] { RunWhenFree(window, [&window] { window.close(); }); };
    hooks.checkForUpdates = [&window] { window.CheckForUpdates(true); };
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
