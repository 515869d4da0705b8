#pragma once

#include <QList>
#include <QRect>
#include <optional>
#include <string>

#include "ports/settings_store.h"
#include "settings/settings.h"

class QSplitter;
class QWidget;

namespace lore {

/// The section of the store that holds what windows remember of themselves.
inline constexpr char kWindowsSection[] = "Windows";

// A place is where a window's content stands, without the frame, which nobody knows before the window is shown.

/// What is to be kept of a window's place: the one that it goes back to while it is maximised.
Rect PlaceToKeep(const QWidget& window);
/// Where a window that stood there shows: no larger than the screen. Nothing unless one shows 10 by 10 pixels of it.
std::optional<QRect> PlaceOnScreen(const Rect& place);
/// The room for a window on its screen, with a frame around it.
QRect RoomForWindow(const QWidget& window);
/// Puts a window there, or as near and as large as its frame has room on that screen. False where PlaceOnScreen() has
/// nothing; the window is then left as it is.
bool PutWindow(QWidget& window, const Rect& place);
/// Moves a window into the room of its screen, no larger than that. One that is maximised has all of it.
void FitWindow(QWidget& window);

/// As PutWindow(), with the place that was stored under this key.
bool RestoreWindowPlace(QWidget& window, const SettingsStore& store, const std::string& key);
void StoreWindowPlace(SettingsStore& store, const std::string& key, const QWidget& window);

/// So many sizes of parts that stand side by side, as they were stored under this key. Nothing unless each is one.
std::optional<QList<int>> StoredSizes(const SettingsStore& store, const std::string& key, int count);
void StoreSizes(SettingsStore& store, const std::string& key, const QList<int>& sizes);
/// Divides a splitter, which has its parts, as the user has done last, and stores under this key what comes of it.
/// `store` outlives the splitter. False if that never was; it is then left as it is.
bool KeepSplit(QSplitter& split, SettingsStore& store, const std::string& key);

}  // namespace lore
