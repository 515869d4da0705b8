#pragma once

#include <array>
#include <string>

namespace lore {

class CLorebinderApp;

/// What stands below the main window, from left to right.
enum class StatusPane { NoteBook, Link, LastSync, Notes, List };
inline constexpr std::array kStatusPanes = {StatusPane::NoteBook, StatusPane::Link, StatusPane::LastSync,
                                            StatusPane::Notes, StatusPane::List};

/// The text of a pane, as the application is now.
std::string PaneText(const CLorebinderApp& app, StatusPane pane);

/// The same before a NoteBook is loaded.
const char* EarlyPaneText(StatusPane pane);

/// The title of the main window.
std::string MainWindowTitle();

}  // namespace lore
