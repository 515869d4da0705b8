#pragma once

#include <QDialog>
#include <optional>

#include "bibliography/author_list.h"
#include "bibliography/source_list.h"

class QDialogButtonBox;
class QListWidget;

namespace lore {

class Theme;

/// The sources of the NoteBook by their citations, with a filter, to choose one.
class SourcePicker : public QDialog {
    Q_OBJECT

public:
    SourcePicker(const SourceList& sources, const AuthorList& authors, const Theme& theme, QWidget* parent = nullptr);

    /// Nothing unless the dialog was accepted with a row.
    std::optional<int32_t> Chosen() const;
    QListWidget* List() const { return list_; }

private:
    void ApplyFilter(const QString& text);

    QListWidget* list_;
};

}  // namespace lore
