#pragma once

#include <QTextTable>
#include <memory>

#include "ui/editor/note_formats.h"

namespace lore {

/// The rows of a table of the screen: as they were read, as long as its grid has stayed, otherwise made from its grid.
std::shared_ptr<const NoteTable> ShapeOf(QTextTable& table, const NoteFormats& formats);

/// Forgets the rows that were read, before a command changes the grid.
void ForgetShape(QTextTable& table);

}  // namespace lore
