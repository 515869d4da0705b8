#pragma once

#include <functional>

class QObject;

namespace lore {

/// While one lives, a command is at work that looks to events now and then: what would begin another command waits.
class Busy {
public:
    Busy();
    ~Busy();
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
};

/// True while no command is at work.
bool IsIdle();

/// The same, and no dialog is open.
bool IsFree();

/// A step of a menu or a button that does nothing while a command is at work: a screen reader triggers an action
/// without any input that could be held back.
std::function<void()> UnlessAtWork(std::function<void()> run);
/// The same for the main window, whose commands do nothing while a dialog is open either.
std::function<void()> WhereFree(std::function<void()> run);

/// Runs a step once the event loop is back and the program is free. Without the owner nothing runs any more.
void RunWhenFree(QObject& owner, const std::function<void()>& step, int delay = 0);

/// Runs a step that may come while a dialog is open: now, or once no command is at work.
void RunWhenIdle(QObject& owner, const std::function<void()>& step);

}  // namespace lore
