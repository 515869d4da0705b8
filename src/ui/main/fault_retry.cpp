#include "ui/main/fault_retry.h"

#include "app/lorebinder_app.h"
#include "ui/controls/fault_bar.h"

namespace lore {

FaultRetry::FaultRetry(CLorebinderApp& app, FaultBar& bar, QObject* parent) : QObject(parent), app_(app), bar_(bar) {
    connect(&bar_, &FaultBar::Changed, this, &FaultRetry::ShowOffer);
    connect(&bar_, &FaultBar::TryAgainRequested, this, &FaultRetry::TryAgain);
    ShowOffer();
}

void FaultRetry::Run(const std::function<bool()>& command) {
    bar_.Run(command);
    ShowOffer();
}

void FaultRetry::Switch(const std::function<void()>& step) {
    const size_t told = bar_.LastNumber();
    const std::filesystem::path former = app_.NoteBook().paths.Folder();
    step();
    if (app_.NoteBook().paths.Folder() == former)
        return;
    bar_.TakeFailed();
    bar_.Forget(told, former);
    ShowOffer();
}

void FaultRetry::TryAgain() {
    const std::function<bool()> command = bar_.TakeFailed();
    if (app_.TryAgain())
        emit NoteBookLoaded();
    if (command)
        Run(command);
}

void FaultRetry::ShowOffer() {
    bar_.OfferTryAgain(app_.CanTryAgain());
}

}  // namespace lore
