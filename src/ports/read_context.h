#pragma once

#include "base/date_time.h"
#include "ports/guid_source.h"

namespace lore {

/// What a record reader needs of the world: the moment of reading, for dates that can't be read, and new GUIDs for
/// records that lack one. One context serves one load, so that all its records agree on "now".
struct ReadContext {
    DateTime now;                 ///< local time
    DateTime nowUtc;              ///< Coordinated Universal Time
    GuidSource* guids = nullptr;  ///< never null; safe to use from several threads
};

}  // namespace lore
