#pragma once

namespace lore {

/// Lets screen readers see the cards of a board as the items of a list. Call once before the first window.
void InstallBoardAccessibility();

}  // namespace lore
