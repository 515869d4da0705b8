#include "base/program_version.h"

namespace lore {

const char* ProgramVersion() {
    return LORE_VERSION;
}

}  // namespace lore
