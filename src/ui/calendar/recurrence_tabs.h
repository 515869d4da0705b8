#pragma once

#include <QTabWidget>
#include <functional>
#include <vector>

#include "calendar/event_editor.h"

class QHBoxLayout;

namespace lore {

/// The four tabs of a series: each control stands for a slot of the pattern in the editor's model.
class RecurrenceTabs : public QTabWidget {
    Q_OBJECT

public:
    RecurrenceTabs(EventEditor& model, QWidget* parent);
    /// Shows what the model holds.
    void Refresh();

signals:
    /// The model has taken a change.
    void Changed();

private:
    QWidget* MakeDaily();
    QWidget* MakeWeekly();
    QWidget* MakeMonthly();
    QWidget* MakeYearly();
    /// A row of a page: a radio button for one of its forms.
    QHBoxLayout* AddForm(QWidget* page, SeriesType tab, bool first, const QString& text, const char* name);
    void AddNumber(QHBoxLayout* row, SeriesType tab, size_t slot, const QString& name);
    void AddChoice(QHBoxLayout* row, SeriesType tab, size_t slot, const QString& name, const QStringList& texts);
    void AddText(QHBoxLayout* row, const QString& text);
    void Apply(const std::function<void()>& change);

    EventEditor& model_;
    std::vector<std::pair<SeriesType, std::function<void()>>> shows_;  // bring a control to what the model holds
};

}  // namespace lore
