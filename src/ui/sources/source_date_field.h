#pragma once

#include <QWidget>

#include "sources/source_editor.h"

class QCheckBox;
class QDateEdit;
class QLineEdit;

namespace lore {

/// The date of a source: a picker with a box to tick, or a text typed by hand in its place.
class SourceDateField : public QWidget {
    Q_OBJECT

public:
    SourceDateField(SourceEditor& editor, QWidget* parent);

    /// The boxes as the source has them now.
    void Fill();

signals:
    void Changed();

private:
    void TakeDate();
    void ShowFormat();

    SourceEditor& editor_;
    QCheckBox *has_, *yearOnly_, *manual_;
    QDateEdit* picker_;
    QLineEdit* text_;
};

}  // namespace lore
