#pragma once

#include <QBasicTimer>
#include <QWidget>
#include <array>
#include <functional>
#include <optional>

#include "app/lorebinder_app.h"
#include "notes/filter_panels.h"

class QStackedWidget;
class QToolButton;

namespace lore {

class PanelPage;
class Theme;

/// What a change can make stale in the panels; entries come with their counts.
enum class PanelPart { Counts, Entries };

/// The bar left of the board with the four filter panels on tabs.
class ControlBar : public QWidget {
    Q_OBJECT

public:
    ControlBar(const Theme& theme, QWidget* parent = nullptr);

    // A panel out of sight costs nothing: it is made anew when it comes in sight. The application outlives the bar.

    /// Makes the entries of all panels anew: another NoteBook is open, or its notes have changed.
    void Rebuild(const CLorebinderApp& app);
    /// Makes the entries anew, or counts anew for another list, at the next turn of the event loop: what the user waits
    /// for is painted first.
    void UpdateSoon(const CLorebinderApp& app, PanelPart part);
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

protected:
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void UpdateInSight();
    void AddTab(int page, QWidget* row);

    const Theme& theme_;
    std::array<QToolButton*, 4> tabs_{};
    std::array<PanelPage*, 4> pages_{};
    QStackedWidget* stack_;
    const CLorebinderApp* app_ = nullptr;
    QBasicTimer due_;
    std::array<std::optional<PanelPart>, 4> stale_;  ///< of each panel
};

}  // namespace lore
