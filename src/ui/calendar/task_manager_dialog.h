#pragma once

#include "calendar/month_view.h"
#include "ui/calendar/calendar_host.h"
#include "ui/controls/dialog_frame.h"

class QComboBox;
class QMenu;
class QSpinBox;

namespace lore {

class CalendarGrid;

/// The window "Lorebinder Event Calendar": one month, and the commands of events and reminders.
class TaskManagerDialog : public DialogFrame {
    Q_OBJECT

public:
    TaskManagerDialog(CLorebinderApp& app, const Theme& theme, QWidget* parent);

    CalendarGrid* Grid() const { return grid_; }

private:
    QWidget* MakeHead();
    void ConnectGrid();
    void ShowChoice();
    void ChooseMonth();
    void Turn(int months);
    void Reload();
    void CreateEvent();
    void AddReminder();
    void OpenDay(const DateTime& day);
    void OpenEvent(size_t event);
    void ShowMenu(const QPoint& global, const DateTime& day, const std::vector<size_t>& events);
    void AddEventEntries(QMenu& menu, size_t event);
    void Delete(bool (*remove)(const CalendarWorld&, const CTmEvent&), const CTmEvent& event);

    CalendarHost host_;
    MonthView view_;
    CalendarGrid* grid_ = nullptr;
    QComboBox* month_ = nullptr;
    QSpinBox* year_ = nullptr;
};

}  // namespace lore
