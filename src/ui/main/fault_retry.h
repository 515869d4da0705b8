#pragma once

#include <QObject>
#include <functional>

namespace lore {

class CLorebinderApp;
class FaultBar;

/// The button "Try again" of the main window's bar: it is there only while something that failed can be done anew.
/// Where the NoteBook is read again its current list is too, so that a search and its marks go; the notes and their
/// order stay.
class FaultRetry : public QObject {
    Q_OBJECT

public:
    /// Both outlive the retry.
    FaultRetry(CLorebinderApp& app, FaultBar& bar, QObject* parent);

    /// Runs a command in the bar.
    void Run(const std::function<bool()>& command);

    /// Runs what may open another NoteBook. If it does, faults of the former one's files leave the bar, besides those
    /// that were told meanwhile, and what failed there can't be tried again.
    void Switch(const std::function<void()>& step);

signals:
    /// The NoteBook was loaded anew.
    void NoteBookLoaded();

private:
    void TryAgain();
    void ShowOffer();

    CLorebinderApp& app_;
    FaultBar& bar_;
};

}  // namespace lore
