#pragma once

#include "bibliography/source_selection.h"
#include "ui/controls/dialog_frame.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace lore {

class ClampedSpinBox;
class CSourcesListWnd;
class SourceListModel;
class Theme;

/// The dialog "Select Sources For Bibliography". Its result is kSourcesSelected when the choice is taken.
class CSelectSourcesDlg : public DialogFrame {
    Q_OBJECT

public:
    /// All outlive the dialog.
    CSelectSourcesDlg(SourceSelection& selection, const Theme& theme, SettingsStore& store, QWidget* parent);

private:
    /// One of the two lists with what stands above and below it.
    struct Side {
        SourceListModel* model = nullptr;
        CSourcesListWnd* list = nullptr;
        QLabel* count = nullptr;
    };
    QWidget* MakeSide(Side& side, const SourceList& sources, const QString& title, const QString& hint);
    QWidget* MakeMoves();
    QWidget* MakeFormatting();
    void MoveOver();
    void MoveBack();
    void ShowLists();
    static void ShowList(const Side& side, const SourceList& sources);

    SourceSelection& selection_;
    const Theme& theme_;
    Side available_, selected_;
    QPushButton *add_ = nullptr, *remove_ = nullptr, *all_ = nullptr, *none_ = nullptr;
    QCheckBox* sort_ = nullptr;
    QRadioButton *individual_ = nullptr, *common_ = nullptr;
    QComboBox* style_ = nullptr;
    ClampedSpinBox *indent_ = nullptr, *authors_ = nullptr;
};

}  // namespace lore
