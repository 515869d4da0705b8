#pragma once

#include <string>

namespace lore {

/// What is wrong with the notes that these bytes give as a note file: each must have an id and a guid. Empty if nothing
/// is wrong.
std::string CheckNoteReading(const std::string& bytes);

/// What is wrong with reading these bytes as a note file, from memory and without a copy of the file: the notes that
/// are walked one by one, taken whole, and shown as a list must be the same ones, and what is written of them must be
/// read as the same notes. Empty if nothing is wrong.
std::string CheckNoteFile(const std::string& bytes);

}  // namespace lore
