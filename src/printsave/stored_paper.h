#pragma once

#include <QPageLayout>
#include <optional>

#include "ports/settings_store.h"

namespace lore {

/// The paper that was last set up, or nothing if none was or what stands there is none to print on.
std::optional<QPageLayout> StoredPaper(const SettingsStore& store);
void StorePaper(SettingsStore& store, const QPageLayout& paper);

/// In millimetres, what the margins have to leave of a paper, across and down.
constexpr int kSmallestRoom = 20;
/// Whether they do.
bool HasRoom(const QPageLayout& paper);

}  // namespace lore
