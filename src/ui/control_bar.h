#pragma once

#include <QWidget>
#include <array>
#include <functional>

#include "app/lorebinder_app.h"
#include "notes/filter_panels.h"

class QStackedWidget;
class QToolButton;

namespace lore {

class PanelPage;
class Theme;

/// The bar left of the board with the four filter panels on tabs.
class ControlBar : public QWidget {
    Q_OBJECT

public:
    ControlBar(const Theme& theme, QWidget* parent = nullptr);

    /// Makes the entries of all panels anew: another NoteBook is open, or its notes have changed.
    void Rebuild(const CLorebinderApp& app);
    /// Counts anew: the current list has changed.
    void CountNotes(const LongList& listed);
    /// The NoteBooks that notes can be copied to, in their order.
    void SetOtherNoteBooks(const QStringList& names);
    /// Says whether there is what a command needs besides its notes.
    void SetAvailable(const std::function<bool(PanelNeed)>& isThere);
    void SetPage(int page);
    int Page() const;
    PanelPage* PageAt(PanelKind kind) const { return pages_.at(static_cast<size_t>(kind)); }

signals:
    void CommandRequested(const PanelOrder& order);
    void ChoiceChanged(PanelKind kind, int number);
    void PageChanged(int page);

private:
    void AddTab(int page, QWidget* row);
    void Restyle();

    const Theme& theme_;
    std::array<QToolButton*, 4> tabs_{};
    std::array<PanelPage*, 4> pages_{};
    QStackedWidget* stack_;
};

}  // namespace lore
