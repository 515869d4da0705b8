#pragma once

#include <array>

#include "sources/custom_types_editor.h"
#include "ui/sources/source_dialog.h"

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace lore {

/// "Custom Source Types": the types at the left, the fields of the selected one at the right.
class CEditSourceTypesDlg : public SourceDialog {
    Q_OBJECT

public:
    CEditSourceTypesDlg(CustomTypesEditor& editor, const SourceWindows& windows, QWidget* parent);

    void reject() override;

private:
    QWidget* MakeTypes();
    QWidget* MakeFields();
    QWidget* MakeFieldForm();
    void ConnectFields();
    void FillTypes();
    void FillFields();
    void ShowField();
    void FieldsMoved();
    void Save();

    CustomTypesEditor& editor_;
    QListWidget *types_ = nullptr, *fields_ = nullptr;
    QLineEdit *typeName_ = nullptr, *fieldName_ = nullptr;
    std::array<QCheckBox*, 3> flags_{};
    QComboBox* end_ = nullptr;
    QPushButton *deleteType_ = nullptr, *addField_ = nullptr, *deleteField_ = nullptr;
};

}  // namespace lore
