#pragma once

#include <functional>
#include <string>

#include "online/online_config.h"
#include "online/sync_setup.h"
#include "ui/controls/dialog_frame.h"

class QCheckBox;
class QLabel;
class QLineEdit;

namespace lore {

/// The dialog "Lorebinder Online Sync Setup".
class SyncSetupDialog : public DialogFrame {
    Q_OBJECT

public:
    /// The result of a dialog after which all NoteBooks are to be linked and synced.
    static constexpr int kSyncAll = 2112;
    using PageOpener = std::function<void(const std::string& address)>;

    /// The model outlives the dialog. The links to pages whose address isn't set aren't shown.
    SyncSetupDialog(SyncSetup& setup, const OnlineConfig& config, const Theme& theme, SettingsStore& store,
                    PageOpener openPage, QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* MakeAccount(const OnlineConfig& config);
    QWidget* MakeRuns();
    QWidget* MakeSyncAll();
    void AddLink(const QString& before, const QString& behind, const std::string& address);
    void Engage();
    void ShowAccount();

    SyncSetup& setup_;
    const Theme& theme_;
    PageOpener openPage_;
    QLabel* head_ = nullptr;
    QLineEdit* guid_ = nullptr;
    QCheckBox *atStart_ = nullptr, *atClose_ = nullptr;
};

}  // namespace lore
