#pragma once

#include <functional>
#include <string>

namespace lore {

/// What came back from an address.
struct UpdateReply {
    bool ok = false;
    std::string text;    ///< at most 64 KiB
    std::string reason;  ///< why there is no text
};

/// Fetches a small text from the net, beside everything else.
class UpdateSource {
public:
    virtual ~UpdateSource() = default;
    /// Starts to fetch and returns at once. `done` is called on the user's thread, within some seconds at the latest,
    /// unless the source goes before.
    virtual void Fetch(const std::string& address, std::function<void(const UpdateReply&)> done) = 0;
};

}  // namespace lore
