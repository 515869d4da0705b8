#pragma once

#include <cstddef>
#include <string>

#include "notes/note_book_loader.h"
#include "notes/notebook_list.h"
#include "notes/notebook_paths.h"
#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

/// What was made.
struct SampleResult {
    bool made = false;   ///< false: something could not be written, and a new NoteBook isn't listed
    CDatabase database;  ///< the main NoteBook or the new one
    size_t notes = 0, sources = 0, authors = 0, types = 0, categories = 0, attachments = 0, events = 0, reminders = 0;
};

/// Writes the sample NoteBook: as the main NoteBook while that holds nothing, otherwise as a new one at the end of the
/// list of NoteBooks. Nothing that stands in the data folder is written over; events and reminders come only into an
/// empty calendar. The caller holds the data folder's lock and stores the raised counters. Failures are told to
/// `faults`.
SampleResult MakeSampleNoteBook(const DataPaths& data, const std::string& localGUID, IdCounters& counters,
                                const ReadContext& context, FaultNotice& faults);

/// True if the main NoteBook holds no notes, sources, types, authors, categories and attachments.
bool IsMainNoteBookEmpty(const DataPaths& data, const ReadContext& context);

}  // namespace lore
