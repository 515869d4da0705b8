#pragma once

#include <array>

#include "sources/source_browser.h"
#include "ui/sources/source_dialog.h"

class QComboBox;
class QStackedWidget;

namespace lore {

class CSourcesListWnd;
class SourceListModel;

/// "View Sources": the sources of the NoteBook with three filters. In select mode it is accepted with the browser's
/// selected source as the user's choice.
class CViewSourcesDlg : public SourceDialog {
    Q_OBJECT

public:
    CViewSourcesDlg(SourceBrowser& browser, const SourceWindows& windows, QWidget* parent);

    CSourcesListWnd* List() const { return list_; }
    QComboBox* FilterBox(SourceFilter filter) const { return boxes_.at(static_cast<size_t>(filter)); }

    void NewSource();
    void EditSource();
    void DeleteSource();
    void done(int result) override;

private:
    void MakeFilters();
    void MakeCommands();
    void MakeList();
    void FillBoxes();
    /// The list as the browser has it now, its selected source in view.
    void ShowRows();
    void ShowFilters();
    void EditorClosed(std::optional<int32_t> saved);
    void OpenMenu(const QPoint& at);
    void RestoreFrame();

    SourceBrowser& browser_;
    QWidget* filters_ = nullptr;
    std::array<QComboBox*, kSourceFilters> boxes_{};
    QStackedWidget* stack_ = nullptr;
    SourceListModel* model_ = nullptr;
    CSourcesListWnd* list_ = nullptr;
    QLabel *empty_ = nullptr, *count_ = nullptr;
    QPushButton* filtersButton_ = nullptr;
};

}  // namespace lore
