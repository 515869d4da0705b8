#pragma once

#include <QObject>

class QWidget;

namespace lore {

class CLorebinderApp;
class HelpActions;
class Theme;

/// The commands of the menu "Sync", and the check of the link at the start.
class OnlineActions : public QObject {
    Q_OBJECT

public:
    /// All outlive the actions. `window` is what dialogs open above; it closes for a sync.
    OnlineActions(CLorebinderApp& app, const Theme& theme, const HelpActions& help, QWidget& window);

    /// Checks the link to the online account in a moment, once no dialog is open. For the end of the start.
    void CheckLinkSoon();
    void RunSync();
    void SetUpSync();
    void LinkNoteBook();
    /// Whether the window closes for a sync that has been started.
    bool HasStartedSync() const { return hasStartedSync_; }

signals:
    /// The link of the NoteBook, or the settings of the account, may be others now.
    void LinkChanged();

private:
    void CheckLink();
    void CloseForSync(bool started);

    CLorebinderApp& app_;
    const Theme& theme_;
    const HelpActions& help_;
    QWidget& window_;
    bool hasStartedSync_ = false;
};

}  // namespace lore
