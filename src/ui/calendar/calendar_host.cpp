#include "ui/calendar/calendar_host.h"

#include <QApplication>

#include "online/http_reminder_server.h"
#include "ui/calendar/modify_event_dialog.h"
#include "ui/ports/quit_guard.h"

namespace lore {

CalendarHost::CalendarHost(CLorebinderApp& app, const Theme& theme, QWidget* parent)
    : app_(app),
      theme_(theme),
      parent_(parent),
      pauses_(app.Ports().wait),
      server_(MakeReminderServer(LoadReminderSetup(app.Store()), app.GetSettings(), app.Ports().http,
                                 app.Ports().background)),
      world_{.eventFile = app.Data().Events(),
             .reminderFile = app.Data().Reminders(),
             .settings = app.GetSettings(),
             .prompts = app.Ports().prompts,
             .progress = app.Ports().progress,
             .clock = app.Ports().clock,
             .guids = app.Ports().guids,
             .faults = app.Ports().faults,
             .server = *server_,
             .question = *this,
             .setup = LoadReminderSetup(app.Store()),
             .agent = app.Ports().agent,
             .wait = [this](int milliseconds) { pauses_.Pause(milliseconds); },
             .storeSettings = [this] { app_.StoreSettings(); }} {}

SeriesReach CalendarHost::Ask(ModifyEventMode mode) {
    if (IsSavingToQuit())
        return SeriesReach::OnlyThis;
    QWidget* const window = QApplication::activeModalWidget();
    return ModifyEventDialog(mode, Store(), window ? window : parent_).AskReach();
}

}  // namespace lore
