#pragma once

#include <functional>

#include "sources/source_authors.h"
#include "ui/controls/panel_section.h"

class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace lore {

/// "Set Authors": the authors that a source could have, those that it has in their order, and the parts of a name.
class SourceAuthorsPane : public PanelSection {
    Q_OBJECT

public:
    SourceAuthorsPane(SourceAuthors& authors, const Theme& theme, QWidget* parent);

    /// Both lists as they are now.
    void Fill();

    /// Whether a name stands in the fields that hasn't become an author.
    bool HasTypedName() const;

signals:
    /// An author is to be stored or deleted by a command that says whether it was done.
    void Tries(const std::function<bool()>& command);
    /// The citation may be another one now.
    void Changed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MakeLists(const Theme& theme);
    void MakeNames();
    void ConnectLists();
    int32_t SelectedAvailable() const;
    void SelectAvailable(int32_t id);
    CAuthor TypedName() const;
    void ShowName();
    void AddNew();
    void Update();
    void Delete();
    void Append();
    void Remove();
    void Reordered();

    SourceAuthors& authors_;
    QListWidget *available_ = nullptr, *taken_ = nullptr;
    QLineEdit *first_ = nullptr, *middle_ = nullptr, *last_ = nullptr;
    QPushButton *update_ = nullptr, *delete_ = nullptr;
};

}  // namespace lore
