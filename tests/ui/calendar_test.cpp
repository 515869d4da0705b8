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
#include "ui/qt_text.h"
#include "ui/tab_walk.h"
#include "ui/window_world.h"

namespace lore {

/// The event calendar as a user drives it, on 14 March 2026.
class CalendarTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    EventList Stored() {
        EventList events;
        LoadAllEvents(app_->Data().Events(), app_->Context(), events);
        return events;
    }
    CTmEvent Made(const char* label, const DateTime& start, const DateTime& end, int color, bool allDay) {
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
        events.push_back(Made("Conference in Trieste", day(3), day(10).PlusSeconds(86399), 5, true));
        events.push_back(Made("Leave", day(28), DateTime(2026, 4, 9), 3, true));
        events.push_back(Made("\xE4\xBC\x9A\xE8\xAE\xAE \xD7\xA4\xD7\x92\xD7\x99\xD7\xA9\xD7\x94", day(18, 9),
                              day(18, 10), 11, false));
        events.push_back(
            Made("A very long label that doesn't fit into one cell of the month", day(20, 14), day(20, 15), 7, false));
        for (int i = 0; i < 7; ++i)
            events.push_back(Made("Lesson", day(12, 8 + i), day(12, 9 + i), 8 + i, false));
        for (int i = 1; i <= 20; ++i)
            events.push_back(Made(("Colour " + std::to_string(i)).c_str(), day(i + 5, 7), day(i + 5, 8), i, false));
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
        QVERIFY(SaveReminders(app_->Data().Reminders(), reminders).Ok());
    }
    QStringList StoredReminders() {
        ReminderList reminders;
        LoadAllReminders(app_->Data().Reminders(), app_->Context(), reminders);
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
        Put(ExpandSeries(event, guids_));
    }

    void Open() {
        dialog_ = std::make_unique<TaskManagerDialog>(*app_, *theme_, window_.get());
        dialog_->resize(1100, 760);
        dialog_->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog_.get()));
    }

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
        QCOMPARE(QApplication::focusWidget(), dialog_->Grid());
        QTest::keyClick(dialog_->Grid(), Qt::Key_Right);
        QTest::keyClick(dialog_->Grid(), Qt::Key_Right, Qt::ShiftModifier);
        Next<EditEventDialog>([](EditEventDialog& editor) {
            QTest::keyClicks(QApplication::focusWidget(), "Trip");
            QTest::keyClick(&editor, Qt::Key_Return, Qt::ControlModifier);
        });
        QTest::keyClick(dialog_->Grid(), Qt::Key_N, Qt::ControlModifier);
        QTRY_COMPARE(opened_, 1);
        const EventList events = Stored();
        QCOMPARE(events.size(), 1u);
        QCOMPARE(events[0].Label, std::string("Trip"));
        QVERIFY(events[0].Start == DateTime(2026, 3, 15));
        QVERIFY(events[0].End == DateTime(2026, 3, 16, 23, 59, 59));
        const auto hasBar = [this](int cell) {
            const QRect place = dialog_->Grid()->CellRect(cell);
            for (int y = place.top(); y <= place.bottom(); ++y)
                if (dialog_->Grid()->EventAt(QPoint(place.center().x(), y)))
                    return true;
            return false;
        };
        QVERIFY(!hasBar(13) && hasBar(14) && hasBar(15) && !hasBar(16));
    }

    void a_refused_save_keeps_the_editor_open() {
        Open();
        Next<EditEventDialog>([this](EditEventDialog& editor) {
            In<QLineEdit>(editor, "label")->setFocus();
            QTest::keyClicks(In<QLineEdit>(editor, "label"), "Monthly");
            In<QCheckBox>(editor, "recurring")->click();
            In<QTabWidget>(editor, "recurrence")->setCurrentIndex(kMonthly);
            QLabel* const outcome = In<QLabel>(editor, "outcome");
            QCOMPARE(In<QLabel>(editor, "summary")->text(),
                     QString("Repeats on day 14 of every month from 03/14/26 to 04/14/26"));
            QCOMPARE(outcome->text(), QString("Ends after 2 events, on 04/14/26"));
            QLineEdit* const day = In<QLineEdit>(editor, "number2_2");
            day->selectAll();
            QTest::keyClicks(day, "45");
            QCOMPARE(In<QLabel>(editor, "summary")->text(),
                     QString("Repeats on day 45 of every month from 03/14/26 to 04/14/26"));
            QCOMPARE(outcome->text(), QString("No event falls on these days"));
            QCOMPARE(QAccessible::queryAccessibleInterface(outcome)->text(QAccessible::Name), outcome->text());
            QCOMPARE(outcome->palette().color(QPalette::WindowText), theme_->Color(ColorRole::DimText));
            In<QPushButton>(editor, "save")->click();
            QVERIFY(editor.isVisible());
            QCOMPARE(In<QLineEdit>(editor, "label")->text(), QString("Monthly"));
            day->selectAll();
            QTest::keyClicks(day, "14");
            In<QPushButton>(editor, "save")->click();
            QVERIFY(!editor.isVisible());
        });
        In<QPushButton>(*dialog_, "createEvent")->click();
        QTRY_COMPARE(opened_, 1);
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
            Next<EditEventDialog>([&one](EditEventDialog& editor) {
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
            const int before = opened_;
            In<QPushButton>(*dialog_, "createEvent")->click();
            QTRY_COMPARE(opened_, before + 1);
        }
    }

    /// What is typed for the start takes the days of a new series along.
    void the_rest_follows_the_start_that_is_typed() {
        Open();
        for (const auto& [year, day] : {std::pair(2026, 14), std::pair(1066, 1)}) {
            In<QSpinBox>(*dialog_, "year")->setValue(year);
            Next<EditEventDialog>([year = year, day = day](EditEventDialog& editor) {
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
                In<QPushButton>(editor, "save")->click();
            });
            const int before = opened_;
            In<QPushButton>(*dialog_, "createEvent")->click();
            QTRY_COMPARE(opened_, before + 1);
            QVERIFY(!Stored().empty() && Stored().back().Start == DateTime(year, 3, 21, 9, 30));
            QVERIFY(Stored().back().End == DateTime(year, 3, 21, 10, 30, 59));
        }
    }

    void a_right_click_views_the_day_under_it_and_keeps_the_selection() {
        Open();
        CalendarGrid* const grid = dialog_->Grid();
        QTest::mousePress(grid, Qt::LeftButton, {}, grid->CellRect(8).center());
        QTest::mouseMove(grid, grid->CellRect(10).center());
        QTest::mouseRelease(grid, Qt::LeftButton, {}, grid->CellRect(10).center());
        const auto selected = std::pair(DateTime(2026, 3, 9), DateTime(2026, 3, 11));
        struct Case {
            int cell;
            QString day;
        };
        int opened = 0;
        for (const Case& c : {Case{8, "Monday, March 09 2026"}, {9, "Tuesday, March 10 2026"}}) {
            QVERIFY(grid->View().SelectedDays() == selected);
            const QPoint at = grid->CellRect(c.cell).center();
            QTest::mousePress(grid, Qt::RightButton, {}, at);
            Next<EditDayDialog>([&](EditDayDialog& day) { QCOMPARE(In<QLabel>(day, "head")->text(), c.day); });
            QTimer::singleShot(0, qApp, [] {
                auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                QVERIFY(menu);
                menu->close();
                for (QAction* const entry : menu->actions()) {
                    if (entry->text() == "&View Day")
                        entry->trigger();
                }
            });
            QContextMenuEvent asked(QContextMenuEvent::Mouse, at, grid->mapToGlobal(at));
            QApplication::sendEvent(grid, &asked);
            QTRY_COMPARE(opened_, opened + 1);
            ++opened;
        }
    }

    void a_member_of_a_series_is_changed_as_far_as_asked() {
        PutClass();
        Open();
        const auto rename = [&](const char* button, const QString& label) {
            Next<EditEventDialog>([&, button, label](EditEventDialog& editor) {
                QLineEdit* const field = In<QLineEdit>(editor, "label");
                field->selectAll();
                QTest::keyClicks(field, label);
                Next<ModifyEventDialog>(
                    [button](ModifyEventDialog& question) { In<QPushButton>(question, button)->click(); });
                In<QPushButton>(editor, "save")->click();
            });
            emit dialog_->Grid()->EventAsked(1);
        };
        rename("allFollowing", "Lecture");
        QTRY_COMPARE(opened_, 2);
        QCOMPARE(Stored()[0].Label + Stored()[1].Label + Stored()[3].Label, std::string("ClassLectureLecture"));
        rename("cancel", "Nothing");
        QTRY_COMPARE(opened_, 4);
        QCOMPARE(Stored()[1].Label, std::string("Lecture"));
        rename("onlyThis", "Once");
        QTRY_COMPARE(opened_, 6);
        QCOMPARE(Stored()[1].Label + Stored()[2].Label, std::string("OnceLecture"));
    }

    void day_lists_and_removes() {
        PutFullMonth();
        Open();
        dialog_->Grid()->setFocus();
        QTest::keyClick(dialog_->Grid(), Qt::Key_Left);
        QTest::keyClick(dialog_->Grid(), Qt::Key_Left);
        prompts_.answers = {PromptAnswer::Yes};
        const size_t before = Stored().size();
        Next<EditDayDialog>([](EditDayDialog& day) {
            QTreeWidget* const list = In<QTreeWidget>(day, "events");
            QCOMPARE(list->topLevelItemCount(), 8);
            QCOMPARE(In<QLabel>(day, "head")->text(), QString("Thursday, March 12 2026"));
            list->setFocus();
            QTest::keyClick(list, Qt::Key_Delete);
            QCOMPARE(list->topLevelItemCount(), 7);
        });
        QTest::keyClick(dialog_->Grid(), Qt::Key_Return);
        QTRY_COMPARE(opened_, 1);
        QCOMPARE(Stored().size(), before - 1);
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
                day.activateWindow();
                QTRY_VERIFY(day.isActiveWindow());
                list->setFocus();
                QTest::keyClick(list, Qt::Key_Delete);
                QCOMPARE(list->topLevelItemCount(), 1);
                QCOMPARE(list->currentItem(), list->topLevelItem(0));
            };
            Next<EditEventDialog>([](EditEventDialog& editor) {
                QTest::keyClicks(In<QLineEdit>(editor, "label"), "!");
                In<QPushButton>(editor, "save")->click();
            });
            editSecond("events");
            Next<EditReminderDialog>([](EditReminderDialog& editor) {
                editor.findChild<QTimeEdit*>()->setTime(QTime(8, 0));
                In<QPushButton>(editor, "save")->click();
            });
            editSecond("reminders");
        });
        emit dialog_->Grid()->DayAsked(at(0));
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
        Next<EditEventDialog>([this](EditEventDialog& editor) {
            QListWidget* const list = In<QListWidget>(editor, "reminderList");
            QCOMPARE(list->count(), 3);
            list->setCurrentRow(1);
            Next<EditReminderDialog>([](EditReminderDialog& reminder) {
                QTest::keyClicks(In<QPlainTextEdit>(reminder, "message"), "x");
                In<QPushButton>(reminder, "save")->click();
            });
            emit list->itemActivated(list->currentItem());
            editor.activateWindow();
            QTRY_VERIFY(editor.isActiveWindow());
            list->setFocus();
            // The edited one, then the one that has taken its place, the last.
            for (int left = 2; left > 0; --left) {
                QTest::keyClick(list, Qt::Key_Delete);
                QCOMPARE(list->count(), left);
                QCOMPARE(list->currentRow(), left - 1);
            }
            In<QPushButton>(editor, "save")->click();
        });
        emit dialog_->Grid()->EventAsked(0);
        QTRY_COMPARE(opened_, 2);
        QCOMPARE(StoredReminders(), QStringList("first"));
    }

    void cells_tell_their_events() {
        PutClass();
        Open();
        QAccessibleInterface* const grid = QAccessible::queryAccessibleInterface(dialog_->Grid());
        QCOMPARE(grid->childCount(), 35);
        QCOMPARE(grid->child(15)->text(QAccessible::Name), QString("Monday, March 16 2026, 1 event: 9:00AM - Class"));
        QCOMPARE(grid->focusChild()->text(QAccessible::Name), QString("Saturday, March 14 2026, today, no events"));
        QCOMPARE(grid->child(13)->role(), QAccessible::Cell);
        for (const char* const text : {"Lunch & \"talk\" > tea", "a <b>\n\tsecond  line"}) {
            CTmEvent event;
            event.Description = text;
            const QString tip = EventToolTip(event);
            QTextDocument shown;
            shown.setHtml(tip);
            QVERIFY(Qt::mightBeRichText(tip));
            QCOMPARE(shown.toPlainText(), ToQString(HoverText(event)));
        }
        dialog_->Grid()->clearFocus();
        QVERIFY(TellsOfFocusChild(*dialog_->Grid()));
        QTest::keyClick(dialog_->Grid(), Qt::Key_Right);
        QTest::keyClick(dialog_->Grid(), Qt::Key_Down, Qt::ShiftModifier);
        QVERIFY(grid->child(21)->state().selected && !grid->child(22)->state().selected);
    }

    /// In windows of several heights each cell shows or counts all its events, and nothing lies over something else.
    void more_bars_than_room_are_counted() {
        PutFullMonth();
        Open();
        CalendarGrid* const grid = dialog_->Grid();
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
            }
            for (int cell = 0; cell < grid->View().Grid().Cells(); ++cell) {
                const QRect rect = grid->CellRect(cell);
                std::set<size_t> shown;
                for (int y = rect.top(); y < rect.bottom(); ++y) {
                    if (const auto event = grid->EventAt(QPoint(rect.center().x(), y)))
                        shown.insert(*event);
                }
                QCOMPARE(shown.size() + static_cast<size_t>(hidden[cell]), grid->View().EventsOn(cell).size());
            }
        }
        QVERIFY2(grid->Mores().empty(), "a tall window shows all");
        QVERIFY2(aFullWeekIsHigher, "where others have room to spare");
    }

    void a_click_on_the_rest_of_a_day_opens_it() {
        PutFullMonth();
        Open();
        dialog_->resize(1100, 560);
        QTest::qWait(1);
        CalendarGrid* const grid = dialog_->Grid();
        const auto full = std::find_if(grid->Mores().begin(), grid->Mores().end(),
                                       [](const CalendarGrid::More& more) { return more.cell == 11; });
        QVERIFY(full != grid->Mores().end() && full->count >= 3);
        const QPoint at = full->rect.center();
        Next<EditDayDialog>([](EditDayDialog& day) {
            QCOMPARE(In<QTreeWidget>(day, "events")->topLevelItemCount(), 8);
            QCOMPARE(In<QLabel>(day, "head")->text(), QString("Thursday, March 12 2026"));
        });
        QTest::mouseClick(grid, Qt::LeftButton, {}, at);
        QTRY_COMPARE(opened_, 1);
        QVERIFY(grid->View().CurrentDay() == DateTime(2026, 3, 12));
        // A drag that begins there selects days.
        QTest::mousePress(grid, Qt::LeftButton, {}, at);
        QTest::mouseMove(grid, grid->CellRect(13).center());
        QTest::mouseRelease(grid, Qt::LeftButton, {}, grid->CellRect(13).center());
        QCOMPARE(opened_, 1);
        QVERIFY(grid->View().SelectedDays() == std::pair(DateTime(2026, 3, 12), DateTime(2026, 3, 14)));
    }

    /// Right and Down reach each cell of each month of a year, and the months follow.
    void keys_reach_every_cell() {
        Open();
        CalendarGrid* const grid = dialog_->Grid();
        const auto press = [&](int key, Qt::KeyboardModifiers modifiers = {}) {
            QTest::keyClick(grid, static_cast<Qt::Key>(key), modifiers);
        };
        DateTime day(2026, 3, 14);
        for (int step = 0; step < 400; ++step) {
            press(Qt::Key_Right);
            day = day.PlusDays(1);
            QVERIFY2(grid->View().CurrentDay() == day, day.Format("%m/%d/%Y").c_str());
            QVERIFY(grid->CellRect(grid->View().CurrentCell()).isValid());
            QCOMPARE(In<QComboBox>(*dialog_, "month")->currentIndex() + 1, grid->View().Grid().Month().Month());
        }
        for (int step = 0; step < 60; ++step) {
            press(Qt::Key_Up);
            day = day.PlusDays(-7);
            QVERIFY2(grid->View().CurrentDay() == day, day.Format("%m/%d/%Y").c_str());
        }
        press(Qt::Key_Home, Qt::ControlModifier);
        press(Qt::Key_Home);
        press(Qt::Key_End, Qt::ShiftModifier);
        QVERIFY(grid->View().SelectedDays() == std::pair(DateTime(2026, 3, 8), DateTime(2026, 3, 14)));
        press(Qt::Key_Home, Qt::ControlModifier);
        for (int step = 0; step < 60; ++step)
            press(Qt::Key_Down, Qt::ShiftModifier);
        QVERIFY2(grid->View().Grid().Month() == DateTime(2026, 3, 1), "a selection stays in its month");
        QVERIFY(grid->View().SelectedDays() == std::pair(DateTime(2026, 3, 14), DateTime(2026, 4, 4)));
        press(Qt::Key_End);
        press(Qt::Key_PageDown);
        QVERIFY(grid->View().CurrentDay() == DateTime(2026, 4, 1));
        press(Qt::Key_PageUp);
        press(Qt::Key_PageUp);
        QVERIFY(grid->View().CurrentDay() == DateTime(2026, 2, 1));
        Next<EditDayDialog>([](EditDayDialog& opened) {
            QCOMPARE(In<QLabel>(opened, "head")->text(), QString("Sunday, February 01 2026"));
            QTest::keyClick(&opened, Qt::Key_Escape);
        });
        press(Qt::Key_Return);
        QTRY_COMPARE(opened_, 1);
    }

    /// The keyboard's menu of a day leads to each of its events and to what goes with a series.
    void the_menu_of_a_day_reaches_its_events() {
        PutClass();
        Open();
        const auto inMenu = [&](const std::function<void(QMenu&)>& steps) {
            bool ran = false;
            QTimer::singleShot(0, this, [&] {
                auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                QVERIFY(menu);
                steps(*menu);
                ran = true;
                menu->close();
            });
            QContextMenuEvent ask(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(5, 5));
            QApplication::sendEvent(dialog_->Grid(), &ask);
            QVERIFY(ran);
        };
        const auto texts = [](const QMenu& menu) {
            QStringList all;
            for (const QAction* const action : menu.actions())
                all.append(action->isSeparator() ? "-" : action->text().remove('&'));
            return all;
        };
        inMenu([&](QMenu& menu) { QCOMPARE(texts(menu), QStringList({"View Day", "Create Event"})); });
        for (int step = 0; step < 3; ++step)
            QTest::keyClick(dialog_->Grid(), Qt::Key_Right);
        inMenu([&](QMenu& menu) {
            QCOMPARE(texts(menu),
                     QStringList({"Edit Event", "Delete Event", "-", "Delete This and Following Events in Series",
                                  "Delete Entire Series", "-", "View Day", "Create Event"}));
            prompts_.answers = {PromptAnswer::Yes};
            QTest::keyClick(&menu, Qt::Key_F);
        });
        QTRY_COMPARE(Stored().size(), 1u);
        QVERIFY(dialog_->Grid()->View().EventsOn(dialog_->Grid()->View().CurrentCell()).empty());
        PutFullMonth();
        dialog_.reset();
        Open();
        QTest::keyClick(dialog_->Grid(), Qt::Key_Up);
        QTest::keyClick(dialog_->Grid(), Qt::Key_Left);
        inMenu([&](QMenu& menu) {
            QCOMPARE(menu.actions().size(), 2 + 3);
            QVERIFY(menu.actions().first()->menu());
            QCOMPARE(texts(*menu.actions().first()->menu()), QStringList({"Edit Event", "Delete Event"}));
        });
    }

    void escape_asks_before_it_drops_changes() {
        PutClass();
        Open();
        const auto edit = [&](const std::function<void(EditEventDialog&)>& steps) {
            const int before = opened_;
            Next<EditEventDialog>(steps);
            emit dialog_->Grid()->EventAsked(1);
            QTRY_COMPARE(opened_, before + 1);
        };
        edit([](EditEventDialog& editor) {
            QTest::keyClick(&editor, Qt::Key_Escape);
            QVERIFY2(!editor.isVisible(), "nothing would be lost");
        });
        QVERIFY(prompts_.seen.empty());
        prompts_.answers = {PromptAnswer::No, PromptAnswer::Yes};
        edit([this](EditEventDialog& editor) {
            QTest::keyClicks(In<QLineEdit>(editor, "label"), "x");
            QTest::keyClick(&editor, Qt::Key_Escape);
            QVERIFY(editor.isVisible());
            QCOMPARE(prompts_.seen.size(), 1u);
            QTest::keyClick(In<QLineEdit>(editor, "label"), Qt::Key_Backspace);
            In<QCheckBox>(editor, "recurring")->click();
            QTest::keyClick(&editor, Qt::Key_Escape);
            QVERIFY(!editor.isVisible());
        });
        QCOMPARE(prompts_.seen.size(), 2u);
        QCOMPARE(Stored().size(), 4u);
        prompts_.answers = {PromptAnswer::Yes};
        Next<EditReminderDialog>([](EditReminderDialog& editor) {
            QTest::keyClicks(In<QPlainTextEdit>(editor, "message"), "Bring the lamp");
            QTest::keyClick(&editor, Qt::Key_Escape);
        });
        In<QPushButton>(*dialog_, "addReminder")->click();
        QTRY_COMPARE(opened_, 3);
        QCOMPARE(prompts_.seen.size(), 3u);
    }

    void looks_good_data() { AddLooks(); }

    void looks_good() {
        const QString look = SetLook();
        Open();
        Shoot(*dialog_, "calendar_empty_" + look);
        dialog_.reset();
        PutFullMonth();
        Open();
        Shoot(*dialog_, "calendar_month_" + look);
        dialog_->resize(1100, 560);
        Shoot(*dialog_, "calendar_more_" + look);
        Next<EditEventDialog>([&](EditEventDialog& editor) {
            In<QCheckBox>(editor, "recurring")->click();
            In<QTabWidget>(editor, "recurrence")->setCurrentIndex(kMonthly);
            Shoot(editor, "calendar_event_" + look);
            In<QTabWidget>(editor, "recurrence")->setCurrentIndex(kWeekly);
            Shoot(editor, "calendar_event_weekly_" + look);
            Next<EditReminderDialog>([&](QDialog& reminder) {
                Shoot(reminder, "calendar_reminder_popup_" + look);
                In<QComboBox>(reminder, "type")->setCurrentIndex(2);
                emit In<QComboBox>(reminder, "type")->activated(2);
                Shoot(reminder, "calendar_reminder_text_" + look);
            });
            In<QPushButton>(editor, "addReminder")->click();
        });
        QTest::keyClick(dialog_->Grid(), Qt::Key_Down);
        In<QPushButton>(*dialog_, "createEvent")->click();
        QTRY_COMPARE(opened_, 2);
        Next<EditDayDialog>([&](EditDayDialog& day) { Shoot(day, "calendar_day_" + look); });
        emit dialog_->Grid()->DayAsked(DateTime(2026, 3, 12));
        Next<ModifyEventDialog>([&](ModifyEventDialog& question) { Shoot(question, "calendar_series_" + look); });
        ModifyEventDialog(ModifyEventMode::Modify, store_, dialog_.get()).exec();
        QCOMPARE(opened_, 4);
    }
};

}  // namespace lore

QTEST_MAIN(lore::CalendarTest)
#include "calendar_test.moc"
