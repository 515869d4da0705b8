#pragma once

namespace lore {

/// For the first line of a program. Standard streams that are closed are opened on nothing, so that no file of the
/// program takes their numbers and gets what is printed; printing to a standard output that was closed fails. A write
/// over the limit for the size of a file fails too, and doesn't end the process.
void PrepareStandardStreams();

}  // namespace lore
