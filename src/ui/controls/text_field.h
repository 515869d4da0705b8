#pragma once

#include <QAction>
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

/// Puts the button that empties a field at its end, with a name for screen readers.
inline void OfferClearing(QLineEdit& field) {
    field.setClearButtonEnabled(true);
    for (QAction* const action : field.findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly))
        if (action->text().isEmpty())
            action->setText(QLineEdit::tr("Clear"));
}

/// Puts a button with an icon and a name in front of a field's text. What it does is for the caller.
inline QAction* AddLeadingIcon(QLineEdit& field, const QIcon& icon, const QString& name) {
    QAction* const action = field.addAction(icon, QLineEdit::LeadingPosition);
    action->setText(name);
    return action;
}

}  // namespace lore
