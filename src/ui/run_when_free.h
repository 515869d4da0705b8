#pragma once

#include <functional>

class QObject;

namespace lore {

/// Runs a step once the event loop is back and no dialog is open. Without the owner nothing runs any more.
void RunWhenFree(QObject& owner, const std::function<void()>& step, int delay = 0);

}  // namespace lore
