#pragma once

#include "edit/category_assignment.h"
#include "ui/controls/dialog_frame.h"

class QWidget;

namespace lore {

class CategoryPanel;
class Theme;

/// The paths that all ticked notes of an import are to get, a tab for each category set.
class ImportCategoriesDialog : public DialogFrame {
    Q_OBJECT

public:
    /// The assignment holds what the user has chosen.
    ImportCategoriesDialog(CategoryAssignment& paths, const Theme& theme, SettingsStore& store, QWidget* parent);

private:
    void ColorBar();

    CategoryPanel* panel_;
    QWidget* bar_;
};

}  // namespace lore
