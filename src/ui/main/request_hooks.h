#pragma once

#include "app/outside_requests.h"

namespace lore {

class CLorebinderApp;
class MainWindow;
class Theme;

/// Requests from outside as the main window carries them out. What opens a window of its own waits until no other one
/// is open, so that whoever asked gets the answer at once. The window outlives the hooks.
RequestHooks HooksOf(MainWindow& window, CLorebinderApp& app, const Theme& theme);

}  // namespace lore
