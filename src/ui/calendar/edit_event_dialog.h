#pragma once

#include "calendar/event_editor.h"
#include "ui/calendar/calendar_host.h"
#include "ui/controls/dialog_frame.h"

class QCheckBox;
class QComboBox;
class QDateEdit;
class QFormLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QTimeEdit;

namespace lore {

class RecurrenceTabs;

/// The event editor. Accepted once the event is saved, or its change taken back at the question of a series; it stays
/// open with everything in it when the save is refused or fails.
class EditEventDialog : public DialogFrame {
    Q_OBJECT

public:
    EditEventDialog(CalendarHost& host, EventEditor model, QWidget* parent);

    /// Asks first where something would be lost.
    void reject() override;

private:
    QWidget* MakeFields();
    QWidget* MakeReminders();
    QWidget* MakeRecurrence();
    QWidget* MakeSeriesTexts();
    void AddMoment(QFormLayout* form, const QString& label, QDateEdit*& date, QTimeEdit*& time, const QString& name);
    void Connect();
    void ConnectTimes();
    void ShowTimes();
    void ShowRecurrence();
    void ShowReminders();
    void AddReminder();
    void EditReminder();
    void AskFor(const CTmReminder& reminder, bool isNew);
    void RemoveReminder();
    void Save();

    CalendarHost& host_;
    EventEditor model_;
    QDateEdit *startDate_ = nullptr, *endDate_ = nullptr, *firstDay_ = nullptr, *lastDay_ = nullptr;
    QTimeEdit *startTime_ = nullptr, *endTime_ = nullptr;
    QCheckBox *allDay_ = nullptr, *recurring_ = nullptr;
    QComboBox* color_ = nullptr;
    QLineEdit* label_ = nullptr;
    QPlainTextEdit* description_ = nullptr;
    QListWidget* reminders_ = nullptr;
    QPushButton *edit_ = nullptr, *remove_ = nullptr;
    QWidget* series_ = nullptr;
    RecurrenceTabs* tabs_ = nullptr;
    QLabel *summary_ = nullptr, *outcome_ = nullptr;
};

/// Runs the event editor on an event of the file. True if anything may have changed.
bool RunEventEditor(CalendarHost& host, const CTmEvent& event, QWidget* parent);
/// Runs it on a new event that covers some days.
bool RunNewEvent(CalendarHost& host, const std::pair<DateTime, DateTime>& days, QWidget* parent);

}  // namespace lore
