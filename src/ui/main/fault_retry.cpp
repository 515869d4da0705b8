#include "ui/main/fault_retry.h"

#include <utility>

#include "app/lorebinder_app.h"
#include "ui/controls/fault_bar.h"

namespace lore {

FaultRetry::FaultRetry(CLorebinderApp& app, FaultBar& bar, QObject* parent) : QObject(parent), app_(app), bar_(bar) {
    connect(&bar_, &FaultBar::Added, this, &FaultRetry::ShowOffer);
    connect(&bar_, &FaultBar::TryAgainRequested, this, &FaultRetry::TryAgain);
    connect(&bar_, &FaultBar::Dismissed, this, [this] { command_ = nullptr; });
    ShowOffer();
}

void FaultRetry::Run(const std::function<bool()>& command) {
    command_ = nullptr;
    const size_t before = bar_.Count();
    if (!command() && bar_.Count() != before)
        command_ = command;
    ShowOffer();
}

void FaultRetry::Switch(const std::function<void()>& step) {
    const size_t told = bar_.Count();
    const std::filesystem::path former = app_.NoteBook().paths.Folder();
    step();
    if (app_.NoteBook().paths.Folder() == former)
        return;
    command_ = nullptr;
    bar_.Forget(told, former);
    ShowOffer();
}

void FaultRetry::TryAgain() {
    const std::function<bool()> command = std::exchange(command_, nullptr);
    if (app_.TryAgain())
        emit NoteBookLoaded();
    if (command)
        Run(command);
}

void FaultRetry::ShowOffer() {
    bar_.OfferTryAgain(command_ || app_.CanTryAgain());
}

}  // namespace lore
