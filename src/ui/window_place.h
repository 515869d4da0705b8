#pragma once

#include <QRect>
#include <optional>
#include <string>

#include "ports/settings_store.h"

class QWidget;

namespace lore {

/// The section of the store that holds what windows remember of themselves.
inline constexpr char kWindowsSection[] = "Windows";

/// Where a window stood when its place was stored under this key, no larger than the screen there. Nothing if it never
/// was, or if that screen has gone.
std::optional<QRect> StoredWindowPlace(const SettingsStore& store, const std::string& key);
void StoreWindowPlace(SettingsStore& store, const std::string& key, const QWidget& window);

}  // namespace lore
