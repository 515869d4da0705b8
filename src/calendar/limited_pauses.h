#pragma once

#include <algorithm>
#include <functional>
#include <utility>

namespace lore {

/// The pauses of a flow, held to three seconds in all: a walk over a long series has a pause for each event, and beyond
/// this it goes on without.
class LimitedPauses {
public:
    /// @param wait  lets milliseconds pass
    explicit LimitedPauses(std::function<void(int)> wait) : wait_(std::move(wait)) {}

    void BeginFlow() { left_ = kLongest; }
    void Pause(int milliseconds) {
        const int pause = std::min(milliseconds, left_);
        left_ -= pause;
        if (pause > 0)
            wait_(pause);
    }

private:
    static constexpr int kLongest = 3000;  // milliseconds

    std::function<void(int)> wait_;
    int left_ = kLongest;
};

}  // namespace lore
