#include "ui/calendar/edit_reminder_dialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTextCursor>
#include <algorithm>

#include "base/text.h"
#include "calendar/date_arithmetic.h"
#include "calendar/day_reminders.h"
#include "calendar/reminder_address.h"
#include "ui/calendar/date_fields.h"
#include "ui/controls/text_field.h"
#include "ui/look/announce.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/ports/quit_guard.h"

namespace lore {

EditReminderDialog::EditReminderDialog(CalendarHost& host, ReminderEditor model, Store store, QWidget* parent)
    : DialogFrame(tr(model.Title()), "EditReminder", host.Store(), parent),
      host_(host),
      model_(std::move(model)),
      store_(std::move(store)) {
    MakeFields();
    test_ = AddSideButton(tr("Send Test &Message"));
    test_->setObjectName("test");
    QPushButton* const save = AddButton(tr("&Save"));
    save->setObjectName("save");
    QPushButton* const cancel = AddButton(tr("&Cancel"));
    connect(save, &QPushButton::clicked, this, &EditReminderDialog::Save);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    Connect();
    ShowType();
    ShowTime();
    SetMainButton(save);
    if (model_.IsLocked()) {
        Lock();
        save->setEnabled(false);
        cancel->setFocus();
    }
}

void EditReminderDialog::Lock() {
    for (QWidget* const field :
         std::initializer_list<QWidget*>{type_, prior_, date_, time_, provider_, address_, test_})
        field->setEnabled(false);
    message_->setReadOnly(true);
}

void EditReminderDialog::MakeFields() {
    form_ = new QFormLayout;
    form_->setHorizontalSpacing(kSpace * 3);
    form_->setVerticalSpacing(kSpace * 2);
    type_ = new QComboBox(this);
    type_->setObjectName("type");
    type_->addItems({"POPUP", "EMAIL", "TEXT MSG"});
    form_->addRow(tr("&Type:"), type_);
    if (const std::string start = model_.EventStartText(); !start.empty())
        form_->addRow(tr("Event Start:"), new QLabel(ToQString(start), this));
    MakeTimes(form_);
    MakeAddress(form_);
    message_ = new QPlainTextEdit(this);
    message_->setObjectName("message");
    message_->setTabChangesFocus(true);
    message_->setPlainText(ToQString(model_.Message()));
    message_->setMinimumHeight(message_->fontMetrics().height() * 5);
    messageLabel_ = new QLabel(this);
    messageLabel_->setBuddy(message_);
    left_ = new QLabel(this);
    left_->setObjectName("left");
    Content()->addLayout(form_);
    Content()->addWidget(messageLabel_);
    Content()->addWidget(message_, 1);
    Content()->addWidget(left_);
}

void EditReminderDialog::MakeTimes(QFormLayout* form) {
    prior_ = new QComboBox(this);
    prior_->setObjectName("prior");
    for (const PriorTime& prior : model_.PriorTimes())
        prior_->addItem(QString::fromLatin1(prior.text));
    form->addRow(tr("&Prior to Event:"), prior_);
    form->setRowVisible(prior_, !model_.PriorTimes().empty());
    sendLine_ = new QLabel(this);
    date_ = MakeDateField(tr("Day of sending"), this);
    date_->setMaximumDate(ToQDate(ReminderEditor::LatestSendDay()));
    if (!model_.IsLocked())
        date_->setMinimumDate(ToQDate(host_.World().clock.Now()));
    time_ = MakeTimeField(tr("Time of sending"), this);
    sendLine_->setBuddy(date_);
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    row->addWidget(date_);
    row->addWidget(time_);
    row->addStretch(1);
    form->addRow(sendLine_, row);
    bounds_ = new QLabel(this);
    bounds_->setObjectName("bounds");
    bounds_->setWordWrap(true);
    form->addRow(QString(), bounds_);
    form->setRowVisible(bounds_, !model_.IsLocked());
    ShowBounds(false);
    when_ = new QLabel(this);
    sendTime_ = new QLabel(this);
    sendTime_->setObjectName("sendTime");
    form->addRow(when_, sendTime_);
    if (*model_.DayLabel() == '\0')
        return;
    const bool ofDay = model_.DayLabel() == std::string_view("Selected Day:");
    const DateTime shown = ofDay ? model_.SendTime() : model_.EarliestSendTime();
    form->addRow(tr(model_.DayLabel()),
                 new QLabel(ToQString(shown.Format(ofDay ? "%A, %B %d %Y" : "%m/%d/%y  %I:%M%p")), this));
}

void EditReminderDialog::MakeAddress(QFormLayout* form) {
    provider_ = new QComboBox(this);
    provider_->setObjectName("provider");
    for (const Provider& provider : Providers())
        provider_->addItem(QString::fromLatin1(provider.name));
    provider_->setPlaceholderText(tr("Choose one"));
    provider_->setCurrentIndex(model_.Provider());
    form->addRow(tr("Service Pro&vider:"), provider_);
    address_ = NewTextField(this);
    address_->setObjectName("address");
    form->addRow(tr("Email &Address:"), address_);
}

void EditReminderDialog::Connect() {
    connect(type_, &QComboBox::activated, this, [this](int type) {
        TakeFields();
        model_.SetType(static_cast<ReminderType>(type));
        ShowType();
    });
    connect(prior_, &QComboBox::activated, this, [this](int row) {
        model_.ChoosePrior(static_cast<size_t>(row));
        ShowTime();
        ShowBounds(false);
    });
    connect(date_, &QDateEdit::dateChanged, this, &EditReminderDialog::TakeTime);
    connect(time_, &QTimeEdit::timeChanged, this, &EditReminderDialog::TakeTime);
    connect(provider_, &QComboBox::activated, this, [this](int row) { model_.SetProvider(row); });
    connect(message_, &QPlainTextEdit::textChanged, this, &EditReminderDialog::TakeMessage);
    connect(test_, &QPushButton::clicked, this, [this] {
        TakeFields();
        model_.SendTestMessage();
    });
}

/// How much of the message has no room.
qsizetype EditReminderDialog::SetMessage() {
    const QString typed = message_->toPlainText();
    model_.SetMessage(CleanText(FromQString(typed)));
    return typed.size() - ToQString(model_.Message()).size();
}

void EditReminderDialog::TakeMessage() {
    if (const qsizetype over = SetMessage(); over > 0) {
        const QSignalBlocker quiet(message_);
        // What came in last stands before the caret, and goes again.
        QTextCursor last = message_->textCursor();
        last.setPosition(static_cast<int>(std::max<qsizetype>(0, last.position() - over)), QTextCursor::KeepAnchor);
        last.removeSelectedText();
        if (SetMessage() > 0)
            message_->setPlainText(ToQString(model_.Message()));
    }
    left_->setText(tr("%1 of %2 characters").arg(CharacterCount(model_.Message())).arg(model_.MessageLimit()));
}

void EditReminderDialog::ShowType() {
    const ReminderLabels& labels = model_.Labels();
    type_->setCurrentIndex(static_cast<int>(model_.Type()));
    when_->setText(tr(labels.when));
    sendLine_->setText(tr(labels.sendLine));
    messageLabel_->setText(tr(labels.messageGroup));
    message_->setAccessibleName(tr(labels.messageGroup));
    form_->setRowVisible(address_, *labels.address != '\0');
    if (auto* const label = qobject_cast<QLabel*>(form_->labelForField(address_)))
        label->setText(model_.Type() == ReminderType::Email ? tr("Email &Address:") : tr("Mobile Phone &#:"));
    address_->setPlaceholderText(tr(labels.hint));
    address_->setAccessibleName(tr(labels.address));
    address_->setText(ToQString(model_.Address()));
    form_->setRowVisible(provider_, model_.Type() == ReminderType::TextMessage);
    test_->setVisible(model_.Type() != ReminderType::Popup);
    const QSignalBlocker quiet(message_);
    message_->setPlainText(ToQString(model_.Message()));
    left_->setText(tr("%1 of %2 characters").arg(CharacterCount(model_.Message())).arg(model_.MessageLimit()));
}

void EditReminderDialog::ShowTime() {
    const QSignalBlocker noDate(date_), noTime(time_);
    date_->setDate(ToQDate(model_.SendTime()));
    time_->setTime(ToQTime(model_.SendTime()));
    prior_->setCurrentIndex(static_cast<int>(model_.ChosenPrior()));
    sendTime_->setText(ToQString(model_.SendTimeText()));
}

void EditReminderDialog::TakeTime() {
    const bool isTooEarly = !model_.ChangeSendTime(FromFields(*date_, *time_));
    ShowTime();
    ShowBounds(isTooEarly);
    if (isTooEarly)
        Announce(*bounds_, bounds_->text());
}

void EditReminderDialog::ShowBounds(bool wasTooEarly) {
    const QString text = wasTooEarly ? tr("That was too early: %1 is the earliest, an hour from now").arg(time_->text())
                                     : tr("An hour from now at the earliest, in steps of ten minutes");
    bounds_->setText(text);
    for (QWidget* const field : std::initializer_list<QWidget*>{date_, time_})
        field->setAccessibleDescription(text);
}

void EditReminderDialog::TakeFields() {
    model_.SetAddress(CleanText(FromQString(address_->text().trimmed())));
}

void EditReminderDialog::Save() {
    const auto save = [this] {
        TakeFields();
        return model_.Save() && store_(model_.Reminder());
    };
    AcceptAfter(save, host_.Look());
}

void EditReminderDialog::reject() {
    TakeFields();
    if (MayClose(*this, host_.World().prompts, model_.HasChanged(), "this reminder", [this] { Save(); }))
        DialogFrame::reject();
}

namespace {

bool Run(CalendarHost& host, const ReminderEditor& model, bool (*save)(const CalendarWorld&, CTmReminder),
         QWidget* parent) {
    const auto store = [&host, save](const CTmReminder& reminder) {
        host.BeginFlow();
        return save(host.World(), reminder);
    };
    return EditReminderDialog(host, model, store, parent).exec() == QDialog::Accepted;
}

}  // namespace

bool RunNewReminder(CalendarHost& host, const DateTime* day, QWidget* parent) {
    const CalendarWorld& world = host.World();
    CTmReminder reminder = NewReminder(world.Context());
    reminder.SendTime = FirstSendTime(world.clock.Now(), day);
    const auto purpose = day ? ReminderEditor::Purpose::Day : ReminderEditor::Purpose::Calendar;
    return Run(host, ReminderEditor(world, reminder, purpose, true), SaveNewReminder, parent);
}

bool RunReminderEditor(CalendarHost& host, const CTmReminder& reminder, QWidget* parent) {
    const auto purpose = reminder.EventId.empty() ? ReminderEditor::Purpose::Day : ReminderEditor::Purpose::Event;
    return Run(host, ReminderEditor(host.World(), reminder, purpose, false), SaveChangedReminder, parent);
}

}  // namespace lore
