#pragma once

#include <cstdint>

#include "exchange/import_notes.h"
#include "ui/dialog_frame.h"

class QAction;
class QCheckBox;
class QTreeWidget;
class QTreeWidgetItem;

namespace lore {

class Theme;

/// The list of an archive's notes with their status, from which the user chooses what comes in.
class ImportWindow : public DialogFrame {
    Q_OBJECT

public:
    /// The comparison outlives the window and holds the choice.
    ImportWindow(ImportComparison& comparison, const Theme& theme, Prompts& prompts, SettingsStore& store,
                 QWidget* parent);

    void accept() override;

private:
    void MakeList();
    void MakeOptions();
    void Refill();
    void ShowRow(QTreeWidgetItem& item, size_t position) const;
    void Ticked(QTreeWidgetItem* item, int column);
    void TickAll(bool ticked);
    void ShowDifferences();
    void UpdateActions();

    ImportComparison& comparison_;
    const Theme& theme_;
    Prompts& prompts_;
    SettingsStore& store_;
    QTreeWidget* list_ = nullptr;
    QCheckBox* displayAfter_ = nullptr;
    QAction* differences_ = nullptr;
};

/// Lets the user choose in a window.
class WindowChooser : public ImportChooser {
public:
    WindowChooser(const Theme& theme, Prompts& prompts, SettingsStore& store, QWidget* parent)
        : theme_(theme), prompts_(prompts), store_(store), parent_(parent) {}
    bool ChooseNotes(ImportComparison& comparison, ImportArchive& archive) override;

private:
    const Theme& theme_;
    Prompts& prompts_;
    SettingsStore& store_;
    QWidget* parent_;
};

}  // namespace lore
