#pragma once

namespace lore {

/// Lets screen readers see the pages of a preview as sections of a document, each with its text. Safe to call more than
/// once.
void InstallPageAccessibility();

}  // namespace lore
