#pragma once

#include "ports/progress.h"

namespace lore {

/// For whoever has no windows to show.
class SilentProgress : public Progress {
public:
    void SetRange(int, int) override {}
    void SetMessage(const std::string&) override {}
    void StepIt() override {}
    void SetPosition(int) override {}
    void Show() override {}
    void Hide() override {}
    void ShowStandBy(const std::string&) override {}
    void HideStandBy() override {}
};

}  // namespace lore
