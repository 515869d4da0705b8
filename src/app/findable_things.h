#pragma once

#include <string_view>

#include "app/command_finder.h"
#include "app/lorebinder_app.h"

namespace lore {

/// Adds what the open NoteBook has to find: the other NoteBooks, categories, sources, key words and the notes of the
/// current list. Ids are those of the records; of a NoteBook and a key word their position in NoteBookChoices() and in
/// the list of key words.
void AddFindableThings(const CLorebinderApp& app, CommandFinder& finder);

/// The notes that a found category, source or key word stands for; none for another kind.
LongList NotesOfThing(const CLorebinderApp& app, const FindableItem& item);

}  // namespace lore
