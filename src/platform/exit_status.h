#pragma once

namespace lore {

/// What a program ends with.
enum class ExitStatus { Done = 0, NothingFound = 1, WrongUsage = 2, Fault = 3, Locked = 4 };

/// The same for the system.
constexpr int NumberOf(ExitStatus status) {
    return static_cast<int>(status);
}

}  // namespace lore
