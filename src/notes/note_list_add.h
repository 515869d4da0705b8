#pragma once

#include <cstdint>
#include <stop_token>

#include "base/long_list.h"
#include "notes/note_list.h"
#include "notes/open_notebook.h"
#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

/// No order at all: notes are appended as they come, and none is marked as newly added. Never stored.
inline constexpr int32_t kNoSort = -1;

/// Brings notes into the current note list by the active order: in front of it (kAddToTop) or behind it (kAddToBottom),
/// both in the order of their dates added, or among the others with a sort of the whole list. Notes that the list holds
/// already aren't doubled; with kAddToTop they move to the front. What was added is marked as newly added, and nothing
/// else is. Gives how many notes the list has got more.
size_t AddNotes(CNoteList& list, CNoteList incoming, int32_t noteSortID);

/// The same for one new note of the editor: kAddToTop puts it in front, everything else behind, then the list is
/// sorted.
void AddSingleNote(CNoteList& list, ListedNote note, int32_t noteSortID);

/// Reads the notes with these ids from the NoteBook, in the order given, without those that the list holds, and adds
/// them as AddNotes does. Gives how many were added. Once `stop` is requested, notes may be missing.
size_t LoadNotesToList(const OpenNoteBook& book, const LongList& ids, int32_t noteSortID, const ReadContext& context,
                       FaultNotice& faults, CNoteList& list, const std::stop_token& stop = {});

/// Notes with the texts of their sources, in the order of the ids.
CNoteList LoadListedNotes(const OpenNoteBook& book, const LongList& ids, const ReadContext& context,
                          FaultNotice& faults, const std::stop_token& stop = {});

}  // namespace lore
