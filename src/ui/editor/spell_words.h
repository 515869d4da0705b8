#pragma once

#include <QString>
#include <vector>

#include "settings/spell_settings.h"
#include "ui/editor/note_block_data.h"

namespace lore {

/// The words of a text that a spell checker is to judge, by the rules of Unicode, with apostrophes inside them, without
/// those to skip.
std::vector<SpellMark> WordsToCheck(const QString& text, const SkippedWords& skipped = {});

}  // namespace lore
