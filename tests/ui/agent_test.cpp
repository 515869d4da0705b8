#include <memory>

#include "agent/agent_program.h"
#include "calendar/reminder_file.h"
#include "notes/notebook_paths.h"
#include "platform/hotkey/x11_keys.h"
#include "platform/ini_store.h"
#include "support/noted_starts.h"
#include "support/refused_threads.h"
#include "support/scripted_agent.h"
#include "support/scripted_ports.h"
#include "ui/board_fixture.h"
#include "ui/controls.h"
#include "ui/look/theme.h"

namespace lore {

/// The agent with its window, as a user meets it on 14 March 2026 at 09:26:53.
class AgentTest : public QObject {
    Q_OBJECT

private:
    std::filesystem::path Root() const { return folder_->path().toStdString(); }
    std::filesystem::path SettingsFile() const { return Root() / "settings.ini"; }
    CTmReminder At(const char* label, int minutes, const char* message = "") const {
        CTmReminder reminder;
        reminder.ReminderId = label;
        reminder.EventId = "{E}";
        reminder.EventLabel = label;
        reminder.Message = message;
        reminder.SendTime = clock_.now.PlusSeconds(60 * int64_t{minutes});
        reminder.EventStart = reminder.SendTime.PlusSeconds(1800);
        return reminder;
    }
    void Put(const ReminderList& reminders) {
        ComputeFolders(Root());
        QVERIFY(WriteReminders(DataPaths{Root()}.Reminders(), reminders).Ok());
    }
    void Start(const ReminderList& reminders) {
        Put(reminders);
        program_ = std::make_unique<AgentProgram>(
            AgentParts{{Root(), SettingsFile()}, clock_, faults_, companions_, self_, theme_});
        program_->Start();
    }
    PopupWindow& Window() { return program_->Window(); }
    template <typename Widget>
    Widget& Find(const char* name) {
        return *Window().findChild<Widget*>(name);
    }
    QString Text(const char* name) { return Find<QLabel>(name).text(); }
    bool Shows(const char* name) { return !Find<QWidget>(name).isHidden(); }
    void Press(const char* name) { QTest::mouseClick(&Find<QPushButton>(name), Qt::LeftButton); }
    /// The agent is told by the program to look at the reminders, at a later moment if one is given.
    void Reload(int64_t minutesLater = 0) {
        clock_.now = clock_.now.PlusSeconds(60 * minutesLater);
        program_->Receive({InstanceMessage::kCommand, kAgentReloadReminders});
    }
    void Choose(const char* menuEntry) { program_->Tray().Menu().findChild<QAction*>(menuEntry)->trigger(); }
    void SetOptions(const std::vector<std::pair<const char*, std::string>>& options) {
        IniStore store(SettingsFile());
        for (const auto& [key, value] : options)
            store.Set("Options", key, value);
        QVERIFY(store.Flush());
    }
    /// What the settings file says.
    int32_t Stored(Option option) const {
        Settings settings;
        settings.LoadOptions(IniStore(SettingsFile()));
        return settings.Int(option);
    }

    std::unique_ptr<QTemporaryDir> folder_;
    Theme theme_{*qApp, Appearance::Light};
    FixedClock clock_;
    NotedFaults faults_;
    NotedStarts companions_;
    ScriptedAgent self_;
    std::unique_ptr<AgentProgram> program_;

private slots:
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        clock_ = FixedClock();
        faults_.faults.clear();
        companions_.started.clear();
        self_ = ScriptedAgent();
        theme_.SetAppearance(Appearance::Light);
        SetOptions({{"Appearance", "1"}});
    }
    void cleanup() { program_.reset(); }
    void shows_what_was_missed_once_and_what_comes() {
        Start({At("Class", -90), At("Dentist", -30), At("Lunch", 5)});
        QVERIFY(Window().isVisible());
        QCOMPARE(Find<QListWidget>("list").count(), 2);
        QVERIFY(Shows("list") && Shows("dismissAll") && Shows("late"));
        QCOMPARE(Text("label"), QString("Class"));
        QCOMPARE(Text("late"), QString("Missed on Saturday, March 14 2026 at 7:56AM"));
        Find<QListWidget>("list").setCurrentRow(1);
        QCOMPARE(Text("label"), QString("Dentist"));
        QVERIFY(Find<QListWidget>("list").item(1)->text().startsWith("03/14/26  8:56AM"));
        ReminderList more = {At("Class", -90), At("Dentist", -30), At("Lunch", 5),
                             At(QByteArray("Dent ").repeated(30), -31)};
        for (const char* const label : {"A", "B", "C", "D", "E", "F"})
            more.push_back(At(label, -20));
        Put(more);
        Reload();
        QTRY_COMPARE(Find<QListWidget>("list").count(), 9);
        QVERIFY(Window().screen()->availableGeometry().contains(Window().frameGeometry()));
        Find<QListWidget>("list").setCurrentRow(2);
        QCoreApplication::processEvents();
        auto& title = Find<QLabel>("label");
        QVERIFY2(title.height() >= title.heightForWidth(title.width()), "a long title is seen whole");
        Press("dismissAll");
        QVERIFY(!Window().isVisible());
        Reload(5);
        QTRY_VERIFY(Window().isVisible());
        QCOMPARE(Text("label"), QString("Lunch"));
        QVERIFY(!Shows("list") && !Shows("dismissAll") && !Shows("late"));
    }

    void shows_a_popup_in_full() {
        CTmReminder reminder = At("Fields & <b>fences</b>", 0, "Bring the map\nand a \x93quote\x94");
        reminder.EventDescription = "A long walk";
        Start({reminder});
        QCOMPARE(Text("label"), QString("Fields & <b>fences</b>"));
        QCOMPARE(Text("time"), QString("Starts Saturday, March 14 2026 at 9:56AM"));
        QCOMPARE(Text("message"), QString::fromUtf8("Bring the map\nand a “quote”"));
        QCOMPARE(Text("description"), QString("A long walk"));
        for (const char* const name : {"label", "message", "description"})
            QCOMPARE(Find<QLabel>(name).textFormat(), Qt::PlainText);
    }

    void puts_off_and_comes_back() {
        Start({At("A", 0), At("B", 0)});
        auto& choices = Find<QComboBox>("snoozeFor");
        QCOMPARE(choices.currentText(), QString("10 Minutes"));
        QCOMPARE(choices.itemText(choices.count() - 1), QString("Until the Event Starts"));
        choices.setCurrentText("30 Minutes");
        Put({At("A", 0, "changed"), At("B", 0)});
        QTRY_COMPARE(Text("message"), QString("changed"));
        QCOMPARE(choices.currentText(), QString("30 Minutes"));
        Press("snooze");
        QCOMPARE(Text("label"), QString("B"));
        QCOMPARE(choices.currentText(), QString("10 Minutes"));
        Press("snooze");
        QVERIFY(!Window().isVisible());
        for (const auto& [minutes, label] : {std::pair(10, "B"), std::pair(20, "A")}) {
            Reload(minutes);
            QTRY_VERIFY(Window().isVisible());
            QCOMPARE(Text("label"), QString(label));
            Press("dismiss");
        }
    }

    void offers_no_moment_that_has_passed() {
        const QString toStart = "Until the Event Starts";
        const auto begun = [&](const char* label, const QString& chosen) {
            CTmReminder reminder = At(label, 0);
            reminder.EventStart = clock_.now.PlusSeconds(1);
            Start({reminder});
            Find<QComboBox>("snoozeFor").setCurrentText(chosen);
            QCOMPARE(Find<QComboBox>("snoozeFor").currentText(), chosen);
            clock_.now = clock_.now.PlusSeconds(1);
        };
        const auto chosen = [&] { return Find<QComboBox>("snoozeFor").currentText(); };
        const auto offersStart = [&] { return Find<QComboBox>("snoozeFor").findText(toStart) >= 0; };
        for (const auto& [before, after] : {std::pair(toStart, "10 Minutes"), std::pair(QString("1 Day"), "1 Day")}) {
            begun(after, before);
            QTRY_VERIFY(!offersStart());
            QCOMPARE(chosen(), QString(after));
            QVERIFY(Text("time").startsWith("Started"));
        }
        begun("faster than the look at the clock", toStart);
        Press("snooze");
        QVERIFY2(Window().isVisible() && !offersStart(), "nothing is put off to what isn't chosen");
        Press("snooze");
        QCOMPARE(program_->Popups().Schedule().NextTime(), clock_.now.PlusSeconds(600));
    }

    void fills_its_times_anew_when_a_popup_comes_again() {
        CTmReminder reminder = At("A", 0);
        Start({reminder});
        auto& choices = Find<QComboBox>("snoozeFor");
        for (const auto& [chosen, minutes] : {std::pair("5 Minutes", 5), std::pair("Until the Event Starts", 25)}) {
            choices.setCurrentText(chosen);
            Press("snooze");
            QVERIFY(!Window().isVisible());
            Reload(minutes);
            QTRY_VERIFY(Window().isVisible());
            QCOMPARE(choices.currentText(), QString("10 Minutes"));
            QCOMPARE(choices.findText("Until the Event Starts") >= 0, minutes == 5);
        }
        choices.setCurrentText("1 Hour");
        reminder.EventStart = clock_.now.PlusSeconds(60);
        Put({reminder});  // its event is moved
        QTRY_COMPARE(choices.itemText(choices.count() - 1), QString("Until the Event Starts"));
        QCOMPARE(choices.currentText(), QString("1 Hour"));
    }

    void is_worked_by_keys() {
        Start({At("A", 0), At("B", 0), At("C", 0)});
        Window().BringUp();
        QVERIFY(QTest::qWaitForWindowActive(&Window()));
        QTest::keyClick(&Find<QListWidget>("list"), Qt::Key_Down);
        QCOMPARE(Text("label"), QString("B"));
        PressKeys(&Window(), {"Alt+D"});
        QTRY_COMPARE(Text("label"), QString("C"));
        QTest::keyClick(&Window(), Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(Text("label"), QString("A"));
        PressKeys(&Window(), {"Alt+S"});
        QTRY_VERIFY(!Window().isVisible());
        QCOMPARE(program_->Popups().Schedule().NextTime(), clock_.now.PlusSeconds(600));
    }

    void closing_puts_all_off() {
        Start({At("A", 0), At("B", 0)});
        QTest::keyClick(&Window(), Qt::Key_Escape);
        QVERIFY(!Window().isVisible());
        QVERIFY(program_->Popups().Schedule().OnScreen().empty());
        QCOMPARE(program_->Popups().Schedule().NextTime(), clock_.now.PlusSeconds(600));
        // The end of the program answers nothing.
        Start({At("C", 0)});
        Window().close();
        QCOMPARE(program_->Popups().Schedule().OnScreen().size(), 1u);
    }

    void opens_the_program_and_captures() {
        const std::string places = "lorebinder|--data|" + Root().string() + "|--settings|" + SettingsFile().string();
        for (const bool hasThreads : {true, false}) {
            companions_.started.clear();
            Start({At(hasThreads ? "A" : "B", 0)});
            const std::unique_ptr<RefusedThreads> refused(hasThreads ? nullptr : new RefusedThreads);
            Press("open");
            QVERIFY(!Window().isVisible());
            Choose("openProgram");
            Choose("capture");
            Choose("closeProgram");  // nothing runs
            const std::string shown = places + (hasThreads ? "|--reminder|A" : "|--reminder|B");
            QTRY_COMPARE(companions_.started, (std::vector<std::string>{shown, places, places + "|--capture"}));
            program_.reset();
        }
    }

    void switches_reach_the_settings() {
        Start({});
        QVERIFY(!program_->Tray().IsShown());  // there is no bar here
        Choose("runAgent");
        QCOMPARE(Stored(Option::RunAgent), kAgentOn);
        for (const bool starts : {true, false}) {
            Choose("startupAgent");
            QCOMPARE(Stored(Option::StartupAgent), starts ? kAgentOn : 0);
            QCOMPARE(self_.startsWithSession, starts);
        }
        // The options page changes what the menu shows.
        SetOptions({{"RunAgent", "0"}, {"StartupAgent", "2112"}, {"Appearance", "2"}});
        QCOMPARE(program_->Receive({InstanceMessage::kCommand, kAgentCheckSettings}), 1u);
        const auto isOn = [&](const char* name) {
            return program_->Tray().Menu().findChild<QAction*>(name)->isChecked();
        };
        QTRY_VERIFY(isOn("startupAgent") && !isOn("runAgent"));
        QVERIFY(theme_.IsDark());
    }

    void closes_when_told() {
        Start({});
        QSignalSpy closed(program_.get(), &AgentProgram::Closed);
        QCOMPARE(program_->Receive({InstanceMessage::kCommand, kAgentClose}), 1u);
        QTRY_COMPARE(closed.count(), 1);
        Choose("quit");
        QCOMPARE(closed.count(), 2);
    }

    void says_that_nothing_waits() {
        Start({At("A", 90)});
        program_->Receive({InstanceMessage::kActivate, {}});
        QTRY_VERIFY(Window().isVisible());
        QCOMPARE(Text("label"), QString("No reminder is waiting"));
        QCOMPARE(Text("time"), QString("The next one comes on Saturday, March 14 2026 at 10:56AM."));
        QVERIFY(!Shows("snooze") && !Shows("dismiss"));
        QTest::keyClick(&Window(), Qt::Key_Escape);
        QVERIFY(!Window().isVisible());
    }

    void hot_keys_are_keys_of_the_display() {
        const std::pair<int32_t, uint32_t> keys[] = {{'A', 'a'},     {'Z', 'z'},     {'0', '0'},  {'9', '9'},
                                                     {0x70, 0xFFBE}, {0x87, 0xFFD5}, {0x20, ' '}, {0x25, 0xFF51},
                                                     {0x2E, 0xFFFF}, {0x2D, 0xFF63}, {0, 0},      {'a', 0},
                                                     {0x88, 0},      {0x01, 0},      {-1, 0},     {0x7FFFFFFF, 0}};
        for (const auto& [key, symbol] : keys)
            QCOMPARE(KeySymbolOf(key), symbol);
        QCOMPARE(int{ModifierMaskOf(HotKey::kShift | HotKey::kControl | HotKey::kAlt)}, 1 | 4 | 8);
        QCOMPARE(int{ModifierMaskOf(HotKey::kControl | 8)}, 4);
    }

    void stands_in_both_looks() {
        CTmReminder one =
            At("Seminar: The keepers of the northern lights", 0, "Bring the map of 1871 and the two letters.");
        one.EventDescription = "Room 204, with the archivist. Questions about the fog signal.";
        CTmReminder longer = one;
        longer.EventLabel =
            "إحاطة عن المنارات القديمة على الساحل الشمالي — 灯台守の記録を読む会 and a label that needs more than one "
            "line";
        longer.Message.clear();
        for (int i = 0; i < 48; ++i)
            longer.Message += std::string(9, 'm') + " ";
        for (int i = 0; i < 30; ++i)
            longer.EventDescription += "\nLine " + std::to_string(i) + " of what is planned";
        const std::pair<QString, ReminderList> kinds[] = {
            {"one", {one}},
            {"several", {At("Dentist", -1600), At("", -45, "Call the harbour office"), one, At("Lunch with Ann", 0)}},
            {"long", {longer}},
            {"empty", {At("Later", 90)}}};
        const BothLooks looks{theme_};
        for (const auto& [kind, reminders] : kinds) {
            cleanup();
            init();
            Start(reminders);
            if (kind == "empty")
                Window().BringUp();
            QVERIFY(QTest::qWaitForWindowExposed(&Window()));
            looks.Shoot(Window(), "agent-" + kind);
        }
        looks.Shoot(program_->Tray().Menu(), "agent-menu");
    }
};

}  // namespace lore

QTEST_MAIN(lore::AgentTest)
#include "agent_test.moc"
