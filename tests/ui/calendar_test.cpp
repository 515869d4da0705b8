#include <QTextDocument>
#include <map>
#include <set>

#include "calendar/event_file.h"
#include "calendar/event_text.h"
#include "calendar/reminder_file.h"
#include "calendar/series.h"
#include "ui/calendar/calendar_grid.h"
#include "ui/calendar/edit_day_dialog.h"
#include "ui/calendar/edit_event_dialog.h"
#include "ui/calendar/edit_reminder_dialog.h"
#include "ui/calendar/event_tool_tip.h"
#include "ui/calendar/modify_event_dialog.h"
#include "ui/calendar/task_manager_dialog.h"
#include "ui/look/qt_text.h"
#include "ui/ports/quit_guard.h"
#include "ui/tab_walk.h"
#include "ui/window_rules.h"
#include "ui/window_world.h"

namespace lore {

/// The event calendar as a user drives it, on 14 March 2026.
class CalendarTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    EventList Stored() { return LoadAllEvents(app_->Data().Events(), app_->Context()).value; }
    CTmEvent Made(const std::string& label, const DateTime& start, const DateTime& end, int color, bool allDay) {
        CTmEvent event = NewEvent(app_->Context());
        event.Label = label;
        event.Start = event.RecurrenceStart = event.RecurrenceEnd = start;
        event.End = end;
        event.BarColor = color;
        event.AllDay = allDay ? 1 : 0;
        return event;
    }
    void Put(const EventList& events) { QVERIFY(WriteEvents(app_->Data().Events(), events).Ok()); }
    void PutFullMonth() {
        EventList events;
        const auto day = [](int number, int hour = 0) { return DateTime(2026, 3, number, hour, 0, 0); };
        const auto hour = [&](const std::string& label, int number, int from, int color) {
            events.push_back(Made(label, day(number, from), day(number, from + 1), color, false));
        };
        events.push_back(Made("Conference in Trieste", day(3), day(10).PlusSeconds(86399), 5, true));
        events.push_back(Made("Leave", day(28), DateTime(2026, 4, 9), 3, true));
        hour("\xE4\xBC\x9A\xE8\xAE\xAE \xD7\xA4\xD7\x92\xD7\x99\xD7\xA9\xD7\x94", 18, 9, 11);
        hour("A very long label that doesn't fit into one cell of the month", 20, 14, 7);
        for (int i = 0; i < 7; ++i)
            hour("Lesson", 12, 8 + i, 8 + i);
        for (int i = 1; i <= 20; ++i)
            hour("Colour " + std::to_string(i), i + 5, 7, i);
        Put(events);
    }

    /// Popup reminders with these words, an hour apart on 16 March from 9 on, of a day or of an event.
    void PutReminders(const std::vector<std::string>& messages, const CTmEvent& event = {}) {
        ReminderList reminders;
        for (const std::string& message : messages) {
            CTmReminder& reminder = reminders.emplace_back(NewReminder(app_->Context()));
            reminder.Message = message;
            reminder.SendTime = DateTime(2026, 3, 16, 8 + static_cast<int>(reminders.size()), 0, 0);
            reminder.EventId = event.EventId;
            reminder.EventStart = event.Start;
            reminder.PriorMinutes = -1;
        }
        QVERIFY(WriteReminders(app_->Data().Reminders(), reminders).Ok());
    }
    QStringList StoredReminders() {
        const ReminderList reminders = LoadAllReminders(app_->Data().Reminders(), app_->Context()).value;
        QStringList messages;
        for (const CTmReminder& reminder : reminders)
            messages.append(ToQString(reminder.Message));
        return messages;
    }

    void PutClass() {
        CTmEvent event = Made("Class", DateTime(2026, 3, 16, 9, 0, 0), DateTime(2026, 3, 16, 10, 0, 59), 2, false);
        event.Recurring = 1;
        event.RecurrenceType = kDaily;
        event.DailyPattern = {1, 0, 1};
        event.RecurrenceEnd = DateTime(2026, 3, 19, 9, 0, 0);
        Put(ExpandSeries(event, guids_).records);
    }

    void Open() {
        dialog_ = std::make_unique<TaskManagerDialog>(*app_, theme_, window_.get());
        dialog_->resize(1100, 760);
        dialog_->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog_.get()));
    }

    CalendarGrid* Grid() const { return dialog_->Grid(); }
    void Keys(std::initializer_list<const char*> keys) { PressKeys(Grid(), keys); }
    void DragDays(const QPoint& from, int cell) {
        QTest::mousePress(Grid(), Qt::LeftButton, {}, from);
        QTest::mouseMove(Grid(), Grid()->CellRect(cell).center());
        QTest::mouseRelease(Grid(), Qt::LeftButton, {}, Grid()->CellRect(cell).center());
    }
    void CreateEvent(const std::function<void(EditEventDialog&)>& steps) {
        InNext([this] { In<QPushButton>(*dialog_, "createEvent")->click(); }, steps);
    }
    void EditEvent(size_t index, const std::function<void(EditEventDialog&)>& steps) {
        InNext([=, this] { emit Grid()->EventAsked(index); }, steps);
    }
    /// The events whose bars cross the middle of a cell.
    std::set<size_t> EventsSeenIn(int cell) const {
        const QRect rect = Grid()->CellRect(cell);
        std::set<size_t> seen;
        for (int y = rect.top(); y < rect.bottom(); ++y)
            if (const auto event = Grid()->EventAt(QPoint(rect.center().x(), y)))
                seen.insert(*event);
        return seen;
    }
    /// Runs steps in the menu of a place, and closes it after them.
    void InMenu(QContextMenuEvent::Reason reason, const QPoint& place, const std::function<void(QMenu&)>& steps) {
        bool ran = false;
        QTimer::singleShot(0, this, [&] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            QVERIFY(menu);
            steps(*menu);
            ran = true;
            menu->close();
        });
        OpenMenuAt(*Grid(), place, reason);
        QVERIFY(ran);
    }
    static void Save(const QDialog& editor) { In<QPushButton>(editor, "save")->click(); }

    std::unique_ptr<TaskManagerDialog> dialog_;

private slots:
    void init() {
        Begin();
        OpenWindow(1180, 800);
    }
    void cleanup() {
        dialog_.reset();
        CloseWindow();
    }
    void keyboard_alone_makes_an_event() {
        Open();
        QCOMPARE(QApplication::focusWidget(), Grid());
        Keys({"Right", "Shift+Right"});
        InNext<EditEventDialog>([this] { Keys({"Ctrl+N"}); },
                                [](EditEventDialog& editor) {
                                    QTest::keyClicks(QApplication::focusWidget(), "Trip");
                                    PressKeys(&editor, {"Ctrl+Return"});
                                });
        const EventList events = Stored();
        QCOMPARE(events.size(), 1u);
        QCOMPARE(events[0].Label, std::string("Trip"));
        QVERIFY(events[0].Start == DateTime(2026, 3, 15));
        QVERIFY(events[0].End == DateTime(2026, 3, 16, 23, 59, 59));
        for (int cell = 13; cell <= 16; ++cell)
            QCOMPARE(EventsSeenIn(cell).size(), size_t{cell == 14 || cell == 15});
    }

    void a_refused_save_keeps_the_editor_open() {
        Open();
        CreateEvent([this](EditEventDialog& editor) {
            Retype(In<QLineEdit>(editor, "label"), "Monthly");
            In<QCheckBox>(editor, "recurring")->click();
            In<QTabWidget>(editor, "recurrence")->setCurrentIndex(kMonthly);
            QLabel* const outcome = In<QLabel>(editor, "outcome");
            const QLabel* const summary = In<QLabel>(editor, "summary");
            QCOMPARE(summary->text(), QString("Repeats on day 14 of every month from 03/14/26 to 04/14/26"));
            QCOMPARE(outcome->text(), QString("Ends after 2 events, on 04/14/26"));
            Retype(In<QLineEdit>(editor, "number2_2"), "45");
            QCOMPARE(summary->text(), QString("Repeats on day 45 of every month from 03/14/26 to 04/14/26"));
            QCOMPARE(outcome->text(), QString("No event falls on these days"));
            QCOMPARE(NameOf(*outcome), outcome->text());
            QCOMPARE(outcome->palette().color(QPalette::WindowText), theme_.Color(ColorRole::DimText));
            Save(editor);
            QVERIFY(editor.isVisible());
            QCOMPARE(In<QLineEdit>(editor, "label")->text(), QString("Monthly"));
            Retype(In<QLineEdit>(editor, "number2_2"), "14");
            Save(editor);
            QVERIFY(!editor.isVisible());
        });
        QCOMPARE(prompts_.seen.size(), 1u);
        QCOMPARE(Stored().size(), 2u);
    }

    /// Another number is typed into a field of a series, key by key.
    void a_number_of_a_series_is_typed_anew() {
        struct Case {
            const char* field;
            SeriesType tab;
            int back;                 ///< characters that BackSpace takes from its end
            const char* typed;        ///< then
            const char *held, *left;  ///< what the field shows, and once the focus has left it
            QDate last;
        };
        const Case cases[] = {{"number0_2", kDaily, 1, "", "", "1", {2026, 3, 15}},
                              {"number0_2", kDaily, 1, "5", "5", "5", {2026, 3, 19}},
                              {"number0_2", kDaily, 1, "x", "", "1", {2026, 3, 15}},
                              {"number0_2", kDaily, 1, "x5", "5", "5", {2026, 3, 19}},
                              {"number0_2", kDaily, 1, "0", "1", "1", {2026, 3, 15}},
                              {"number1_0", kWeekly, 1, "2", "2", "2", {2026, 3, 27}},
                              {"number2_2", kMonthly, 2, "9", "9", "9", {2026, 4, 14}}};
        Open();
        for (const Case& one : cases) {
            CreateEvent([&one](EditEventDialog& editor) {
                In<QCheckBox>(editor, "recurring")->click();
                In<QTabWidget>(editor, "recurrence")->setCurrentIndex(one.tab);
                QLineEdit* const field = In<QLineEdit>(editor, one.field);
                field->setFocus();
                QCOMPARE(QApplication::focusWidget(), field);
                QTest::keyClick(field, Qt::Key_End);
                for (int i = 0; i < one.back; ++i)
                    QTest::keyClick(field, Qt::Key_Backspace);
                QCOMPARE(field->text(), QString());
                QTest::keyClicks(field, one.typed);
                QCOMPARE(field->text(), QString(one.held));
                QCOMPARE(In<QDateEdit>(editor, "lastDay")->date(), one.last);
                In<QLineEdit>(editor, "label")->setFocus();
                QCOMPARE(field->text(), QString(one.left));
                QCOMPARE(In<QDateEdit>(editor, "lastDay")->date(), one.last);
            });
        }
    }

    /// What is typed for the start takes the days of a new series along.
    void the_rest_follows_the_start_that_is_typed() {
        Open();
        for (const auto& [year, day] : {std::pair(2026, 14), std::pair(1066, 1)}) {
            In<QSpinBox>(*dialog_, "year")->setValue(year);
            CreateEvent([year = year, day = day](EditEventDialog& editor) {
                const auto date = [&](const char* name) { return In<QDateEdit>(editor, name)->date(); };
                const auto type = [&](const char* name, const char* keys) {
                    auto* const field = In<QDateTimeEdit>(editor, name);
                    field->setFocus(Qt::TabFocusReason);
                    QTest::keyClicks(field, keys);
                    In<QLineEdit>(editor, "label")->setFocus();
                };
                QCOMPARE(date("startDate"), QDate(year, 3, day));
                In<QCheckBox>(editor, "allDay")->click();
                In<QCheckBox>(editor, "recurring")->click();
                type("startTime", "1430");
                type("endTime", "17");
                type("startTime", "9:30a");
                QCOMPARE(In<QTimeEdit>(editor, "startTime")->text(), QString("9:30 AM"));
                QCOMPARE(In<QTimeEdit>(editor, "endTime")->text(), QString("5:30 PM"));
                type("startDate", "20");
                for (const char* const name : {"startDate", "endDate", "firstDay"})
                    QCOMPARE(date(name), QDate(year, 3, 20));
                QCOMPARE(date("lastDay"), QDate(year, 3, 21));
                Save(editor);
            });
            QVERIFY(!Stored().empty() && Stored().back().Start == DateTime(year, 3, 21, 9, 30));
            QVERIFY(Stored().back().End == DateTime(year, 3, 21, 10, 30, 59));
        }
    }

    void days_that_are_typed_are_stored() {
        Open();
        CreateEvent([this](EditEventDialog& editor) {
            const auto type = [](QDateEdit* field, const char* keys) {
                field->setFocus(Qt::TabFocusReason);
                QTest::keyClicks(field, keys);
            };
            QTest::keyClicks(QApplication::focusWidget(), "Visit");
            In<QCheckBox>(editor, "recurring")->click();
            type(In<QDateEdit>(editor, "startDate"), "12/01/2026");
            Next<EditReminderDialog>([&type](EditReminderDialog& reminder) {
                type(reminder.findChild<QDateEdit*>(), "Nov 30, 2026");
                PressKeys(&reminder, {"Ctrl+Return"});
            });
            auto* const add = In<QPushButton>(editor, "addReminder");
            add->setFocus();
            add->click();
            QVERIFY(Lines(In<QListWidget>(editor, "reminderList")).join("").contains("11/30/26"));
            BringUp(editor);
            QDateEdit* const last = In<QDateEdit>(editor, "lastDay");
            type(last, "Dec 32, 2026");
            for (const char* const key : {"Return", "Ctrl+Return"})
                QVERIFY2((PressKeys(last, {key}), editor.isVisible()), key);
            for (int i = 0; i < 8; ++i)
                QTest::keyClick(last, Qt::Key_Backspace);
            type(last, "3, 2026");
            PressKeys(last, {"Ctrl+Return"});
        });
        QStringList days;
        for (const CTmEvent& event : Stored())
            days.append(QString::fromStdString(event.Start.Format("%m/%d/%Y")));
        QCOMPARE(days.join(" "), QString("12/01/2026 12/02/2026 12/03/2026"));
    }

    void a_right_click_views_the_day_under_it_and_keeps_the_selection() {
        Open();
        DragDays(Grid()->CellRect(8).center(), 10);
        const auto selected = std::pair(DateTime(2026, 3, 9), DateTime(2026, 3, 11));
        for (const auto& [cell, head] : {std::pair(8, "Monday, March 09 2026"), {9, "Tuesday, March 10 2026"}}) {
            QVERIFY(Grid()->View().SelectedDays() == selected);
            const QPoint at = Grid()->CellRect(cell).center();
            QTest::mousePress(Grid(), Qt::RightButton, {}, at);
            InNext<EditDayDialog>(
                [&] {
                    InMenu(QContextMenuEvent::Mouse, at, [](QMenu& menu) {
                        menu.close();
                        EntryOf(menu, "View Day")->trigger();
                    });
                },
                [head = head](EditDayDialog& day) { QCOMPARE(In<QLabel>(day, "head")->text(), QString(head)); });
        }
    }

    void a_member_of_a_series_is_changed_as_far_as_asked() {
        PutClass();
        Open();
        const std::tuple<const char*, QString, std::string> answers[] = {
            {"allFollowing", "Lecture", "Class Lecture Lecture Lecture "},
            {"cancel", "Nothing", "Class Lecture Lecture Lecture "},
            {"onlyThis", "Once", "Class Once Lecture Lecture "}};
        for (const auto& [button, label, stored] : answers) {
            EditEvent(1, [&, button = button, label = label](EditEventDialog& editor) {
                Retype(In<QLineEdit>(editor, "label"), label);
                Next<ModifyEventDialog>(
                    [button](ModifyEventDialog& question) { In<QPushButton>(question, button)->click(); });
                Save(editor);
            });
            std::string labels;
            for (const CTmEvent& event : Stored())
                labels += event.Label + " ";
            QCOMPARE(labels, stored);
        }
        QCOMPARE(opened_, 6);
    }

    /// What was edited stays chosen wherever the edit has moved it, so that Del takes this one and no other.
    void del_in_a_day_takes_what_was_edited() {
        const auto at = [](int hour) { return DateTime(2026, 3, 16, hour, 0, 0); };
        Put({Made("First", at(9), at(10), 1, false), Made("Second", at(11), at(12), 2, false)});
        PutReminders({"early", "late"});
        Open();
        prompts_.answers = {PromptAnswer::Yes, PromptAnswer::Yes};
        Next<EditDayDialog>([this](EditDayDialog& day) {
            const auto editSecond = [&day](const char* name) {
                QTreeWidget* const list = In<QTreeWidget>(day, name);
                QCOMPARE(list->topLevelItemCount(), 2);
                list->setCurrentItem(list->topLevelItem(1));
                emit list->itemActivated(list->currentItem(), 0);
                BringUp(day);
                list->setFocus();
                QTest::keyClick(list, Qt::Key_Delete);
                QCOMPARE(list->topLevelItemCount(), 1);
                QCOMPARE(list->currentItem(), list->topLevelItem(0));
            };
            Next<EditEventDialog>([](EditEventDialog& editor) {
                QTest::keyClicks(In<QLineEdit>(editor, "label"), "!");
                Save(editor);
            });
            editSecond("events");
            Next<EditReminderDialog>([](EditReminderDialog& editor) {
                editor.findChild<QTimeEdit*>()->setTime(QTime(8, 0));
                Save(editor);
            });
            editSecond("reminders");
        });
        emit Grid()->DayAsked(at(0));
        QTRY_COMPARE(opened_, 3);
        QCOMPARE(Stored().size(), 1u);
        QCOMPARE(Stored()[0].Label, std::string("First"));
        QCOMPARE(StoredReminders(), QStringList("early"));
    }

    void del_in_an_event_takes_the_reminder_that_was_edited() {
        const CTmEvent event =
            Made("Talk", DateTime(2026, 3, 16, 14, 0, 0), DateTime(2026, 3, 16, 15, 0, 59), 1, false);
        Put({event});
        PutReminders({"first", "second", "third"}, event);
        Open();
        EditEvent(0, [this](EditEventDialog& editor) {
            QListWidget* const list = In<QListWidget>(editor, "reminderList");
            QCOMPARE(list->count(), 3);
            list->setCurrentRow(1);
            Next<EditReminderDialog>([](EditReminderDialog& reminder) {
                QTest::keyClicks(In<QPlainTextEdit>(reminder, "message"), "x");
                Save(reminder);
            });
            emit list->itemActivated(list->currentItem());
            BringUp(editor);
            list->setFocus();
            // The edited one, then the one that has taken its place, the last.
            for (int left = 2; left > 0; --left) {
                QTest::keyClick(list, Qt::Key_Delete);
                QCOMPARE(list->count(), left);
                QCOMPARE(list->currentRow(), left - 1);
            }
            Save(editor);
        });
        QCOMPARE(StoredReminders(), QStringList("first"));
    }

    void cells_tell_their_events() {
        PutClass();
        Open();
        QAccessibleInterface* const grid = QAccessible::queryAccessibleInterface(Grid());
        QCOMPARE(grid->childCount(), 35);
        QCOMPARE(grid->child(15)->text(QAccessible::Name), QString("Monday, March 16 2026, 1 event: 9:00AM - Class"));
        QCOMPARE(grid->focusChild()->text(QAccessible::Name), QString("Saturday, March 14 2026, today, no events"));
        QCOMPARE(grid->child(13)->role(), QAccessible::Cell);
        Grid()->clearFocus();
        QVERIFY(TellsOfFocusChild(*Grid()));
        Keys({"Right", "Shift+Down"});
        QVERIFY(grid->child(21)->state().selected && !grid->child(22)->state().selected);
        const QString last = "Sunday, March 22 2026, no events", next = "Monday, March 23 2026, no events";
        QCOMPARE(ToldDuring([this] { Keys({"Shift+Right"}); }), QStringList({"focus " + next, "selected " + next}));
        QCOMPARE(ToldDuring([this] { Keys({"Shift+Left"}); }), QStringList({"focus " + last, "unselected " + next}));
        InNext<EditDayDialog>(
            [grid] { grid->child(15)->actionInterface()->doAction(QAccessibleActionInterface::pressAction()); },
            [](EditDayDialog& day) { QCOMPARE(In<QTreeWidget>(day, "events")->topLevelItemCount(), 1); });
    }

    void a_tool_tip_shows_the_text_of_an_event_as_it_is() {
        for (const char* const text : {"Lunch & \"talk\" > tea", "a <b>\n\tsecond  line"}) {
            CTmEvent event;
            event.Description = text;
            const QString tip = EventToolTip(event);
            QTextDocument shown;
            shown.setHtml(tip);
            QVERIFY(Qt::mightBeRichText(tip));
            QCOMPARE(shown.toPlainText(), ToQString(HoverText(event)));
        }
    }

    /// In windows of several heights each cell shows or counts all its events, and nothing lies over something else.
    void more_bars_than_room_are_counted() {
        PutFullMonth();
        Open();
        const CalendarGrid* const grid = Grid();
        bool aFullWeekIsHigher = false;
        for (const int height : {420, 560, 760, 1000, 1400}) {
            dialog_->resize(1100, height);
            QTest::qWait(1);
            aFullWeekIsHigher |= grid->CellRect(11).height() > grid->CellRect(33).height();
            QCOMPARE(grid->CellRect(34).bottom() + 1, grid->height());
            std::map<int, int> hidden;
            for (const CalendarGrid::More& more : grid->Mores()) {
                hidden[more.cell] = more.count;
                QVERIFY(grid->CellRect(more.cell).contains(more.rect));
                QVERIFY(!grid->EventAt(more.rect.center()));
                // The bar of one event takes no more room than this line.
                for (const size_t event : grid->View().EventsOn(more.cell))
                    QVERIFY(more.count > 1 || EventsSeenIn(more.cell).contains(event) ||
                            grid->View().Events()[event].Start.Day() != grid->View().Events()[event].End.Day());
            }
            for (int cell = 0; cell < grid->View().Grid().Cells(); ++cell)
                QCOMPARE(EventsSeenIn(cell).size() + static_cast<size_t>(hidden[cell]),
                         grid->View().EventsOn(cell).size());
        }
        QVERIFY2(grid->Mores().empty(), "a tall window shows all");
        QVERIFY2(aFullWeekIsHigher, "where others have room to spare");
    }

    void a_click_on_the_rest_of_a_day_opens_it() {
        PutFullMonth();
        Open();
        dialog_->resize(1100, 560);
        QTest::qWait(1);
        const auto full = std::find_if(Grid()->Mores().begin(), Grid()->Mores().end(),
                                       [](const CalendarGrid::More& more) { return more.cell == 11; });
        QVERIFY(full != Grid()->Mores().end() && full->count >= 3);
        const QPoint at = full->rect.center();
        InNext<EditDayDialog>([&] { QTest::mouseClick(Grid(), Qt::LeftButton, {}, at); },
                              [](EditDayDialog& day) {
                                  QCOMPARE(In<QTreeWidget>(day, "events")->topLevelItemCount(), 8);
                                  QCOMPARE(In<QLabel>(day, "head")->text(), QString("Thursday, March 12 2026"));
                              });
        QVERIFY(Grid()->View().CurrentDay() == DateTime(2026, 3, 12));
        // A drag that begins there selects days.
        DragDays(at, 13);
        QCOMPARE(opened_, 1);
        QVERIFY(Grid()->View().SelectedDays() == std::pair(DateTime(2026, 3, 12), DateTime(2026, 3, 14)));
    }

    /// Right and Down reach each cell of each month of a year, and the months follow.
    void keys_reach_every_cell() {
        Open();
        const MonthView& view = Grid()->View();
        DateTime day(2026, 3, 14);
        for (int step = 0; step < 460; ++step) {
            const bool isBack = step >= 400;
            Keys({isBack ? "Up" : "Right"});
            day = day.PlusDays(isBack ? -7 : 1);
            QVERIFY2(view.CurrentDay() == day, day.Format("%m/%d/%Y").c_str());
            QVERIFY(Grid()->CellRect(view.CurrentCell()).isValid());
            QCOMPARE(In<QComboBox>(*dialog_, "month")->currentIndex() + 1, view.Grid().Month().Month());
        }
        Keys({"Ctrl+Home", "Home", "Shift+End"});
        QVERIFY(view.SelectedDays() == std::pair(DateTime(2026, 3, 8), DateTime(2026, 3, 14)));
        Keys({"Ctrl+Home"});
        for (int step = 0; step < 60; ++step)
            Keys({"Shift+Down"});
        QVERIFY2(view.Grid().Month() == DateTime(2026, 3, 1), "a selection stays in its month");
        QVERIFY(view.SelectedDays() == std::pair(DateTime(2026, 3, 14), DateTime(2026, 4, 4)));
        Keys({"End", "PgDown"});
        QVERIFY(view.CurrentDay() == DateTime(2026, 4, 1));
        Keys({"PgUp", "PgUp"});
        QVERIFY(view.CurrentDay() == DateTime(2026, 2, 1));
        InNext<EditDayDialog>([this] { Keys({"Return"}); },
                              [](EditDayDialog& opened) {
                                  QCOMPARE(In<QLabel>(opened, "head")->text(), QString("Sunday, February 01 2026"));
                                  QTest::keyClick(&opened, Qt::Key_Escape);
                              });
    }

    /// The keyboard's menu of a day leads to each of its events and to what goes with a series.
    void the_menu_of_a_day_reaches_its_events() {
        PutClass();
        Open();
        const auto inMenu = [this](const std::function<void(QMenu&)>& steps) {
            InMenu(QContextMenuEvent::Keyboard, QPoint(5, 5), steps);
        };
        inMenu([](QMenu& menu) { QCOMPARE(TextsOf(&menu), QStringList({"View Day", "Create Event"})); });
        Keys({"Right", "Right", "Right"});
        inMenu([&](QMenu& menu) {
            QCOMPARE(TextsOf(&menu),
                     QStringList({"Edit Event", "Delete Event", "-", "Delete This and Following Events in Series",
                                  "Delete Entire Series", "-", "View Day", "Create Event"}));
            prompts_.answers = {PromptAnswer::Yes};
            QTest::keyClick(&menu, Qt::Key_F);
        });
        QTRY_COMPARE(Stored().size(), 1u);
        QVERIFY(Grid()->View().EventsOn(Grid()->View().CurrentCell()).empty());
        PutClass();
        dialog_.reset();
        Open();
        Keys({"Right", "Right", "Right"});
        inMenu([&](QMenu& menu) {
            prompts_.answers = {PromptAnswer::Yes};
            QTest::keyClick(&menu, Qt::Key_S);
        });
        QTRY_VERIFY(Stored().empty());
        PutFullMonth();
        dialog_.reset();
        Open();
        Keys({"Up", "Left"});
        inMenu([](QMenu& menu) {
            QCOMPARE(menu.actions().size(), 2 + 3);
            QVERIFY(menu.actions().first()->menu());
            QCOMPARE(TextsOf(menu.actions().first()->menu()), QStringList({"Edit Event", "Delete Event"}));
        });
    }

    void escape_asks_before_it_drops_changes() {
        PutClass();
        Open();
        EditEvent(1, [](EditEventDialog& editor) { QVERIFY2(!StaysOpen(editor, "Esc"), "nothing would be lost"); });
        QVERIFY(prompts_.seen.empty());
        prompts_.answers = {PromptAnswer::No, PromptAnswer::Yes};
        EditEvent(1, [this](EditEventDialog& editor) {
            QTest::keyClicks(In<QLineEdit>(editor, "label"), "x");
            QVERIFY(StaysOpen(editor, "Esc"));
            QCOMPARE(prompts_.seen.size(), 1u);
            QTest::keyClick(In<QLineEdit>(editor, "label"), Qt::Key_Backspace);
            In<QCheckBox>(editor, "recurring")->click();
            QVERIFY(!StaysOpen(editor, "Esc"));
        });
        QCOMPARE(prompts_.seen.size(), 2u);
        QCOMPARE(Stored().size(), 4u);
        prompts_.answers = {PromptAnswer::Yes};
        InNext<EditReminderDialog>([this] { In<QPushButton>(*dialog_, "addReminder")->click(); },
                                   [](EditReminderDialog& editor) {
                                       auto* const time = editor.findChild<QTimeEdit*>();
                                       QCOMPARE(time->accessibleDescription(), In<QLabel>(editor, "bounds")->text());
                                       const QStringList told = ToldDuring([time] { time->setTime(QTime(0, 0)); });
                                       QVERIFY(told.join(' ').contains("said That was too early"));
                                       QTest::keyClicks(In<QPlainTextEdit>(editor, "message"), "Bring the lamp");
                                       QTest::keyClick(&editor, Qt::Key_Escape);
                                   });
        QCOMPARE(prompts_.seen.size(), 3u);
    }

    /// The reminder goes to its event before the event is stored.
    void an_order_to_quit_saves_what_is_typed() {
        Put({Made("Talk", DateTime(2026, 3, 16, 14, 0, 0), DateTime(2026, 3, 16, 15, 0, 59), 1, false)});
        Open();
        const QuitGuard guard;
        IgnoresClose stays;
        window_->installEventFilter(&stays);
        EditEvent(0, [](EditEventDialog& editor) {
            Retype(In<QLineEdit>(editor, "label"), "Talks");
            QTimer::singleShot(300, &editor, [] {
                auto* const reminder = qobject_cast<EditReminderDialog*>(QApplication::activeModalWidget());
                QVERIFY(reminder);
                QTest::keyClicks(In<QPlainTextEdit>(*reminder, "message"), "Bring the lamp");
                QEvent quit(QEvent::Quit);
                QCoreApplication::sendEvent(qApp, &quit);
                QVERIFY(!quit.isAccepted());
            });
            In<QPushButton>(editor, "addReminder")->click();
            QTRY_VERIFY(!editor.isVisible());
        });
        QTRY_VERIFY(!dialog_->isVisible());
        QVERIFY(prompts_.seen.empty());
        QCOMPARE(Stored()[0].Label, std::string("Talks"));
        QCOMPARE(StoredReminders(), QStringList("Bring the lamp"));
        // Of a series the one event changes, without a question.
        PutClass();
        Open();
        EditEvent(0, [](EditEventDialog& editor) {
            Retype(In<QLineEdit>(editor, "label"), "Lesson");
            QCoreApplication::postEvent(qApp, new QEvent(QEvent::Quit));
            QTRY_VERIFY(!editor.isVisible());
        });
        QTRY_VERIFY(!dialog_->isVisible());
        QVERIFY(prompts_.seen.empty());
        const EventList series = Stored();
        QCOMPARE(std::ranges::count(series, "Lesson", &CTmEvent::Label), 1);
        QCOMPARE(series.size(), 4u);
        // What can't be saved is asked about.
        Open();
        prompts_.answers = {PromptAnswer::No};
        EditEvent(0, [this](EditEventDialog& editor) {
            Retype(In<QLineEdit>(editor, "label"), "More talks");
            Block(app_->Data().Events());
            QCoreApplication::postEvent(qApp, new QEvent(QEvent::Quit));
            QTRY_COMPARE(Told(), QStringList("Close Without Saving?"));
            QVERIFY(editor.isVisible());
        });
    }

    void a_full_disk_is_told_by_the_dialog_in_front() {
        PutClass();
        Open();
        CreateEvent([this](EditEventDialog& editor) {
            Retype(In<QLineEdit>(editor, "label"), "Trip");
            FailsAtFirst(editor, [&] { Save(editor); });
            QVERIFY(!editor.isVisible());
        });
        InNext<EditReminderDialog>([this] { In<QPushButton>(*dialog_, "addReminder")->click(); },
                                   [this](EditReminderDialog& editor) {
                                       QTest::keyClicks(In<QPlainTextEdit>(editor, "message"), "Bring the lamp");
                                       FailsAtFirst(editor, [&] { Save(editor); });
                                       QVERIFY(!editor.isVisible());
                                   });
        QCOMPARE(StoredReminders(), QStringList("Bring the lamp"));
        prompts_.answers = {4, PromptAnswer::Yes};
        InNext<EditDayDialog>([this] { emit Grid()->DayAsked(DateTime(2026, 3, 16)); },
                              [this](EditDayDialog& day) {
                                  QTest::keyClick(In<QTreeWidget>(day, "events"), Qt::Key_Home);
                                  FailsAtFirst(day, [&] { Press(day, "Remove Event"); });
                              });
        Keys({"Right", "Right", "Right"});
        const auto removeSeries = [this] {
            InMenu(QContextMenuEvent::Keyboard, QPoint(5, 5), [](QMenu& menu) { QTest::keyClick(&menu, Qt::Key_S); });
        };
        {
            const FullDisk full;
            removeSeries();
        }
        auto* const bar = dialog_->findChild<FaultBar*>();
        QVERIFY(bar && bar->isVisible() && !SeenTexts<QPushButton>(*bar).contains("Try again"));
        removeSeries();
        QVERIFY(bar->isHidden());
        QCOMPARE(Stored().size(), 1u);
    }

    void stands_in_both_looks() {
        const BothLooks looks{theme_};
        Open();
        looks.Shoot(*dialog_, "calendar_empty");
        dialog_.reset();
        PutFullMonth();
        Open();
        looks.Shoot(*dialog_, "calendar_month");
        for (const QToolButton* const arrow : dialog_->findChildren<QToolButton*>()) {
            const QImage light = arrow->icon().pixmap(kSpace * 4).toImage();
            theme_.SetAppearance(Appearance::Dark);
            QVERIFY2(arrow->icon().pixmap(kSpace * 4).toImage() != light, qPrintable(arrow->accessibleName()));
            theme_.SetAppearance(Appearance::Light);
        }
        dialog_->resize(1100, 560);
        looks.Shoot(*dialog_, "calendar_more");
        CreateEvent([&](EditEventDialog& editor) {
            In<QCheckBox>(editor, "recurring")->click();
            for (const auto& [tab, name] :
                 {std::pair(kMonthly, "calendar_event"), {kWeekly, "calendar_event_weekly"}}) {
                In<QTabWidget>(editor, "recurrence")->setCurrentIndex(tab);
                looks.Shoot(editor, name);
            }
            Next<EditReminderDialog>([&](QDialog& reminder) {
                looks.Shoot(reminder, "calendar_reminder_popup");
                In<QComboBox>(reminder, "type")->setCurrentIndex(2);
                emit In<QComboBox>(reminder, "type")->activated(2);
                looks.Shoot(reminder, "calendar_reminder_text");
            });
            In<QPushButton>(editor, "addReminder")->click();
        });
        Next<EditDayDialog>([&](EditDayDialog& day) { looks.Shoot(day, "calendar_day"); });
        emit Grid()->DayAsked(DateTime(2026, 3, 12));
        Next<ModifyEventDialog>([&](ModifyEventDialog& question) { looks.Shoot(question, "calendar_series"); });
        ModifyEventDialog(ModifyEventMode::Modify, store_, dialog_.get()).exec();
        QCOMPARE(opened_, 4);
    }
};

}  // namespace lore

QTEST_MAIN(lore::CalendarTest)
#include "calendar_test.moc"
