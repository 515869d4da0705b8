#include "ui/calendar/edit_day_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTreeWidget>
#include <algorithm>
#include <functional>

#include "calendar/bar_colors.h"
#include "calendar/day_reminders.h"
#include "calendar/event_changes.h"
#include "calendar/event_text.h"
#include "calendar/reminder_text.h"
#include "ui/calendar/edit_event_dialog.h"
#include "ui/calendar/edit_reminder_dialog.h"
#include "ui/calendar/event_tool_tip.h"
#include "ui/controls/dialog_parts.h"
#include "ui/controls/fault_bar.h"
#include "ui/controls/list_columns.h"
#include "ui/controls/quiet_view.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {

namespace {

constexpr int kChars = 84, kLines = 36;  // at first
constexpr int kLeastChars = 40, kLeastRows = 4;
constexpr int kIdRole = Qt::UserRole;  // of the first cell: the id of the event or reminder

/// The chosen row as a position in its list, -1 for none.
int ChosenRow(const QTreeWidget* list) {
    return list->indexOfTopLevelItem(list->currentItem());
}

/// Fills a list anew. What was chosen stays chosen wherever it stands now, so that the next key doesn't meet another
/// row; where it is gone, its place is chosen.
void Refill(QTreeWidget* list, const std::function<void()>& fill) {
    const int place = std::max(ChosenRow(list), 0);
    const QTreeWidgetItem* const chosen = list->currentItem();
    const QVariant id = chosen ? chosen->data(0, kIdRole) : QVariant();
    list->clear();
    fill();
    int row = std::min(place, list->topLevelItemCount() - 1);
    for (int i = 0; id.isValid() && i < list->topLevelItemCount(); ++i) {
        if (list->topLevelItem(i)->data(0, kIdRole) == id)
            row = i;
    }
    list->setCurrentItem(list->topLevelItem(row));
}

/// A square in a colour, which the ground of a chosen row doesn't tint.
QIcon Swatch(const QColor& color, int side) {
    QPixmap square(side, side);
    square.fill(color);
    QIcon swatch(square);
    swatch.addPixmap(square, QIcon::Selected);
    return swatch;
}

}  // namespace

EditDayDialog::EditDayDialog(CalendarHost& host, const DateTime& day, QWidget* parent)
    : DialogFrame(tr("Edit Day"), "EditDay", host.Store(), parent), host_(host), day_(host.World(), day) {
    auto* const head = new QLabel(ToQString(day_.Title()), this);
    head->setObjectName("head");
    head->setFont(host.Look().Font(TextSize::Title));
    Content()->addWidget(head);
    events_ = MakeSection({QT_TR_NOOP("E&vents"),
                           "events",
                           {tr("Start"), tr("End"), tr("Event Label")},
                           tr("&Create Event"),
                           tr("&Edit Event"),
                           tr("&Remove Event"),
                           &EditDayDialog::CreateEvent,
                           &EditDayDialog::EditEvent,
                           &EditDayDialog::RemoveEvent});
    reminders_ = MakeSection({QT_TR_NOOP("Re&minders"),
                              "reminders",
                              {tr("        Time"), tr("Type"), tr("Sent To")},
                              tr("Crea&te Reminder"),
                              tr("E&dit Reminder"),
                              tr("Rem&ove Reminder"),
                              &EditDayDialog::CreateReminder,
                              &EditDayDialog::EditReminder,
                              &EditDayDialog::RemoveReminder});
    eventColumns_ = new ListColumns(*events_, host.Store(), "EditDayEventColumns");
    reminderColumns_ = new ListColumns(*reminders_, host.Store(), "EditDayReminderColumns");
    QPushButton* const exit = AddButton(tr("E&xit"));
    connect(exit, &QPushButton::clicked, this, &QDialog::accept);
    Reload();
    resize(fontMetrics().averageCharWidth() * kChars, fontMetrics().height() * kLines);
    events_->setFocus();
}

QTreeWidget* EditDayDialog::MakeSection(const Section& section) {
    auto* const list = new QuietView<QTreeWidget>(this);
    list->setObjectName(QString::fromLatin1(section.name));
    list->setAccessibleName(tr(section.title).remove('&'));
    list->setHeaderLabels(section.columns);
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAllColumnsShowFocus(true);
    list->setMinimumHeight(list->fontMetrics().height() * kLeastRows);
    list->setMinimumWidth(list->fontMetrics().averageCharWidth() * kLeastChars);
    list->setContextMenuPolicy(Qt::CustomContextMenu);
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(kSpace * 2);
    std::array<QPushButton*, 3> made{};
    const std::array texts = {section.create, section.edit, section.remove};
    const std::array commands = {section.onCreate, section.onEdit, section.onRemove};
    for (size_t i = 0; i < made.size(); ++i) {
        made[i] = MakeButton(texts[i], this);
        buttons->addWidget(made[i]);
        connect(made[i], &QPushButton::clicked, this, commands[i]);
    }
    buttons->addStretch(1);
    const auto enable = [list, made] {
        made[1]->setEnabled(ChosenRow(list) >= 0);
        made[2]->setEnabled(ChosenRow(list) >= 0);
    };
    enable();
    connect(list, &QTreeWidget::currentItemChanged, this, enable);
    connect(list, &QTreeWidget::itemActivated, this, section.onEdit);
    AddListKey(list, QKeySequence::Delete, [this, remove = section.onRemove] { (this->*remove)(); });
    connect(list, &QTreeWidget::customContextMenuRequested, this, [this, list, section](const QPoint& point) {
        if (ChosenRow(list) < 0)
            return;
        QMenu menu(this);
        menu.addAction(section.edit, this, section.onEdit);
        menu.addAction(section.remove, this, section.onRemove);
        menu.exec(list->viewport()->mapToGlobal(point));
    });
    Content()->addWidget(MakeLabel(tr(section.title), list, this));
    Content()->addWidget(list, 1);
    Content()->addLayout(buttons);
    return list;
}

void EditDayDialog::Reload() {
    day_.Reload();
    Refill(events_, [this] { FillEvents(); });
    Refill(reminders_, [this] { FillReminders(); });
}

void EditDayDialog::FillEvents() {
    const int side = events_->fontMetrics().height() * 3 / 4;
    for (const CTmEvent& event : day_.Events()) {
        auto* const row = new QTreeWidgetItem(events_, {ToQString(day_.StartOf(event)), ToQString(day_.EndOf(event)),
                                                        ToQString(event.Label).simplified()});
        row->setData(0, kIdRole, ToQString(event.EventId));
        const BarColor& color = BarColorOf(event.BarColor);
        row->setIcon(2, Swatch(ToQColor(color.color), side));
        row->setData(2, Qt::AccessibleDescriptionRole, QString::fromLatin1(color.name));
        row->setToolTip(2, EventToolTip(event));
    }
    eventColumns_->Fit();
}

void EditDayDialog::FillReminders() {
    for (const CTmReminder& reminder : day_.Reminders()) {
        auto* const row = new QTreeWidgetItem(
            reminders_,
            {ToQString(ClockTime(reminder.SendTime)), ReminderListName(reminder.Type), ToQString(SentTo(reminder))});
        row->setData(0, kIdRole, ToQString(reminder.ReminderId));
    }
    reminderColumns_->Fit();
}

void EditDayDialog::CreateEvent() {
    if (RunNewEvent(host_, {day_.Day(), day_.Day()}, this))
        Reload();
}

void EditDayDialog::EditEvent() {
    const int row = ChosenRow(events_);
    if (row >= 0 && RunEventEditor(host_, day_.Events()[static_cast<size_t>(row)], this))
        Reload();
}

void EditDayDialog::RemoveEvent() {
    const int row = ChosenRow(events_);
    if (row < 0)
        return;
    Remove([this, event = day_.Events()[static_cast<size_t>(row)]] {
        return IsSeriesMember(event) ? DeleteSingleEvent(host_.World(), event) : DeleteEvent(host_.World(), event);
    });
}

void EditDayDialog::CreateReminder() {
    if (RunNewReminder(host_, &day_.Day(), this))
        Reload();
}

void EditDayDialog::EditReminder() {
    const int row = ChosenRow(reminders_);
    if (row >= 0 && RunReminderEditor(host_, day_.Reminders()[static_cast<size_t>(row)], this))
        Reload();
}

void EditDayDialog::RemoveReminder() {
    const int row = ChosenRow(reminders_);
    if (row < 0)
        return;
    Remove([this, reminder = day_.Reminders()[static_cast<size_t>(row)]] {
        return DeleteReminder(host_.World(), reminder);
    });
}

/// What is removed was chosen before: when it is tried again another row may be.
void EditDayDialog::Remove(const std::function<bool()>& remove) {
    Faults(host_.Look()).Run([this, remove] {
        host_.BeginFlow();
        const bool isGone = remove();
        if (isGone)
            Reload();
        return isGone;
    });
}

}  // namespace lore
