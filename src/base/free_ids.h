#pragma once

#include <cstdint>
#include <limits>

#include "base/id_marks.h"

namespace lore {

/// The highest number that 32 bits hold, and with it the highest id.
inline constexpr int32_t kHighestID = std::numeric_limits<int32_t>::max();
/// Why nothing new can be made where FreeIDs finds none.
inline constexpr char kNoFreeID[] = "every number is in use";

/// A counter of ids one further; at the highest number it stays.
constexpr int32_t CounterAfter(int32_t counter) {
    return counter == kHighestID ? counter : counter + 1;
}

/// Ids that nothing new may get though nothing has them: something names them whose owner has gone, or they are
/// reserved.
class PassedIDs {
public:
    void Add(int32_t id) { ids_.Add(id); }
    bool Contains(int32_t id) const { return ids_.Contains(id); }
    void Clear() { ids_.Clear(); }
    /// The wanted number, or the first one after it that isn't passed over.
    int64_t Behind(int64_t wanted) const {
        while (wanted <= kHighestID && Contains(static_cast<int32_t>(wanted)))
            ++wanted;
        return wanted;
    }

private:
    IDMarks ids_;
};

/// Finds ids for new things of one kind, in one walk for as many as there come. The caller makes each one used.
class FreeIDs {
public:
    /// `first` is the first id that NoteBooks give out, above 0.
    explicit FreeIDs(int32_t first) : lowest_(first) {}

    /// The wanted id, one above a counter as a rule. Where it is no id or `isUsed(id)` says true, as after a damaged
    /// record with the highest number, the lowest one from the first on that isn't used; what has become free again
    /// since an earlier call doesn't count. 0 if there is none.
    template <typename IsUsed>
    int32_t Find(int64_t wanted, const IsUsed& isUsed) {
        if (wanted > 0 && wanted <= kHighestID && !isUsed(static_cast<int32_t>(wanted)))
            return static_cast<int32_t>(wanted);
        while (lowest_ <= kHighestID && isUsed(static_cast<int32_t>(lowest_)))
            ++lowest_;
        return lowest_ <= kHighestID ? static_cast<int32_t>(lowest_) : 0;
    }

private:
    int64_t lowest_;  // from the first id up to here all are used
};

}  // namespace lore
