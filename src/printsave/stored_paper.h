#pragma once

#include <QPageLayout>
#include <optional>

#include "ports/settings_store.h"

namespace lore {

/// The paper that was last set up, or nothing if none was or what stands there is none to print on.
std::optional<QPageLayout> StoredPaper(const SettingsStore& store);
void StorePaper(SettingsStore& store, const QPageLayout& paper);

/// Whether the margins leave enough of a paper to print on.
bool HasRoom(const QPageLayout& paper);

}  // namespace lore
