#pragma once

#include <functional>

#include "notebooks/manage_notebooks.h"
#include "ui/controls/dialog_frame.h"

class QLabel;
class QLineEdit;
class QListWidget;

namespace lore {

/// The dialog "Manage NoteBooks". Accepted with the NoteBook to change to as the model's chosen one.
class ManageNoteBooksDialog : public DialogFrame {
    Q_OBJECT

public:
    /// The model has been opened and outlives the dialog.
    ManageNoteBooksDialog(ManageNoteBooks& model, const Theme& theme, SettingsStore& store, QWidget* parent);

    void accept() override;
    void reject() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* MakeDetails();
    QWidget* MakeNew();
    void Refill();
    void ShowDetails();
    void Create();
    void ChangeName();
    void Delete();
    void Restore();
    /// Shows what a command changed and runs a step, once it came to its end.
    void Run(const std::function<bool()>& command, const std::function<void()>& then);
    bool MayClose();

    ManageNoteBooks& model_;
    const Theme& theme_;
    QListWidget* list_ = nullptr;
    QLineEdit* name_ = nullptr;
    QLineEdit* newName_ = nullptr;
    QLabel* notes_ = nullptr;
    QLabel* created_ = nullptr;
    QPushButton* changeName_ = nullptr;
    QPushButton* delete_ = nullptr;
    QPushButton* restore_ = nullptr;
};

}  // namespace lore
