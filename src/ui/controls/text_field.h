#pragma once

#include <QLineEdit>

#include "base/record_file.h"

namespace lore {

/// A field takes 32,767 characters by itself, and would cut a longer stored text without a word.
inline void TakeLongText(QLineEdit& field) {
    field.setMaxLength(static_cast<int>(kMaxStringLength));
}

/// A field for a line of text, as long as a record may hold.
inline QLineEdit* NewTextField(QWidget* parent, const QString& text = QString()) {
    auto* const field = new QLineEdit(parent);
    TakeLongText(*field);
    field->setText(text);
    return field;
}

}  // namespace lore
