#pragma once

#include "ports/clock.h"
#include "ports/guid_source.h"
#include "ports/read_context.h"

namespace lore {

class SystemClock : public Clock {
public:
    DateTime Now() const override;
    DateTime NowUtc() const override;
};

/// Random GUIDs (version 4) from the system's generator.
class SystemGuids : public GuidSource {
public:
    std::string NewGuid() override;
};

/// A local time as Coordinated Universal Time, by the rules of that day. A date that isn't valid stays as it is.
DateTime LocalToUtc(const DateTime& local);

/// Lets milliseconds pass.
void WaitFor(int milliseconds);
/// A random number from 0 to the one given.
int RandomUpTo(int highest);

/// The context of one load: the present moment and new GUIDs.
ReadContext MakeReadContext(const Clock& clock, GuidSource& guids);

}  // namespace lore
