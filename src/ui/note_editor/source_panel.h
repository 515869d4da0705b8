#pragma once

#include <QList>
#include <QWidget>
#include <functional>
#include <optional>

#include "edit/source_rows.h"

class QLabel;
class QScrollArea;
class QToolButton;
class QVBoxLayout;

namespace lore {

class SourceRowView;
class Theme;

/// The windows that the panel opens. Whatever is done there, the sources of the NoteBook may be other ones afterwards.
struct SourcePanelWindows {
    /// Lets the user choose one source of the NoteBook; nothing if that is cancelled.
    std::function<std::optional<int32_t>(QWidget* parent)> choose;
    /// Lets the user edit a source.
    std::function<void(int32_t sourceId, QWidget* parent)> edit;
};

/// The sources of the note: a row with the citation for each, and under it the line for what the note alone says.
class SourcePanel : public QWidget {
    Q_OBJECT

public:
    SourcePanel(SourceRows& rows, SourcePanelWindows windows, const Theme& theme, QWidget* parent = nullptr);

    /// Shows the rows as they are now.
    void Rebuild();
    void AddSource();
    void EditSource();
    void RemoveSource();
    void ClearSources();
    int Count() const { return static_cast<int>(views_.size()); }
    SourceRowView* RowAt(int row) const { return views_[row]; }

signals:
    void Changed();

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void MakeButtons(QVBoxLayout& layout);
    void Select(int row);
    void OpenMenu(const QPoint& at, int row);
    void ShowRow(std::optional<size_t> row);

    SourceRows& rows_;
    SourcePanelWindows windows_;
    const Theme& theme_;
    QScrollArea* scroll_;
    QVBoxLayout* list_;
    QLabel* empty_;
    QToolButton *add_ = nullptr, *remove_ = nullptr, *clear_ = nullptr;
    QList<SourceRowView*> views_;
};

}  // namespace lore
