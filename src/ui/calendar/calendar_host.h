#pragma once

#include <memory>

#include "app/lorebinder_app.h"
#include "calendar/calendar_world.h"
#include "calendar/limited_pauses.h"

class QWidget;

namespace lore {

class Theme;

/// What the windows of the calendar share: the world of its flows, with the question of a series as a dialog.
class CalendarHost : public SeriesQuestion {
public:
    CalendarHost(CLorebinderApp& app, const Theme& theme, QWidget* parent);

    const CalendarWorld& World() const { return world_; }
    const Theme& Look() const { return theme_; }
    SettingsStore& Store() const { return app_.Store(); }
    SeriesReach Ask(ModifyEventMode mode) override;
    /// Each flow may pause so long in all, for texts to be read.
    void BeginFlow() { pauses_.BeginFlow(); }

private:
    CLorebinderApp& app_;
    const Theme& theme_;
    QWidget* parent_;
    LimitedPauses pauses_;
    std::unique_ptr<ReminderServer> server_;
    CalendarWorld world_;
};

}  // namespace lore
