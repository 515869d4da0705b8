#include "ui/calendar/task_manager_dialog.h"

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>

#include "calendar/day_reminders.h"
#include "calendar/event_changes.h"
#include "calendar/event_text.h"
#include "ui/calendar/calendar_accessible.h"
#include "ui/calendar/calendar_grid.h"
#include "ui/calendar/edit_day_dialog.h"
#include "ui/calendar/edit_event_dialog.h"
#include "ui/calendar/edit_reminder_dialog.h"
#include "ui/controls/dialog_parts.h"
#include "ui/controls/panel_section.h"
#include "ui/controls/run_when_free.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {

namespace {

constexpr int kMonths = 12;

bool DeleteAnEvent(const CalendarWorld& world, const CTmEvent& event) {
    return IsSeriesMember(event) ? DeleteSingleEvent(world, event) : DeleteEvent(world, event);
}

}  // namespace

TaskManagerDialog::TaskManagerDialog(CLorebinderApp& app, const Theme& theme, QWidget* parent)
    : DialogFrame(tr("Lorebinder Event Calendar"), "TaskManager", app.Store(), parent),
      host_(app, theme, this),
      view_(host_.World()) {
    InstallCalendarAccessibility();
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    // What is made first comes first with Tab.
    Content()->addWidget(MakeHead());
    grid_ = new CalendarGrid(view_, theme, this);
    Content()->addWidget(grid_, 1);
    QPushButton* const create = AddSideButton(tr("&Create Event"));
    create->setObjectName("createEvent");
    QPushButton* const reminder = AddSideButton(tr("Add &Reminder"));
    reminder->setObjectName("addReminder");
    connect(create, &QPushButton::clicked, this, &TaskManagerDialog::CreateEvent);
    connect(reminder, &QPushButton::clicked, this, &TaskManagerDialog::AddReminder);
    connect(AddButton(tr("E&xit")), &QPushButton::clicked, this, &QDialog::reject);
    connect(new QShortcut(QKeySequence::New, this), &QShortcut::activated, this, &TaskManagerDialog::CreateEvent);
    ConnectGrid();
    ShowChoice();
    grid_->setFocus();
}

QWidget* TaskManagerDialog::MakeHead() {
    auto* const head = new QWidget(this);
    auto* const row = MakeInner<QHBoxLayout>(head, kSpace * 2);
    const auto arrow = [&](const char* icon, const QString& name, int months) {
        QToolButton* const button = MakeIconButton(QString::fromLatin1(icon), name, host_.Look(), head);
        button->setFocusPolicy(Qt::TabFocus);  // the mouse leaves the keys to the month
        connect(button, &QToolButton::clicked, this, [this, months] { Turn(months); });
        return button;
    };
    QToolButton* const back = arrow("arrow-left", tr("Previous month (Page Up)"), -1);
    QToolButton* const forth = arrow("arrow-right", tr("Next month (Page Down)"), 1);
    month_ = new QComboBox(head);
    month_->setObjectName("month");
    month_->setAccessibleName(tr("Month"));
    for (int month = 1; month <= kMonths; ++month)
        month_->addItem(QLocale::c().monthName(month));
    month_->setMaxVisibleItems(kMonths);
    year_ = new QSpinBox(head);
    year_->setObjectName("year");
    year_->setAccessibleName(tr("Year"));
    year_->setRange(MonthView::kFirstYear, MonthView::kLastYear);
    year_->setKeyboardTracking(false);
    QLabel* const monthLabel = MakeLabel(tr("&Month:"), month_, head);
    QLabel* const yearLabel = MakeLabel(tr("&Year:"), year_, head);
    QPushButton* const today = MakeButton(tr("&Today"), head);
    today->setObjectName("today");
    for (QWidget* const one : std::initializer_list<QWidget*>{back, forth, monthLabel, month_, yearLabel, year_})
        row->addWidget(one);
    row->addStretch(1);
    row->addWidget(today);
    connect(month_, &QComboBox::activated, this, &TaskManagerDialog::ChooseMonth);
    connect(year_, &QSpinBox::valueChanged, this, &TaskManagerDialog::ChooseMonth);
    connect(today, &QPushButton::clicked, this, [this] {
        view_.SelectToday();
        grid_->Refresh();
        ShowChoice();
        grid_->setFocus();
    });
    return head;
}

void TaskManagerDialog::ConnectGrid() {
    connect(grid_, &CalendarGrid::KeysMoved, this, [this](const QRect& shown) { Reveal(*grid_, shown); });
    connect(grid_, &CalendarGrid::MonthTurned, this, &TaskManagerDialog::ShowChoice);
    // A screen reader presses a day even behind a dialog.
    connect(grid_, &CalendarGrid::DayAsked, this, [this](const auto&... day) {
        const QWidget* const modal = QApplication::activeModalWidget();
        if (IsIdle() && (!modal || modal == this))
            OpenDay(day...);
    });
    connect(grid_, &CalendarGrid::EventAsked, this, &TaskManagerDialog::OpenEvent);
    connect(grid_, &CalendarGrid::MenuAsked, this, &TaskManagerDialog::ShowMenu);
}

void TaskManagerDialog::ShowChoice() {
    const QSignalBlocker noMonth(month_), noYear(year_);
    month_->setCurrentIndex(view_.Grid().Month().Month() - 1);
    year_->setValue(view_.Grid().Month().Year());
}

void TaskManagerDialog::ChooseMonth() {
    view_.ShowMonth(DateTime(year_->value(), month_->currentIndex() + 1, 1));
    grid_->Refresh();
}

void TaskManagerDialog::Turn(int months) {
    view_.TurnMonths(months);
    grid_->Refresh();
    ShowChoice();
}

void TaskManagerDialog::Reload() {
    view_.Reload();
    grid_->Refresh();
}

void TaskManagerDialog::CreateEvent() {
    if (RunNewEvent(host_, view_.SelectedDays(), this))
        Reload();
}

void TaskManagerDialog::AddReminder() {
    if (RunNewReminder(host_, nullptr, this))
        Reload();
}

void TaskManagerDialog::OpenDay(const DateTime& day) {
    EditDayDialog(host_, day, this).exec();
    Reload();
}

void TaskManagerDialog::OpenEvent(size_t event) {
    // A copy: the list changes with the reload.
    const CTmEvent chosen = view_.Events()[event];
    if (RunEventEditor(host_, chosen, this))
        Reload();
}

void TaskManagerDialog::Delete(bool (*remove)(const CalendarWorld&, const CTmEvent&), const CTmEvent& event) {
    host_.BeginFlow();
    if (remove(host_.World(), event))
        Reload();
}

void TaskManagerDialog::AddEventEntries(QMenu& menu, size_t event) {
    const CTmEvent chosen = view_.Events()[event];
    menu.addAction(tr("&Edit Event"), this, [this, event] { OpenEvent(event); });
    menu.addAction(tr("&Delete Event"), this, [this, chosen] { Delete(DeleteAnEvent, chosen); });
    if (!IsSeriesMember(chosen))
        return;
    menu.addSeparator();
    menu.addAction(tr("Delete This and &Following Events in Series"), this,
                   [this, chosen] { Delete(DeleteFollowingEvents, chosen); });
    menu.addAction(tr("Delete Entire &Series"), this, [this, chosen] { Delete(DeleteEntireSeries, chosen); });
}

void TaskManagerDialog::ShowMenu(const QPoint& global, const DateTime& day, const std::vector<size_t>& events) {
    QMenu menu(this);
    if (events.size() == 1)
        AddEventEntries(menu, events.front());
    for (size_t i = 0; events.size() > 1 && i < events.size(); ++i) {
        const QString text = ToQString(BarText(view_.Events()[events[i]])).simplified().replace('&', "&&");
        AddEventEntries(*menu.addMenu(i < 9 ? QStringLiteral("&%1  %2").arg(i + 1).arg(text) : text), events[i]);
    }
    if (!events.empty())
        menu.addSeparator();
    menu.addAction(tr("&View Day"), this, [this, day] { OpenDay(day); })->setShortcut(Qt::Key_Return);
    menu.addAction(tr("&Create Event"), this, &TaskManagerDialog::CreateEvent)->setShortcut(QKeySequence::New);
    menu.exec(global);
}

}  // namespace lore
