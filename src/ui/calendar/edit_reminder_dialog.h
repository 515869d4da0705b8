#pragma once

#include <functional>

#include "calendar/reminder_editor.h"
#include "ui/calendar/calendar_host.h"
#include "ui/controls/dialog_frame.h"

class QComboBox;
class QDateEdit;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QTimeEdit;

namespace lore {

/// The reminder editor. Accepted once the reminder is stored; it stays open with everything in it when the server
/// doesn't take it or the write fails.
class EditReminderDialog : public DialogFrame {
    Q_OBJECT

public:
    /// Stores a reminder; true if it is stored.
    using Store = std::function<bool(const CTmReminder&)>;

    EditReminderDialog(CalendarHost& host, ReminderEditor model, Store store, QWidget* parent);
    /// Asks first where something would be lost.
    void reject() override;

private:
    void MakeFields();
    void MakeTimes(QFormLayout* form);
    void MakeAddress(QFormLayout* form);
    void Connect();
    void Lock();
    qsizetype SetMessage();
    void TakeMessage();
    void ShowType();
    void ShowTime();
    void TakeTime();
    void ShowBounds(bool wasTooEarly);
    void TakeFields();
    void Save();

    CalendarHost& host_;
    ReminderEditor model_;
    Store store_;
    QFormLayout* form_ = nullptr;
    QComboBox *type_ = nullptr, *prior_ = nullptr, *provider_ = nullptr;
    QDateEdit* date_ = nullptr;
    QTimeEdit* time_ = nullptr;
    QLabel *when_ = nullptr, *sendLine_ = nullptr, *sendTime_ = nullptr, *messageLabel_ = nullptr, *left_ = nullptr;
    QLabel* bounds_ = nullptr;  ///< which times there are, or what became of the one typed
    QLineEdit* address_ = nullptr;
    QPlainTextEdit* message_ = nullptr;
    QPushButton* test_ = nullptr;
};

/// Makes a reminder of a day, or of the calendar where `day` is null. True if it was saved.
bool RunNewReminder(CalendarHost& host, const DateTime* day, QWidget* parent);
/// Edits a reminder of the file. True if it was saved.
bool RunReminderEditor(CalendarHost& host, const CTmReminder& reminder, QWidget* parent);

}  // namespace lore
