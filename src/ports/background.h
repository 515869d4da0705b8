#pragma once

#include <functional>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

#include "ports/fault_notice.h"

namespace lore {

/// Runs computations that change nothing which the user's thread sees, so that windows go on painting meanwhile.
class Background {
public:
    /// Asks its token now and then whether to stop early.
    using Work = std::function<void(std::stop_token stop)>;

    virtual ~Background() = default;
    /// Returns when the work has ended. False if the user stopped it: what it made is to be dropped. `text` says what
    /// is being done. The user can't do anything else meanwhile.
    virtual bool Run(const std::string& text, const Work& work) = 0;
};

/// Keeps faults that another thread meets, until the user's thread tells them.
class KeptForLater : public FaultNotice {
public:
    void Tell(const Fault& fault) override { faults_.push_back(fault); }
    void Mended(const std::string& what, const std::string& path) override {
        std::erase_if(faults_, [&](const Fault& fault) { return fault.IsOf(what, path); });
        mended_.emplace_back(what, path);
    }
    void TellAll(FaultNotice& faults) const {
        for (const auto& [what, path] : mended_)
            faults.Mended(what, path);
        for (const Fault& fault : faults_)
            faults.Tell(fault);
    }

private:
    std::vector<Fault> faults_;
    std::vector<std::pair<std::string, std::string>> mended_;  // each before the faults that are left
};

/// Runs work in the background, or on the caller's thread where there is none.
inline bool RunBeside(Background* background, const std::string& text, const Background::Work& work) {
    if (background)
        return background->Run(text, work);
    work({});
    return true;
}

}  // namespace lore
