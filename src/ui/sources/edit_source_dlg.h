#pragma once

#include "sources/source_editor.h"
#include "ui/sources/source_dialog.h"

class QComboBox;
class QLineEdit;
class QSpinBox;

namespace lore {

class CSourcePreviewWnd;
class SourceAuthorsPane;
class SourceDateField;
class SourceFieldsPane;

/// "Edit Source": makes or changes one source, with its citation as it is typed. Accepted once the source is saved.
class CEditSourceDlg : public SourceDialog {
    Q_OBJECT

public:
    CEditSourceDlg(SourceEditor& editor, const SourceWindows& windows, QWidget* parent);

    CSourcePreviewWnd* Preview() const { return preview_; }
    SourceAuthorsPane* Authors() const { return authors_; }
    void reject() override;

private:
    void MakeLayout();
    QWidget* MakeStyle();
    QWidget* MakeMain();
    QWidget* MakeGeneral();
    void FillTypes();
    void TypeChosen(int line);
    void StyleChosen(int line);
    void EditTypes();
    /// The labels and fields of the type that the source has now.
    void ShowType();
    void ShowPreview();
    void Save();

    SourceEditor& editor_;
    QComboBox *type_ = nullptr, *style_ = nullptr, *publication_ = nullptr;
    QLineEdit* title_ = nullptr;
    QLabel* publicationLabel_ = nullptr;
    QSpinBox *indent_ = nullptr, *etAl_ = nullptr;
    SourceDateField* date_ = nullptr;
    SourceAuthorsPane* authors_ = nullptr;
    SourceFieldsPane* fields_ = nullptr;
    CSourcePreviewWnd* preview_ = nullptr;
};

}  // namespace lore
