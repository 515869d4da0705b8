#pragma once

#include "ui/sources/source_windows.h"

namespace lore {

/// The dialogs on sources, for whoever opens one.
class SourceDialogs : public SourceWindows {
public:
    using SourceWindows::SourceWindows;

    /// Opens the browser to choose a source; nothing when the user cancels.
    std::optional<int32_t> SelectSource(QWidget* parent) const;
    void ViewSources(QWidget* parent) const;
    std::optional<int32_t> EditSource(const CSource* source, QWidget* parent) const override;
    bool EditTypes(QWidget* parent) const override;
};

}  // namespace lore
