#include "calendar/day_reminders.h"
#include "online/http_client.h"
#include "support/http_server.h"
#include "ui/calendar/calendar_host.h"
#include "ui/calendar/edit_reminder_dialog.h"
#include "ui/qt_progress.h"
#include "ui/window_world.h"

namespace lore {

/// Reminders by mail from the calendar's windows to a server on the other end of the wire.
class ReminderServerTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    void Open(const std::string& address) {
        Begin();
        store_.Set("Reminders", "Server", address);
        store_.Set("Reminders", "User", "ann");
        parent_ = std::make_unique<QWidget>();
        parent_->resize(600, 300);
        parent_->show();
        QVERIFY(QTest::qWaitForWindowExposed(parent_.get()));
        shown_ = std::make_unique<QtProgress>(*theme_);
        shown_->SetParent(parent_.get());
        AppPorts ports{prompts_, *shown_, clock_, guids_, store_, faults_, shown_.get()};
        ports.http = &http_;
        app_ = std::make_unique<CLorebinderApp>(Root(), ports);
        app_->LoadOptions();
        app_->SelectStartNoteBook();
        host_ = std::make_unique<CalendarHost>(*app_, *theme_, parent_.get());
    }
    CTmReminder Mail() const {
        CTmReminder reminder = NewReminder(host_->World().Context());
        reminder.Type = static_cast<int32_t>(ReminderType::Email);
        reminder.SendTo = reminder.EmailAddress = "ann@mail.example";
        reminder.SendTime = clock_.now.PlusDays(1);
        return reminder;
    }
    size_t Stored() const {
        ReminderList reminders;
        LoadReminders(host_->World(), reminders);
        return reminders.size();
    }

    HttpClient http_{{.connect = std::chrono::seconds(5), .silence = std::chrono::seconds(5)}};
    std::unique_ptr<QWidget> parent_;
    std::unique_ptr<QtProgress> shown_;
    std::unique_ptr<CalendarHost> host_;

private slots:
    void cleanup() {
        host_.reset();
        app_.reset();
        shown_.reset();
        parent_.reset();
    }

    void settings_choose_the_server() {
        Open("");
        QVERIFY(!SaveNewReminder(host_->World(), Mail()));
        QVERIFY(prompts_.seen.at(0).find("key \"Server\"") != std::string::npos);
        QCOMPARE(Stored(), size_t{0});
    }

    void window_paints_while_the_server_thinks() {
        HttpServer server;
        Open(server.Url("/r"));
        for (const char* const body : {R"({"result": 1})", R"({"time": "03/14/2026 09:26:00"})", R"({"result": 12})"})
            server.Add({.bytes = "HTTP/1.1 200 OK\r\n\r\n" + std::string(body), .pause = 600});
        int ticks = 0;
        bool couldStop = false;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            ++ticks;
            const auto* const stop = parent_->findChild<QPushButton*>();
            couldStop |= stop && stop->isVisible();
        });
        timer.start(20);
        QVERIFY(SaveNewReminder(host_->World(), Mail()));
        QVERIFY2(ticks >= 10, qPrintable(QString::number(ticks)));
        QVERIFY(couldStop);
        QVERIFY(prompts_.seen.empty());
        QCOMPARE(Stored(), size_t{1});
        QCOMPARE(server.Requests().size(), size_t{3});
        QVERIFY(server.Requests()[2].find("\"sendTo\":\"ann@mail.example\"") != std::string::npos);
    }

    void cancel_ends_the_flow() {
        HttpServer server;
        Open(server.Url());
        server.Add(200, R"({"result": 1})");
        server.Add({.bytes = "", .closes = false});
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            auto* const stop = parent_->findChild<QPushButton*>();
            if (stop && stop->isVisible()) {
                TakeShot(*parent_, "reminder-server-waits");
                stop->click();
            }
        });
        timer.start(20);
        QElapsedTimer clock;
        clock.start();
        QVERIFY(!SaveNewReminder(host_->World(), Mail()));
        QVERIFY(clock.elapsed() < 4000);
        QCOMPARE(prompts_.seen.size(), size_t{1});
        QVERIFY(prompts_.seen[0].find("could not be created") != std::string::npos);
        QCOMPARE(Stored(), size_t{0});
        QCOMPARE(server.Requests().size(), size_t{2});
    }

    void what_was_typed_outlives_a_server_that_does_not_answer() {
        Open("");
        const auto setType = [](const EditReminderDialog& editor, int index) {
            auto* const type = In<QComboBox>(editor, "type");
            type->setCurrentIndex(index);
            emit type->activated(index);
        };
        Next<EditReminderDialog>([&](EditReminderDialog& editor) {
            setType(editor, 1);
            In<QLineEdit>(editor, "address")->setText("ann@mail.example");
            In<QPlainTextEdit>(editor, "message")->setPlainText("Bring the lamp");
            Next<EditReminderDialog>([&](EditReminderDialog& again) {
                QVERIFY(prompts_.seen.back().find("could not be created") != std::string::npos);
                QCOMPARE(In<QLineEdit>(again, "address")->text(), QString("ann@mail.example"));
                QCOMPARE(In<QPlainTextEdit>(again, "message")->toPlainText(), QString("Bring the lamp"));
                setType(again, 0);
                In<QPushButton>(again, "save")->click();
            });
            In<QPushButton>(editor, "save")->click();
        });
        QVERIFY(RunNewReminder(*host_, nullptr, parent_.get()));
        QCOMPARE(opened_, 2);
        ReminderList reminders;
        LoadReminders(host_->World(), reminders);
        QCOMPARE(reminders.size(), size_t{1});
        QCOMPARE(reminders[0].Message, std::string("Bring the lamp"));
    }
};

}  // namespace lore

QTEST_MAIN(lore::ReminderServerTest)
#include "reminder_server_test.moc"
