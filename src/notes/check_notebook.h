#pragma once

#include <vector>

#include "notes/check_finding.h"
#include "notes/notebook_paths.h"
#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

/// Looks through all files of a NoteBook and changes none. Findings stand by note file in reading order, then the other
/// files, then the attachments. A file that can't be read at all is told to `faults`.
std::vector<Finding> CheckNoteBook(const NoteBookPaths& paths, const ReadContext& context, FaultNotice& faults);

/// The same for the list of NoteBooks and for every NoteBook of a data root, the main one first.
std::vector<Finding> CheckData(const DataPaths& data, const ReadContext& context, FaultNotice& faults);

}  // namespace lore
