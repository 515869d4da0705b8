#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "app/writing_commands.h"
#include "exchange/import_editing.h"
#include "exchange/import_notes.h"
#include "ui/controls/dialog_frame.h"

class QAction;
class QCheckBox;
class QTreeWidget;
class QTreeWidgetItem;

namespace lore {

class EmptyLine;
class ListColumns;
class Theme;

/// What the window can do to the notes of the list, besides choosing. Each gives whether something has changed.
struct ImportNoteCommands {
    std::function<bool(size_t position, QWidget* parent)> edit;
    std::function<bool(QWidget* parent)> changeCategories;
    /// The user gives up what has been changed.
    std::function<void()> dropChanges = [] {};
};

/// The list of an archive's notes with their status, from which the user chooses what comes in.
class ImportWindow : public DialogFrame {
    Q_OBJECT

public:
    /// The comparison outlives the window and holds the choice.
    ImportWindow(ImportComparison& comparison, ImportNoteCommands commands, const Theme& theme, Prompts& prompts,
                 SettingsStore& store, QWidget* parent);

    void accept() override;
    /// Asks first if notes have been changed here.
    void reject() override;

private:
    void MakeList();
    void MakeActions();
    void MakeOptions();
    void MakeButtons();
    QString EmptyText() const;
    void Refill();
    void ShowRow(QTreeWidgetItem& item, size_t position) const;
    void Ticked(QTreeWidgetItem* item, int column);
    void TickAll(bool ticked);
    void ShowDifferences();
    void EditNote();
    void ChangeCategories();
    void NotesChanged();
    void RefreshRows();
    void UpdateActions();

    ImportComparison& comparison_;
    ImportNoteCommands commands_;
    const Theme& theme_;
    Prompts& prompts_;
    SettingsStore& store_;
    QTreeWidget* list_ = nullptr;
    ListColumns* columns_ = nullptr;
    EmptyLine* empty_ = nullptr;
    QCheckBox* displayAfter_ = nullptr;
    QAction *edit_ = nullptr, *differences_ = nullptr;
    bool changed_ = false;  // a note of the list, by the user
};

/// Lets the user choose in a window.
class WindowChooser : public ImportChooser {
public:
    /// `commands` and what they work on outlive the chooser.
    WindowChooser(CLorebinderApp& app, WritingCommands& commands, Theme& theme, QWidget* parent)
        : app_(app), commands_(commands), theme_(theme), parent_(parent) {}
    bool ChooseNotes(ImportComparison& comparison, ImportArchive& archive) override;
    void NotesLanded(const LongList& ids) override { editing_->Landed(ids); }

private:
    CLorebinderApp& app_;
    WritingCommands& commands_;
    Theme& theme_;
    QWidget* parent_;
    std::optional<ImportEditing> editing_;  ///< uses the comparison until the notes have landed
};

}  // namespace lore
