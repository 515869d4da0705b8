#pragma once

#include <QPointer>
#include <vector>

#include "ports/fault_notice.h"

namespace lore {

class FaultBar;

/// Hands faults on to a bar, keeps those that come before there is one, and prints those that come after it. A failure
/// is told in the dialog in front as well: who waits for its command doesn't see the bar behind it. What has been done
/// by now leaves all bars.
class BarFaults : public FaultNotice {
public:
    void Tell(const Fault& fault) override;
    void Mended(const std::string& what, const std::string& path) override;
    /// Null once the window with the bar has gone.
    void SetBar(FaultBar* bar);

private:
    FaultBar* bar_ = nullptr;
    bool isOver_ = false;
    std::vector<Fault> early_;
    std::vector<QPointer<FaultBar>> fronts_;  // of dialogs that were told as well
};

}  // namespace lore
