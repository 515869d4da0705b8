#pragma once

#include "base/date_time.h"

namespace lore {

/// The only source of "now" in the core, so that tests can set it.
class Clock {
public:
    virtual ~Clock() = default;
    /// Local time in whole seconds.
    virtual DateTime Now() const = 0;
    /// Coordinated Universal Time in whole seconds.
    virtual DateTime NowUtc() const = 0;
};

}  // namespace lore
