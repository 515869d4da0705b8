#include <QTemporaryDir>
#include <QTest>

#include "calendar/reminder_file.h"
#include "calendar/shown_popups.h"
#include "notes/notebook_paths.h"
#include "platform/companion_launcher.h"
#include "platform/ini_store.h"
#include "platform/instance/agent_process.h"
#include "platform/places.h"
#include "platform/system_sources.h"
#include "settings/option_pages.h"
#include "support/read_world.h"
#include "support/scripted_ports.h"

namespace lore {

/// The options page "Agent" with the agent as a process of its own.
class OptionsAgentTest : public QObject {
    Q_OBJECT

private:
    std::filesystem::path Root() const { return folder_.path().toStdString(); }
    std::filesystem::path SettingsFile() const { return Root() / "settings.ini"; }
    std::filesystem::path Entry() const { return Root() / "autostart" / "LBAgent.desktop"; }
    bool HasShown(const char* id) const {
        ShownPopups shown;
        LoadShownPopups(DataPaths{Root()}.DataFiles() / kShownFileName, shown);
        return !shown.empty() && shown.begin()->first.reminderId == id;
    }

    QTemporaryDir folder_;
    IniStore store_{SettingsFile()};
    Settings settings_;
    ScriptedPrompts prompts_;
    CompanionLauncher companions_{Root(), SettingsFile()};
    AgentProcess agent_{ProgramFolder() / kAgentProgram, Entry(), Root(), companions_,
                        PlaceArguments({Root(), SettingsFile()})};

private slots:
    void cleanupTestCase() { agent_.Send(kAgentClose); }
    void page_starts_and_sets_the_agent() {
        QVERIFY2(agent_.IsInstalled(), "LBAgent lies beside this test");
        OptionsWorld world{settings_, store_, prompts_};
        world.flush = [this] { return store_.Flush(); };
        AgentPage page(world, &agent_);
        page.Launch();
        QTRY_VERIFY_WITH_TIMEOUT(agent_.IsRunning(), 30'000);

        // What the page writes is on the disk when the agent is told, and starts it with the session.
        const auto stored = [this](Option option) {
            Settings read;
            read.LoadOptions(IniStore(SettingsFile()));
            return read.Int(option);
        };
        page.SetAgentOn(Option::RunAgent, true);
        page.SetAgentOn(Option::StartupAgent, true);
        QVERIFY(page.SaveHotKey({'L', HotKey::kControl | HotKey::kAlt}));
        QCOMPARE(stored(Option::RunAgent), kAgentOn);
        QCOMPARE(stored(Option::Hotkey), int32_t{'L'});
        QVERIFY(BytesOf(Entry()).find("\"--data\" \"" + Root().string() + "\"") != std::string::npos);
        page.SetAgentOn(Option::StartupAgent, false);
        QVERIFY(!std::filesystem::exists(Entry()));

        CTmReminder reminder;
        reminder.ReminderId = "{R}";
        reminder.SendTime = reminder.ServerSendTime = reminder.EventStart = SystemClock().Now();
        QVERIFY(WriteReminders(DataPaths{Root()}.Reminders(), {reminder}).Ok());
        agent_.Send(kAgentReloadReminders);
        QTRY_VERIFY_WITH_TIMEOUT(HasShown("{R}"), 30'000);

        page.Launch();  // a second one leaves it to the first
        QTest::qWait(300);
        QVERIFY(agent_.IsRunning());
        agent_.Send(kAgentClose);
        QTRY_VERIFY_WITH_TIMEOUT(!agent_.IsRunning(), 30'000);
        QVERIFY(prompts_.seen.empty());
    }
};

}  // namespace lore

QTEST_GUILESS_MAIN(lore::OptionsAgentTest)
#include "options_agent_test.moc"
