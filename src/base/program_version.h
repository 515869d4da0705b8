#pragma once

namespace lore {

/// The version of all programs as users read it, such as "1.56".
const char* ProgramVersion();

}  // namespace lore
