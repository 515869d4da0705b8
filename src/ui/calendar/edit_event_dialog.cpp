#include "ui/calendar/edit_event_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>

#include "base/text.h"
#include "calendar/bar_colors.h"
#include "ui/calendar/date_fields.h"
#include "ui/calendar/edit_reminder_dialog.h"
#include "ui/calendar/recurrence_tabs.h"
#include "ui/controls/dialog_parts.h"
#include "ui/controls/quiet_view.h"
#include "ui/controls/text_field.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/options/option_controls.h"
#include "ui/ports/quit_guard.h"

namespace lore {

namespace {

constexpr int kReminderRows = 4;
constexpr int kSeriesLines = 4;  // of the longest texts of a series

/// A bar in a colour, for the list of colours.
QIcon BarIcon(const QColor& color, int height) {
    QPixmap picture(height * 4, height * 2);
    picture.setDevicePixelRatio(2);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(color);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(QRectF(0, 0, height * 2, height), kSpace, kSpace);
    return QIcon(picture);
}

}  // namespace

EditEventDialog::EditEventDialog(CalendarHost& host, EventEditor model, QWidget* parent)
    : DialogFrame(tr(model.Title()), "EditEvent", host.Store(), parent), host_(host), model_(std::move(model)) {
    auto* const columns = new QHBoxLayout;
    columns->setSpacing(kSpace * 5);
    auto* const right = new QVBoxLayout;
    right->setSpacing(kSpace * 3);
    // What is made first comes first with Tab.
    QWidget* const fields = MakeFields();
    right->addWidget(MakeReminders());
    right->addWidget(MakeRecurrence(), 1);
    columns->addWidget(fields, 1);
    columns->addLayout(right, 1);
    Content()->addLayout(columns, 1);
    QPushButton* const save = AddButton(tr("&Save"));
    save->setObjectName("save");
    SetMainButton(save);
    connect(save, &QPushButton::clicked, this, &EditEventDialog::Save);
    connect(AddButton(tr("&Cancel")), &QPushButton::clicked, this, &QDialog::reject);
    Connect();
    ShowTimes();
    ShowReminders();
    ShowRecurrence();
    label_->setFocus();
}

QWidget* EditEventDialog::MakeFields() {
    auto* const box = new QWidget(this);
    auto* const form = MakeInner<QFormLayout>(box, kSpace * 3, kSpace * 2);
    label_ = NewTextField(box, ToQString(model_.Event().Label));
    label_->setObjectName("label");
    form->addRow(tr("&Label:"), label_);
    AddMoment(form, tr("S&tart:"), startDate_, startTime_, "start");
    AddMoment(form, tr("E&nd:"), endDate_, endTime_, "end");
    allDay_ = new QCheckBox(tr("&All Day"), box);
    allDay_->setObjectName("allDay");
    form->addRow(QString(), allDay_);
    color_ = new QComboBox(box);
    color_->setObjectName("color");
    const int height = color_->fontMetrics().height();
    color_->setIconSize(QSize(height * 2, height));
    for (const BarColor& bar : BarColors())
        color_->addItem(BarIcon(ToQColor(bar.color), height), QString::fromLatin1(bar.name));
    color_->setCurrentIndex(static_cast<int>(&BarColorOf(model_.Event().BarColor) - BarColors().data()));
    form->addRow(tr("Color &Bar:"), color_);
    description_ = new QPlainTextEdit(ToQString(model_.Event().Description), box);
    description_->setObjectName("description");
    description_->setTabChangesFocus(true);
    description_->setMinimumHeight(description_->fontMetrics().height() * 7);
    form->addRow(tr("&Description:"), description_);
    return box;
}

void EditEventDialog::AddMoment(QFormLayout* form, const QString& label, QDateEdit*& date, QTimeEdit*& time,
                                const QString& name) {
    date = MakeDateField(name == "start" ? tr("Day of the start") : tr("Day of the end"), this);
    time = MakeTimeField(name == "start" ? tr("Time of the start") : tr("Time of the end"), this);
    date->setObjectName(name + "Date");
    time->setObjectName(name + "Time");
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    row->addWidget(date, 1);
    row->addWidget(time);
    form->addRow(MakeLabel(label, date, this), row);
}

QWidget* EditEventDialog::MakeReminders() {
    auto* const box = new QWidget(this);
    auto* const rows = MakeInner<QVBoxLayout>(box, kSpace * 2);
    reminders_ = new QuietView<QListWidget>(box);
    reminders_->setObjectName("reminderList");
    reminders_->setAccessibleName(tr("Reminders"));
    reminders_->setFixedHeight(reminders_->fontMetrics().height() * (kReminderRows + 2));
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(kSpace * 2);
    QPushButton* const add = MakeButton(tr("Add &Reminder"), box);
    edit_ = MakeButton(tr("Ed&it Reminder"), box);
    remove_ = MakeButton(tr("Remo&ve Reminder"), box);
    add->setObjectName("addReminder");
    for (QPushButton* const button : {add, edit_, remove_})
        buttons->addWidget(button);
    rows->addWidget(MakeLabel(tr("Re&minders:"), reminders_, box));
    rows->addWidget(reminders_);
    rows->addLayout(buttons);
    connect(add, &QPushButton::clicked, this, &EditEventDialog::AddReminder);
    connect(edit_, &QPushButton::clicked, this, &EditEventDialog::EditReminder);
    connect(remove_, &QPushButton::clicked, this, &EditEventDialog::RemoveReminder);
    connect(reminders_, &QListWidget::itemActivated, this, &EditEventDialog::EditReminder);
    AddListKey(reminders_, QKeySequence::Delete, [this] { RemoveReminder(); });
    return box;
}

QWidget* EditEventDialog::MakeRecurrence() {
    auto* const box = new QWidget(this);
    auto* const rows = MakeInner<QVBoxLayout>(box, kSpace * 2);
    recurring_ = new QCheckBox(tr("Recurring Ev&ent"), box);
    recurring_->setObjectName("recurring");
    series_ = new QWidget(box);
    auto* const parts = MakeInner<QVBoxLayout>(series_, kSpace * 2);
    tabs_ = new RecurrenceTabs(model_, series_);
    firstDay_ = MakeDateField(tr("First day of the series"), series_);
    lastDay_ = MakeDateField(tr("Last day of the series"), series_);
    firstDay_->setObjectName("firstDay");
    lastDay_->setObjectName("lastDay");
    auto* const days = new QFormLayout;
    days->addRow(tr("Recurrence Start:"), firstDay_);
    days->addRow(tr("Recurrence End:"), lastDay_);
    parts->addWidget(tabs_);
    parts->addLayout(days);
    parts->addWidget(MakeSeriesTexts());
    rows->addWidget(recurring_);
    rows->addWidget(series_);
    rows->addStretch(1);
    QSizePolicy kept = series_->sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    series_->setSizePolicy(kept);
    return box;
}

QWidget* EditEventDialog::MakeSeriesTexts() {
    auto* const box = new QWidget(series_);
    auto* const rows = MakeInner<QVBoxLayout>(box, kSpace);
    summary_ = new QLabel(box);
    summary_->setObjectName("summary");
    summary_->setTextFormat(Qt::PlainText);
    summary_->setWordWrap(true);
    outcome_ = MakeRemark({}, host_.Look(), box);
    outcome_->setObjectName("outcome");
    rows->addWidget(summary_);
    rows->addWidget(outcome_);
    rows->addStretch(1);
    box->setMinimumHeight(box->fontMetrics().lineSpacing() * kSeriesLines + kSpace);
    return box;
}

void EditEventDialog::Connect() {
    connect(label_, &QLineEdit::textEdited, this,
            [this](const QString& text) { model_.SetLabel(CleanText(FromQString(text))); });
    connect(description_, &QPlainTextEdit::textChanged, this,
            [this] { model_.SetDescription(CleanText(FromQString(description_->toPlainText()))); });
    connect(color_, &QComboBox::activated, this, [this](int index) { model_.SetBarColor(index + 1); });
    connect(allDay_, &QCheckBox::clicked, this, [this](bool on) {
        model_.SetAllDay(on);
        ShowTimes();
    });
    connect(recurring_, &QCheckBox::clicked, this, [this](bool on) {
        model_.SetRecurring(on);
        ShowRecurrence();
    });
    connect(tabs_, &RecurrenceTabs::Changed, this, &EditEventDialog::ShowRecurrence);
    connect(firstDay_, &QDateEdit::dateChanged, this, [this](const QDate& day) {
        model_.SetRecurrenceStart(FromQDate(day));
        ShowRecurrence();
    });
    connect(lastDay_, &QDateEdit::dateChanged, this, [this](const QDate& day) {
        model_.SetRecurrenceEnd(FromQDate(day));
        ShowRecurrence();
    });
    ConnectTimes();
}

void EditEventDialog::ConnectTimes() {
    const auto startChanged = [this] {
        model_.ChangeStart(FromFields(*startDate_, *startTime_));
        ShowTimes();
        ShowReminders();
    };
    const auto endChanged = [this] {
        model_.ChangeEnd(FromFields(*endDate_, *endTime_));
        ShowTimes();
    };
    connect(startDate_, &QDateEdit::dateChanged, this, startChanged);
    connect(startTime_, &QTimeEdit::timeChanged, this, startChanged);
    connect(endDate_, &QDateEdit::dateChanged, this, endChanged);
    connect(endTime_, &QTimeEdit::timeChanged, this, endChanged);
}

void EditEventDialog::ShowTimes() {
    const QSignalBlocker first(startDate_), second(startTime_), third(endDate_), fourth(endTime_);
    const CTmEvent& event = model_.Event();
    startDate_->setDate(ToQDate(event.Start));
    startTime_->setTime(ToQTime(event.Start));
    endDate_->setDate(ToQDate(event.End));
    endTime_->setTime(ToQTime(event.End));
    allDay_->setChecked(model_.IsAllDay());
    startTime_->setEnabled(!model_.IsAllDay());
    endTime_->setEnabled(!model_.IsAllDay());
    ShowRecurrence();
}

void EditEventDialog::ShowRecurrence() {
    const QSignalBlocker first(firstDay_), last(lastDay_);
    recurring_->setChecked(model_.IsRecurring());
    series_->setVisible(model_.IsRecurring());
    tabs_->Refresh();
    firstDay_->setDate(ToQDate(model_.Event().RecurrenceStart));
    lastDay_->setDate(ToQDate(model_.Event().RecurrenceEnd));
    summary_->setText(ToQString(model_.Summary()));
    outcome_->setText(ToQString(model_.Outcome()));
}

void EditEventDialog::ShowReminders() {
    const int chosen = reminders_->currentRow();  // an edited reminder keeps its place
    reminders_->clear();
    for (const std::string& line : model_.ReminderLines())
        reminders_->addItem(ToQString(line));
    const bool any = model_.Reminders() > 0;
    edit_->setEnabled(any);
    remove_->setEnabled(any);
    if (any)
        reminders_->setCurrentRow(std::clamp(chosen, 0, reminders_->count() - 1));
}

void EditEventDialog::AddReminder() {
    if (const std::optional<CTmReminder> reminder = model_.NewReminder())
        AskFor(*reminder, true);
}

void EditEventDialog::EditReminder() {
    const int row = reminders_->currentRow();
    if (row >= 0 && static_cast<size_t>(row) < model_.Reminders())
        AskFor(model_.Reminder(static_cast<size_t>(row)), false);
}

void EditEventDialog::AskFor(const CTmReminder& reminder, bool isNew) {
    const auto put = [this](const CTmReminder& edited) {
        model_.PutReminder(edited);
        return true;
    };
    EditReminderDialog(host_, ReminderEditor(host_.World(), reminder, ReminderEditor::Purpose::Event, isNew), put, this)
        .exec();
    ShowReminders();
}

void EditEventDialog::RemoveReminder() {
    const int row = reminders_->currentRow();
    if (row >= 0)
        model_.RemoveReminder(static_cast<size_t>(row));
    ShowReminders();
}

void EditEventDialog::Save() {
    const auto save = [this] {
        host_.BeginFlow();
        const EventSave result = model_.Save();
        return result == EventSave::Saved || result == EventSave::Cancelled;
    };
    AcceptAfter(save, host_.Look());
}

void EditEventDialog::reject() {
    if (MayClose(*this, host_.World().prompts, model_.HasChanged(), "this event", [this] { Save(); }))
        DialogFrame::reject();
}

bool RunEventEditor(CalendarHost& host, const CTmEvent& event, QWidget* parent) {
    return EditEventDialog(host, EventEditor::ForEvent(host.World(), event), parent).exec() == QDialog::Accepted;
}

bool RunNewEvent(CalendarHost& host, const std::pair<DateTime, DateTime>& days, QWidget* parent) {
    return EditEventDialog(host, EventEditor::ForNewEvent(host.World(), days), parent).exec() == QDialog::Accepted;
}

}  // namespace lore
