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

/// Where a window stood when its place was stored under this key, no larger than the screen there. Nothing if it never
/// was, or if that screen has gone.
std::optional<QRect> StoredWindowPlace(const SettingsStore& store, const std::string& key);
/// Where a window that stood there shows: no larger than the screen. Nothing unless one shows 10 by 10 pixels of it.
std::optional<QRect> PlaceOnScreen(const Rect& frame);
void StoreWindowPlace(SettingsStore& store, const std::string& key, const QWidget& window);

/// So many sizes of parts that stand side by side, as they were stored under this key. Nothing unless each is one.
std::optional<QList<int>> StoredSizes(const SettingsStore& store, const std::string& key, int count);
void StoreSizes(SettingsStore& store, const std::string& key, const QList<int>& sizes);
/// Divides a splitter, which has its parts, as the user has done last, and stores under this key what he makes of it.
/// `store` outlives the splitter. False if he never did; it is then left as it is.
bool KeepSplit(QSplitter& split, SettingsStore& store, const std::string& key);

}  // namespace lore
