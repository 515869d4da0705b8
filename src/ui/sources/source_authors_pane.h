#pragma once

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

    /// Repeats the last step that stored an author.
    void TryAgain();

signals:
    /// An author is going to be stored or deleted.
    void Tries();
    /// The citation may be another one now.
    void Changed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MakeLists(const Theme& theme);
    void MakeNames();
    void ConnectLists();
    void Begin(void (SourceAuthorsPane::*step)());
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
    void (SourceAuthorsPane::*lastStep_)() = nullptr;
    QListWidget *available_ = nullptr, *taken_ = nullptr;
    QLineEdit *first_ = nullptr, *middle_ = nullptr, *last_ = nullptr;
    QPushButton *update_ = nullptr, *delete_ = nullptr;
};

}  // namespace lore
