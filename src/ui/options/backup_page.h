#pragma once

#include <QWidget>

#include "settings/option_pages.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QVBoxLayout;

namespace lore {

class Theme;

/// The page "Auto-Backup".
class COptBackupPg : public QWidget {
    Q_OBJECT

public:
    COptBackupPg(OptionsWorld& world, const Theme& theme, QWidget* parent);
    /// Whether another page may be shown, and the options may be closed.
    bool MayLeave() { return model_.MayLeave(); }

private:
    void AddUses(QVBoxLayout& layout);
    void AddPath(QVBoxLayout& layout);
    void ShowState();

    BackupPage model_;
    const Theme& theme_;
    QCheckBox* enable_ = nullptr;
    QWidget* below_ = nullptr;
    QLineEdit* path_ = nullptr;
    QLabel* next_ = nullptr;
};

}  // namespace lore
