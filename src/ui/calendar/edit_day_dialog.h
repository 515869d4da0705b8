#pragma once

#include <functional>

#include "calendar/day_view.h"
#include "ui/calendar/calendar_host.h"
#include "ui/controls/dialog_frame.h"

class QTreeWidget;

namespace lore {

class ListColumns;

/// The dialog "Edit Day": the events and reminders of one day.
class EditDayDialog : public DialogFrame {
    Q_OBJECT

public:
    EditDayDialog(CalendarHost& host, const DateTime& day, QWidget* parent);

private:
    /// One of the two lists, with its commands.
    struct Section {
        const char *title, *name;
        QStringList columns;
        QString create, edit, remove;
        void (EditDayDialog::*onCreate)();
        void (EditDayDialog::*onEdit)();
        void (EditDayDialog::*onRemove)();
    };
    QTreeWidget* MakeSection(const Section& section);
    void Reload();
    void FillEvents();
    void FillReminders();
    void CreateEvent();
    void EditEvent();
    void RemoveEvent();
    void CreateReminder();
    void EditReminder();
    void RemoveReminder();
    void Remove(const std::function<bool()>& remove);

    CalendarHost& host_;
    DayView day_;
    QTreeWidget* events_ = nullptr;
    QTreeWidget* reminders_ = nullptr;
    ListColumns *eventColumns_ = nullptr, *reminderColumns_ = nullptr;
};

}  // namespace lore
