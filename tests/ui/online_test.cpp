#include "calendar/day_reminders.h"
#include "notes/sync_log.h"
#include "online/http_client.h"
#include "support/http_server.h"
#include "support/noted_starts.h"
#include "ui/calendar/calendar_host.h"
#include "ui/calendar/edit_reminder_dialog.h"
#include "ui/main/online_actions.h"
#include "ui/online/link_notebook_dialog.h"
#include "ui/online/select_online_notebook_dlg.h"
#include "ui/online/sync_setup_dialog.h"
#include "ui/ports/qt_progress.h"
#include "ui/window_world.h"

namespace lore {

namespace {

constexpr char kGuid[] = "{01234567-89AB-4cde-8F01-23456789ABCD}";

/// What the service says of the NoteBooks of an account.
std::string NoteBooks(const std::vector<std::pair<int, std::string>>& books) {
    std::string list;
    for (const auto& [id, name] : books)
        list +=
            "<NoteBookInfo><databaseID>" + std::to_string(id) + "</databaseID><name>" + name + "</name></NoteBookInfo>";
    return "<foundUser>true</foundUser><noteBooksList>" + list + "</noteBooksList>";
}
const std::string kTwoNoteBooks = NoteBooks({{4, "Lighthouses"}, {9, "Lamps &amp; lenses"}});

}  // namespace

/// The windows of the online account and of reminders by mail as a user drives them, with a server in this process.
class OnlineTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    void Start(bool hasService = true, const std::string& reminderServer = {}) {
        Begin();
        background_ = std::make_unique<QtProgress>(theme_);
        store_.Set("Reminders", "Server", reminderServer);
        store_.Set("Reminders", "User", "ann");
        store_.Set("Options", "LocalGUID", "{LOCAL}");
        if (hasService) {
            store_.Set("Online", "Endpoint", server_->Url());
            store_.Set("Online", "Namespace", "urn:test/");
            store_.Set("Online", "InfoPage", "https://example.org/sync");
            store_.Set("Online", "TutorialPage", "https://example.org/films");
        }
        OpenWindow(1180, 800);
        background_->SetParent(window_.get());
        prompts_.seen.clear();
    }
    void Answer(const std::string& operation, const std::string& fields, int pause = 0) {
        server_->AddResult(operation, fields, pause);
    }
    /// Engages an account and links the open NoteBook, as the settings and files of an earlier run would say.
    void EngageAndLink() {
        app_->GetSettings().Set(Option::SyncEngaged, 1);
        app_->GetSettings().Set(Option::SyncGUID, std::string(kGuid));
        app_->GetSettings().Set(Option::Nickname, std::string("\xE7\x81\xAF\xE5\xA1\x94 keeper"));
        SyncLink& link = app_->NoteBook().syncLog.link;
        link.Linked = 2112;
        link.OnlineNoteBookID = 9;
        link.OnlineName = "Lamps & lenses";
        link.LastSync = DateTime(1900, 1, 1);
    }
    /// Runs steps in the dialog of a menu entry.
    template <typename Dialog>
    void InEntry(const QString& entry, const std::function<void(Dialog&)>& steps) {
        InDialog<Dialog>([&] { Trigger(entry); }, steps);
    }
    /// Opens the window with a server for reminders.
    void StartReminders(const std::string& address) {
        Start(false, address);
        host_ = std::make_unique<CalendarHost>(*app_, theme_, window_.get());
    }
    CTmReminder Mail() const {
        CTmReminder reminder = NewReminder(host_->World().Context());
        reminder.Type = static_cast<int32_t>(ReminderType::Email);
        reminder.SendTo = reminder.EmailAddress = "ann@mail.example";
        reminder.SendTime = clock_.now.PlusDays(1);
        return reminder;
    }
    ReminderList Stored() const {
        ReminderList reminders;
        LoadReminders(host_->World(), reminders);
        return reminders;
    }
    std::string Kept(const char* key) const { return store_.Get("Options", key).value_or(""); }
    QStringList Panes() const { return SeenTexts<QLabel>(*window_->statusBar()); }

    std::unique_ptr<HttpServer> server_;
    HttpClient client_{{.connect = std::chrono::seconds(5), .silence = std::chrono::seconds(5)}};
    NotedStarts syncs_;
    std::unique_ptr<QtProgress> background_;
    std::unique_ptr<CalendarHost> host_;

private slots:
    void init() {
        server_ = std::make_unique<HttpServer>();
        syncs_ = {};
        morePorts_ = [this](AppPorts& ports) {
            ports.http = &client_;
            ports.background = background_.get();
            ports.companions = &syncs_;
        };
    }
    void cleanup() {
        host_.reset();
        background_.reset();
        CloseWindow();
        server_.reset();
    }
    void keyboard_alone_engages_an_account() {
        Start();
        QVERIFY(!In<QToolButton>(*window_, "runSync")->defaultAction()->isVisible());
        Answer("EngageSyncWithOnlineAccount", "<UserID>3</UserID><UserNickname>&lt;b&gt;keeper</UserNickname>");
        InEntry<SyncSetupDialog>("Online Sync Setup...", [this](SyncSetupDialog& dialog) {
            QLineEdit* const guid = In<QLineEdit>(dialog, "syncGuid");
            QCOMPARE(QApplication::focusWidget(), guid);
            QCOMPARE(In<QLabel>(dialog, "head")->text(), QString("SYNC NOT ENGAGED"));
            QTest::keyClicks(guid, "{short}");
            {
                // As a key does that comes before the window is active again after a message.
                QMessageBox box(&dialog);
                box.open();
                QVERIFY(QTest::qWaitForWindowActive(&box));
                QTest::keyClick(guid, Qt::Key_Return);
            }
            QVERIFY(dialog.isVisible());
            dialog.activateWindow();
            QTRY_VERIFY(guid->hasFocus());
            QCOMPARE(guid->selectedText(), QString("{short}"));
            QTest::keyClicks(guid, kGuid);
            QTest::keyClick(guid, Qt::Key_E, Qt::AltModifier);
            QTRY_COMPARE(In<QLabel>(dialog, "head")->text(), QString("LINKED TO ACCOUNT:  <b>keeper"));
            PressKeys(&dialog, {"Alt+C", "Alt+T"});
            QTRY_VERIFY(In<QCheckBox>(dialog, "atClose")->isChecked() &&
                        !In<QCheckBox>(dialog, "atStart")->isChecked());
            QVERIFY(!StaysOpen(dialog, "Ctrl+Return"));
        });
        QCOMPARE(Told(), QStringList({"Invalid Sync GUID", "Sync GUID Found!!"}));
        QVERIFY(server_->Requests().at(0).find("<desktopGUID>{LOCAL}</desktopGUID>") != std::string::npos);
        QCOMPARE(Kept("SyncGUID"), std::string(kGuid));
        QCOMPARE(Kept("SyncAtClose"), std::string("1"));
        QCOMPARE(Kept("SyncAtStart"), std::string("0"));
        QToolButton* const runSync = In<QToolButton>(*window_, "runSync");
        QTRY_VERIFY(runSync->defaultAction()->isVisible());
        QCOMPARE(runSync->text() + runSync->toolTip(), QString("< Run Sync >< Run Sync > (Ctrl+Shift+Y)"));
        // A box that is ticked and not saved stays as it was.
        InEntry<SyncSetupDialog>("Online Sync Setup...", [](SyncSetupDialog& dialog) {
            QVERIFY(In<QCheckBox>(dialog, "atClose")->isChecked());
            In<QCheckBox>(dialog, "atStart")->click();
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        QVERIFY(app_->GetSettings().Int(Option::SyncAtStart) != 1);
    }

    void a_call_that_hangs_is_stopped_and_changes_nothing() {
        Start();
        EngageAndLink();
        server_->Add(HttpAnswer{"HTTP/1.1 200 OK\r\n", 0, 0, false});
        InEntry<SyncSetupDialog>("Online Sync Setup...", [&](SyncSetupDialog& dialog) {
            QTimer timer;
            QElapsedTimer spent;
            int ticks = 0;
            timer.callOnTimeout(&dialog, [&] {
                ++ticks;
                if (!StopButton(dialog))
                    return;
                timer.stop();
                TakeShot(dialog, "online_stop");
                spent.start();
                QTest::keyClicks(In<QLineEdit>(dialog, "syncGuid"), "typed");
                QTest::keyClick(&dialog, Qt::Key_Escape);
            });
            timer.start(10);
            In<QPushButton>(dialog, "engage")->click();
            QVERIFY2(spent.elapsed() < 4000, "the wait of the client would be over");
            QVERIFY(ticks > 10);
            QVERIFY(dialog.isVisible());
            QCOMPARE(In<QLineEdit>(dialog, "syncGuid")->text(), QString(kGuid));
            QVERIFY(!In<QFrame>(dialog, "progressPanel"));
        });
        QCOMPARE(prompts_.seen.size(), 0u);
        QCOMPARE(app_->GetSettings().Text(Option::SyncGUID), std::string(kGuid));
        QVERIFY(app_->NoteBook().syncLog.link.IsLinked());
    }

    void a_notebook_is_linked_with_one_made_online_and_freed_again() {
        Start();
        EngageAndLink();
        app_->NoteBook().syncLog.ResetLink();
        Answer("GetNoteBooksInfo", NoteBooks({{4, "Lighthouses"}}));
        Answer("CreateNewNoteBook", "<newNoteBookID>9</newNoteBookID>" + kTwoNoteBooks);
        Answer("SetupLinkWithOnlineNoteBook", "<databaseID>9</databaseID><name>Lamps &amp; lenses</name>");
        Answer("ClearLinkWithOnlineNoteBook", "<databaseID>9</databaseID><name>Lamps &amp; lenses</name>");
        prompts_.texts = {"LIGHTHOUSES", "Lamps & lenses"};
        InEntry<LinkNoteBookDialog>("Link Current NoteBook...", [this](LinkNoteBookDialog& dialog) {
            QCOMPARE(In<QLabel>(dialog, "noteBook")->text(), QString("LorebinderMain"));
            QCOMPARE(In<QLabel>(dialog, "status")->text(), QString("not linked"));
            QVERIFY(!In<QPushButton>(dialog, "clearLink")->isEnabled());
            Next<CSelectOnlineNoteBookDlg>([this](CSelectOnlineNoteBookDlg& choice) {
                const QListWidget* const list = In<QListWidget>(choice, "onlineNoteBooks");
                QVERIFY(list->hasFocus());
                QCOMPARE(list->count(), 1);
                QVERIFY(list->selectedItems().isEmpty());
                QVERIFY(StaysOpen(choice, "Ctrl+Return"));
                QCOMPARE(prompts_.seen.back(), std::string("No NoteBook Selected: Please Select a NoteBook."));
                QTest::keyClick(&choice, Qt::Key_N, Qt::AltModifier);
                QTRY_COMPARE(prompts_.seen.size(), 4u);
                QTRY_COMPARE(list->selectedItems().size(), 1);
                QCOMPARE(list->selectedItems().first()->text(), QString("Lamps & lenses"));
                QTest::keyClick(choice.focusWidget(), Qt::Key_Return);
                QVERIFY(!choice.isVisible());
            });
            QTest::keyClick(&dialog, Qt::Key_Return, Qt::ControlModifier);
            QCOMPARE(In<QLabel>(dialog, "status")->text(), QString("LINKED!"));
            QCOMPARE(In<QLabel>(dialog, "onlineNoteBook")->text(), QString("Lamps & lenses"));
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        QVERIFY2(Panes().contains("Linked With:   < Lamps & lenses >"), qPrintable(Panes().join('|')));
        prompts_.answers = {PromptAnswer::No, PromptAnswer::Yes};
        InEntry<LinkNoteBookDialog>("Link Current NoteBook...", [this](LinkNoteBookDialog& dialog) {
            QTest::keyClick(&dialog, Qt::Key_C, Qt::AltModifier);
            QTRY_COMPARE(prompts_.answers.size(), 1u);
            QCOMPARE(In<QLabel>(dialog, "status")->text(), QString("LINKED!"));
            QTest::keyClick(&dialog, Qt::Key_C, Qt::AltModifier);
            QTRY_COMPARE(In<QLabel>(dialog, "status")->text(), QString("not linked"));
            QVERIFY(!In<QPushButton>(dialog, "clearLink")->isEnabled());
            QVERIFY(In<QPushButton>(dialog, "linkWith")->hasFocus());
        });
        QVERIFY(Panes().contains("Not Linked"));
        QCOMPARE(server_->Left(), 0u);
    }

    void a_refused_update_leaves_the_link_as_it_was() {
        Start();
        EngageAndLink();
        Answer("GetNoteBooksInfo", kTwoNoteBooks);
        Answer("SetupLinkWithOnlineNoteBook", "<databaseID>0</databaseID>");
        InEntry<LinkNoteBookDialog>("Link Current NoteBook...", [this](LinkNoteBookDialog& dialog) {
            Next<CSelectOnlineNoteBookDlg>([](CSelectOnlineNoteBookDlg& choice) {
                QListWidget* const list = In<QListWidget>(choice, "onlineNoteBooks");
                QCOMPARE(list->currentRow(), 1);
                QTest::keyClick(list, Qt::Key_Up);
                In<QPushButton>(choice, "ok")->click();
            });
            In<QPushButton>(dialog, "linkWith")->click();
            QCOMPARE(In<QLabel>(dialog, "onlineNoteBook")->text(), QString("Lamps & lenses"));
            // The server has nothing more to say.
            In<QPushButton>(dialog, "linkWith")->click();
        });
        QCOMPARE(Told(), QStringList({"Update Error", "Connection Error"}));
        QVERIFY(server_->Requests().at(1).find("<newOnlineNoteBookID>4<") != std::string::npos);
        QCOMPARE(app_->NoteBook().syncLog.link.OnlineNoteBookID, 9);
    }

    void commands_say_what_to_set_up_where_there_is_no_service() {
        Start(false);
        InEntry<SyncSetupDialog>("Online Sync Setup...", [](SyncSetupDialog& dialog) {
            QVERIFY(In<QLabel>(dialog, "noService")->isVisible());
            QLineEdit* const guid = In<QLineEdit>(dialog, "syncGuid");
            QTest::keyClicks(guid, kGuid);
            QTest::keyClick(guid, Qt::Key_Return);
            In<QPushButton>(dialog, "syncAll")->click();
            QVERIFY(dialog.isVisible());
        });
        InEntry<LinkNoteBookDialog>("Link Current NoteBook...", [](LinkNoteBookDialog& dialog) {
            QVERIFY(In<QLabel>(dialog, "noService")->isVisible());
            In<QPushButton>(dialog, "linkWith")->click();
        });
        Trigger("Run Sync");
        const QString noService = "Online Service Not Set Up", notEngaged = "Sync NOT Engaged";
        QCOMPARE(Told(), QStringList({noService, notEngaged, noService, notEngaged}));
        QVERIFY(window_->isVisible());
    }

    void all_notebooks_are_synced_in_place_of_the_program() {
        Start();
        EngageAndLink();
        const auto askForAll = [](SyncSetupDialog& dialog) {
            In<QPushButton>(dialog, "syncAll")->click();
            QVERIFY(!dialog.isVisible());
        };
        prompts_.answers = {PromptAnswer::Yes, PromptAnswer::Yes};
        syncs_.failure = "No such file or directory";
        InEntry<SyncSetupDialog>("Online Sync Setup...", askForAll);
        QVERIFY2(window_->isVisible(), "without the sync program there is nothing to close for");
        syncs_.failure.reset();
        InEntry<SyncSetupDialog>("Online Sync Setup...", askForAll);
        QVERIFY(!window_->isVisible());
        QVERIFY(syncs_.started.back().starts_with("syncer|SYNCCREATE|"));
    }

    /// The check at the start waits for open dialogs, tells of a NoteBook that is gone, and takes its panel away.
    void a_deleted_online_notebook_takes_the_link_along() {
        Start();
        EngageAndLink();
        Answer("GetNoteBookInfo", "<databaseID>0</databaseID>");
        window_->Online().CheckLinkSoon();
        InEntry<LinkNoteBookDialog>("Link Current NoteBook...", [this](LinkNoteBookDialog& dialog) {
            QTest::qWait(300);
            QCOMPARE(server_->Requests().size(), 0u);
            QCOMPARE(In<QLabel>(dialog, "status")->text(), QString("LINKED!"));
        });
        QTRY_COMPARE(Told(), QStringList("Online NoteBook Deleted"));
        QTRY_VERIFY(Panes().contains("Not Linked"));
        QTRY_COMPARE(progress_.shown, 0);
        QCOMPARE(progress_.messages.back(), std::string("Updating Local Sync Information....(may take a few moments)"));
    }

    void the_window_paints_while_the_server_thinks() {
        StartReminders(server_->Url("/r"));
        for (const char* const body : {R"({"result": 1})", R"({"time": "03/14/2026 09:26:00"})", R"({"result": 12})"})
            server_->Add({.bytes = "HTTP/1.1 200 OK\r\n\r\n" + std::string(body), .pause = 600});
        int ticks = 0;
        bool couldStop = false;
        QTimer timer;
        timer.callOnTimeout(this, [&] {
            ++ticks;
            couldStop |= StopButton(*window_) != nullptr;
        });
        timer.start(20);
        QVERIFY(SaveNewReminder(host_->World(), Mail()));
        QVERIFY2(ticks >= 10, qPrintable(QString::number(ticks)));
        QVERIFY(couldStop);
        QVERIFY(prompts_.seen.empty());
        QCOMPARE(Stored().size(), size_t{1});
        QCOMPARE(server_->Requests().size(), size_t{3});
        QVERIFY(server_->Requests()[2].find("\"sendTo\":\"ann@mail.example\"") != std::string::npos);
    }

    void cancel_ends_the_flow_of_a_reminder() {
        StartReminders(server_->Url());
        server_->Add(200, R"({"result": 1})");
        server_->Add({.bytes = "", .closes = false});
        QTimer timer;
        QElapsedTimer clock;
        timer.callOnTimeout(this, [&] {
            const QPointer<QPushButton> stop = StopButton(*window_);
            if (!stop)
                return;
            timer.stop();
            TakeShot(*window_, "reminder-server-waits");
            clock.start();
            if (stop)
                stop->click();
        });
        timer.start(20);
        QVERIFY(!SaveNewReminder(host_->World(), Mail()));
        QVERIFY(clock.elapsed() < 4000);
        QCOMPARE(prompts_.seen.size(), size_t{1});
        QVERIFY(prompts_.seen[0].find("could not be created") != std::string::npos);
        QVERIFY(Stored().empty());
        QCOMPARE(server_->Requests().size(), size_t{2});
    }

    void what_was_typed_outlives_a_server_that_is_not_set_up() {
        StartReminders("");
        const auto setType = [](const EditReminderDialog& editor, int index) {
            auto* const type = In<QComboBox>(editor, "type");
            type->setCurrentIndex(index);
            emit type->activated(index);
        };
        Next<EditReminderDialog>([&](EditReminderDialog& editor) {
            setType(editor, 1);
            In<QLineEdit>(editor, "address")->setText("ann@mail.example");
            In<QPlainTextEdit>(editor, "message")->setPlainText("Bring the lamp");
            In<QPushButton>(editor, "save")->click();
            QVERIFY(editor.isVisible());
            QVERIFY(prompts_.seen.at(0).find("key \"Server\"") != std::string::npos);
            QVERIFY(prompts_.seen.back().find("could not be created") != std::string::npos);
            QVERIFY(Stored().empty());
            QCOMPARE(In<QLineEdit>(editor, "address")->text(), QString("ann@mail.example"));
            QCOMPARE(In<QPlainTextEdit>(editor, "message")->toPlainText(), QString("Bring the lamp"));
            setType(editor, 0);
            In<QPushButton>(editor, "save")->click();
        });
        QVERIFY(RunNewReminder(*host_, nullptr, window_.get()));
        QCOMPARE(Stored().size(), size_t{1});
        QCOMPARE(Stored()[0].Message, std::string("Bring the lamp"));
    }

    void stands_in_both_looks() {
        const auto shoot = [this](const char* name) {
            return [this, name](QWidget& dialog) { BothLooks{theme_}.Shoot(dialog, name); };
        };
        Start(false);
        InEntry<SyncSetupDialog>("Online Sync Setup...", shoot("online_setup_none"));
        CloseWindow();
        Start();
        EngageAndLink();
        InEntry<SyncSetupDialog>("Online Sync Setup...", shoot("online_setup"));
        Answer("GetNoteBooksInfo", "<foundUser>true</foundUser>");
        Answer("GetNoteBooksInfo", NoteBooks({{4, "\u706f\u5854\u306e\u6b74\u53f2"},
                                              {5, "\u05de\u05d2\u05d3\u05dc\u05d5\u05e8\u05d9\u05dd"},
                                              {9, "A name of forty-four characters, which is it"}}));
        InEntry<LinkNoteBookDialog>("Link Current NoteBook...", [&](LinkNoteBookDialog& dialog) {
            shoot("online_link")(dialog);
            Next<CSelectOnlineNoteBookDlg>(shoot("online_select_empty"));
            In<QPushButton>(dialog, "linkWith")->click();
            Next<CSelectOnlineNoteBookDlg>(shoot("online_select"));
            In<QPushButton>(dialog, "linkWith")->click();
        });
        shoot("online_window")(*window_);
    }
};

}  // namespace lore

QTEST_MAIN(lore::OnlineTest)
#include "online_test.moc"
