#pragma once

#include <QAction>
#include <QToolBar>
#include <vector>

#include "notes/notebook_list.h"
#include "notes/search_flow.h"

class QComboBox;
class QLineEdit;

namespace lore {

class Theme;

/// The tool bar above the board: search box with its scope, order of the list, zoom, choice of the NoteBook,
/// and the commands that are run most.
class MainToolBar : public QToolBar {
    Q_OBJECT

public:
    explicit MainToolBar(const Theme& theme, QWidget* parent = nullptr);

    void SetSort(int sortId);
    /// A zoom in percent; the nearest choice is shown.
    void SetZoom(int percent);
    void SetNoteBooks(const std::vector<CDatabase>& choices, const std::string& openGuid);
    void FocusSearch();
    /// "Run Sync" is there while an online account is engaged.
    void ShowSync(bool engaged) { sync_->setVisible(engaged); }
    SearchScope Scope() const { return scope_; }
    QMenu* ScopeMenu() const { return scopeMenu_; }

signals:
    void SearchRequested(const QString& text, SearchScope scope);
    void SortChosen(int sortId);
    void ZoomChosen(int percent);
    void NoteBookChosen(int index);
    void NewNoteRequested();
    void CalendarRequested();
    void SyncRequested();

private:
    void AddSearch();
    void AddScopeMenu();
    void AddChoices();
    void AddCommands();
    QAction* AddCommand(const char* icon, const QString& text, const QKeySequence& keys, const char* name,
                        void (MainToolBar::*request)());
    void SetScope(SearchScope scope);

    const Theme& theme_;
    SearchScope scope_ = SearchScope::Database;
    QLineEdit* search_ = nullptr;
    QAction* run_ = nullptr;
    QAction* sync_ = nullptr;
    QMenu* scopeMenu_ = nullptr;
    QComboBox* noteBooks_ = nullptr;
    QComboBox* sort_ = nullptr;
    QComboBox* zoom_ = nullptr;
};

}  // namespace lore
