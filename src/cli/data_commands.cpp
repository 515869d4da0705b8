#include "cli/command.h"

namespace lore {

void AddDataCommands(Commands&) {}

}  // namespace lore
