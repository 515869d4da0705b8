#pragma once

#include <string>

class QWidget;

namespace lore {

class CLorebinderApp;
class Theme;

/// Opens the event that a reminder belongs to, or the day of one without an event. Nothing for an id that no reminder
/// has.
void ShowReminder(CLorebinderApp& app, const Theme& theme, QWidget& parent, const std::string& reminderId);

}  // namespace lore
