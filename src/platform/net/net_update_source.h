#pragma once

#include <memory>

#include "ports/update_source.h"

class QNetworkAccessManager;

namespace lore {

/// Fetches with HTTP or HTTPS; other addresses are refused. Needs an event loop.
class NetUpdateSource : public UpdateSource {
public:
    /// `timeout`: the longest wait for a sign of life, in milliseconds.
    explicit NetUpdateSource(int timeout = 10'000);
    ~NetUpdateSource() override;

    void Fetch(const std::string& address, std::function<void(const UpdateReply&)> done) override;

private:
    int timeout_;
    std::unique_ptr<QNetworkAccessManager> net_;
};

}  // namespace lore
