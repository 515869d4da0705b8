#pragma once

#include <string_view>

#include "app/command_finder.h"
#include "app/lorebinder_app.h"

namespace lore {

/// Adds what the open NoteBook has to find: the other NoteBooks, categories, sources, key words, the notes of the
/// current list, and the others as far as their texts are held for searches; those stand with their folded text. Ids
/// are those of the records; of a NoteBook and a key word their position in NoteBookChoices() and in the list of key
/// words.
void AddFindableThings(const CLorebinderApp& app, CommandFinder& finder);

/// The text of an item as it is written; of a note that isn't in the list it is read from its file.
std::string WrittenText(const CLorebinderApp& app, const FindableItem& item);

/// The notes that a found category, source, key word or note out of the list stands for; none for another kind.
LongList NotesOfThing(const CLorebinderApp& app, const FindableItem& item);

}  // namespace lore
