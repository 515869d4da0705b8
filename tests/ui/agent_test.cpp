#include <memory>

#include "agent/agent_program.h"
#include "calendar/reminder_file.h"
#include "notes/notebook_paths.h"
#include "platform/hotkey/x11_keys.h"
#include "platform/ini_store.h"
#include "support/noted_starts.h"
#include "support/read_world.h"
#include "support/refused_threads.h"
#include "support/scripted_agent.h"
#include "support/scripted_ports.h"
#include "ui/board_fixture.h"
#include "ui/controls.h"
#include "ui/qt_text.h"
#include "ui/theme.h"

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
        QVERIFY(SaveReminders(DataPaths{Root()}.Reminders(), reminders).Ok());
    }
    void Start(const ReminderList& reminders) {
        Put(reminders);
        program_ = std::make_unique<AgentProgram>(
            AgentParts{{Root(), SettingsFile()}, clock_, faults_, companions_, self_, *theme_});
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
    void Choose(const char* menuEntry) { program_->Tray().Menu().findChild<QAction*>(menuEntry)->trigger(); }
    /// What the settings file says.
    int32_t Stored(Option option) const {
        Settings settings;
        settings.LoadOptions(IniStore(SettingsFile()));
        return settings.Int(option);
    }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<Theme> theme_;
    FixedClock clock_;
    NotedFaults faults_;
    NotedStarts companions_;
    ScriptedAgent self_;
    std::unique_ptr<AgentProgram> program_;

private slots:
    void initTestCase() { theme_ = std::make_unique<Theme>(*qApp, Appearance::Light); }
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        clock_ = FixedClock();
        faults_.faults.clear();
        companions_.started.clear();
        self_ = ScriptedAgent();
        theme_->SetAppearance(Appearance::Light);
        IniStore store(SettingsFile());
        store.Set("Options", "Appearance", "1");
        store.Flush();
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
        Press("dismissAll");
        QVERIFY(!Window().isVisible());

        Start({At("Class", -90), At("Dentist", -30), At("Lunch", 5)});
        QVERIFY(!Window().isVisible());
        clock_.now = clock_.now.PlusSeconds(300);
        program_->Receive({InstanceMessage::kCommand, kAgentReloadReminders});
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

    void follows_the_file_and_the_program() {
        Start({});
        QVERIFY(!Window().isVisible());
        Put({At("Told by nobody", 0)});
        QTRY_VERIFY(Window().isVisible());
        QCOMPARE(Text("label"), QString("Told by nobody"));
        const std::string before = BytesOf(DataPaths{Root()}.Reminders());
        Press("snooze");
        QCOMPARE(BytesOf(DataPaths{Root()}.Reminders()), before);
        Put({});
        QTest::qWait(300);
        clock_.now = clock_.now.PlusDays(1);
        program_->Receive({InstanceMessage::kCommand, kAgentReloadReminders});
        QTest::qWait(50);
        QVERIFY(!Window().isVisible());
        QVERIFY(faults_.faults.empty());
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
            clock_.now = clock_.now.PlusSeconds(60 * int64_t{minutes});
            program_->Receive({InstanceMessage::kCommand, kAgentReloadReminders});
            QTRY_VERIFY(Window().isVisible());
            QCOMPARE(Text("label"), QString(label));
            Press("dismiss");
        }
    }

    void is_worked_by_keys() {
        Start({At("A", 0), At("B", 0), At("C", 0)});
        Window().BringUp();
        QVERIFY(QTest::qWaitForWindowActive(&Window()));
        QTest::keyClick(&Find<QListWidget>("list"), Qt::Key_Down);
        QCOMPARE(Text("label"), QString("B"));
        QTest::keyClick(&Window(), Qt::Key_D, Qt::AltModifier);
        QTRY_COMPARE(Text("label"), QString("C"));
        QTest::keyClick(&Window(), Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(Text("label"), QString("A"));
        QTest::keyClick(&Window(), Qt::Key_S, Qt::AltModifier);
        QTRY_VERIFY(!Window().isVisible());
        QCOMPARE(program_->Popups().Schedule().NextTime(), clock_.now.PlusSeconds(600));
    }

    void closing_dismisses_all() {
        Start({At("A", 0), At("B", 0)});
        QTest::keyClick(&Window(), Qt::Key_Escape);
        QVERIFY(!Window().isVisible());
        QVERIFY(program_->Popups().Schedule().OnScreen().empty());
        QVERIFY(program_->Popups().Schedule().NextTime().IsNull());
    }

    void opens_the_program_and_captures() {
        Start({At("A", 0)});
        const std::string places = "lorebinder|--data|" + Root().string() + "|--settings|" + SettingsFile().string();
        Press("open");
        QVERIFY(!Window().isVisible());
        Choose("openProgram");
        Choose("capture");
        Choose("closeProgram");  // nothing runs
        QTRY_COMPARE(companions_.started,
                     (std::vector<std::string>{places + "|--reminder|A", places, places + "|--capture"}));
    }

    void reaches_the_program_without_a_thread() {
        Start({});
        const RefusedThreads refused;
        Choose("openProgram");
        Choose("closeProgram");
        QTRY_COMPARE(companions_.started.size(), size_t{1});
        program_.reset();
    }

    void switches_reach_the_settings() {
        Start({});
        QVERIFY(!program_->Tray().IsShown());  // there is no bar here
        Choose("runAgent");
        QCOMPARE(Stored(Option::RunAgent), kAgentOn);
        Choose("startupAgent");
        QCOMPARE(Stored(Option::StartupAgent), kAgentOn);
        QVERIFY(self_.startsWithSession);
        Choose("startupAgent");
        QCOMPARE(Stored(Option::StartupAgent), 0);
        QVERIFY(!self_.startsWithSession);
        // The options page changes what the menu shows.
        IniStore store(SettingsFile());
        store.Set("Options", "RunAgent", "0");
        store.Set("Options", "StartupAgent", "2112");
        store.Set("Options", "Appearance", "2");
        QVERIFY(store.Flush());
        QCOMPARE(program_->Receive({InstanceMessage::kCommand, kAgentCheckSettings}), 1u);
        const auto isOn = [&](const char* name) {
            return program_->Tray().Menu().findChild<QAction*>(name)->isChecked();
        };
        QTRY_VERIFY(isOn("startupAgent") && !isOn("runAgent"));
        QVERIFY(theme_->IsDark());
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

    void looks_good_data() {
        QTest::addColumn<int>("appearance");
        QTest::addColumn<QString>("kind");
        for (const int appearance : {1, 2}) {
            for (const char* const kind : {"one", "several", "long", "empty"})
                QTest::addRow("agent-%s-%s", kind, appearance == 1 ? "light" : "dark") << appearance << kind;
        }
    }

    void looks_good() {
        QFETCH(int, appearance);
        QFETCH(QString, kind);
        IniStore store(SettingsFile());
        store.Set("Options", "Appearance", std::to_string(appearance));
        store.Flush();
        CTmReminder one =
            At("Seminar: The keepers of the northern lights", 0, "Bring the map of 1871 and the two letters.");
        one.EventDescription = "Room 204, with the archivist. Questions about the fog signal.";
        ReminderList reminders = {one};
        if (kind == "several")
            reminders = {At("Dentist", -1600), At("", -45, "Call the harbour office"), one, At("Lunch with Ann", 0)};
        if (kind == "long") {
            reminders[0].EventLabel = FromQString(
                QString::fromUtf8("إحاطة عن المنارات القديمة على الساحل الشمالي — 灯台守の記録を読む会 and a "
                                  "label that needs more than one line"));
            reminders[0].Message = std::string(480, 'm');
            for (size_t i = 9; i < 480; i += 10)
                reminders[0].Message[i] = ' ';
            for (int i = 0; i < 30; ++i)
                reminders[0].EventDescription += "\nLine " + std::to_string(i) + " of what is planned";
        }
        if (kind == "empty")
            reminders = {At("Later", 90)};
        Start(reminders);
        if (kind == "empty")
            Window().BringUp();
        QVERIFY(QTest::qWaitForWindowExposed(&Window()));
        QTest::qWait(50);
        TakeShot(Window(), QString::fromLatin1(QTest::currentDataTag()));
        if (kind == "one")
            TakeShot(program_->Tray().Menu(), QString::fromLatin1(QTest::currentDataTag()).replace("one", "menu"));
    }
};

}  // namespace lore

QTEST_MAIN(lore::AgentTest)
#include "agent_test.moc"
