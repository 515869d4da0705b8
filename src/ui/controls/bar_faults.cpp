#include "ui/controls/bar_faults.h"

#include <QApplication>

#include "platform/printed_faults.h"
#include "ui/controls/dialog_frame.h"
#include "ui/controls/fault_bar.h"

namespace lore {

namespace {

/// Of the dialog in front, or of the one that a box there stands over; null where there is none.
FaultBar* BarInFront(const Theme& theme) {
    for (QWidget* window = QApplication::activeModalWidget(); window; window = window->parentWidget()) {
        if (auto* const dialog = qobject_cast<DialogFrame*>(window))
            return &dialog->Faults(theme);
    }
    return nullptr;
}

}  // namespace

void BarFaults::Tell(const Fault& fault) {
    if (isOver_)
        PrintedFaults("lorebinder").Tell(fault);
    else if (!bar_)
        early_.push_back(fault);
    if (!bar_)
        return;
    bar_->Add(fault);
    FaultBar* const front = fault.isNotice ? nullptr : BarInFront(bar_->Look());
    if (!front || front == bar_)
        return;
    front->Add(fault);
    std::erase_if(fronts_, [&](const QPointer<FaultBar>& one) { return !one || one == front; });
    fronts_.emplace_back(front);
}

void BarFaults::Mended(const std::string& what, const std::string& path) {
    std::erase_if(early_, [&](const Fault& fault) { return fault.IsOf(what, path); });
    if (bar_)
        bar_->Remove(what, path);
    for (const QPointer<FaultBar>& front : fronts_)
        if (front)
            front->Remove(what, path);
}

void BarFaults::SetBar(FaultBar* bar) {
    bar_ = bar;
    isOver_ = !bar_;
    if (isOver_)
        return;
    for (const Fault& fault : early_)
        bar_->Add(fault);
    early_.clear();
}

}  // namespace lore
