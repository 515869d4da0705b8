#pragma once

#include <QList>

#include "sources/source_editor.h"
#include "ui/controls/panel_section.h"

class QGridLayout;
class QLabel;
class QLineEdit;
class QTableWidget;

namespace lore {

/// "Other Fields": the further fields of a standard type, or the grid of a user-defined one.
class SourceFieldsPane : public PanelSection {
    Q_OBJECT

public:
    SourceFieldsPane(SourceEditor& editor, const Theme& theme, QWidget* parent);

    /// The fields of the type that the source has now.
    void Fill();

signals:
    void Changed();

private:
    void FillFields();
    void FillGrid();
    void Restyle();

    SourceEditor& editor_;
    const Theme& theme_;
    QGridLayout* places_ = nullptr;
    QWidget* standard_ = nullptr;
    QTableWidget* grid_ = nullptr;
    QLabel* none_ = nullptr;
    QList<QLabel*> labels_;
    QList<QLineEdit*> fields_;
};

}  // namespace lore
