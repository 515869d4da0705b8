#pragma once

#include <filesystem>
#include <vector>

#include "edit/repair_notebook.h"
#include "notes/notebook_paths.h"
#include "ports/fault_notice.h"

namespace lore {

/// The folders whose files are replaced by way of temporary ones, of a data root with these NoteBooks.
std::vector<std::filesystem::path> FoldersOfWriters(const DataPaths& data, const std::vector<NoteBookPaths>& noteBooks);

/// Removes from these folders the temporary files that writers have left which were killed: those that bear our kind of
/// name and were last written before `before`, so that no writer that still runs loses its own. Tells what could not be
/// removed.
std::vector<Repair> RemoveLeftFiles(const std::vector<std::filesystem::path>& folders,
                                    std::filesystem::file_time_type before, FaultNotice& faults);

}  // namespace lore
