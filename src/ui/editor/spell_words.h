#pragma once

#include <QString>
#include <vector>

#include "ui/editor/note_block_data.h"

namespace lore {

/// The words of a text that a spell checker is to judge, by the rules of Unicode, with apostrophes inside them. Left
/// out are words with digits, words all in capitals, words of mixed case such as "iPhone", and addresses of the web, of
/// mail and of files.
std::vector<SpellMark> WordsToCheck(const QString& text);

}  // namespace lore
