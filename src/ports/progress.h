#pragma once

#include <string>

namespace lore {

/// The progress window and the stand-by window, stepped from the working loop.
class Progress {
public:
    virtual ~Progress() = default;
    virtual void SetRange(int low, int high) = 0;
    virtual void SetMessage(const std::string& text) = 0;
    virtual void StepIt() = 0;
    virtual void SetPosition(int position) = 0;
    virtual void Show() = 0;
    virtual void Hide() = 0;
    /// The small window with one line for short waits.
    virtual void ShowStandBy(const std::string& text) = 0;
    virtual void HideStandBy() = 0;
    /// True once the user has asked to stop, where the flow said that it is safe to.
    virtual bool Cancelled() const { return false; }
};

}  // namespace lore
