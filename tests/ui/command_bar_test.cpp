#include "ui/command_bar/command_bar.h"

#include <set>

#include "app/findable_things.h"
#include "platform/companion_launcher.h"
#include "platform/instance/agent_process.h"
#include "platform/net/net_update_source.h"
#include "platform/places.h"
#include "support/http_server.h"
#include "support/noted_starts.h"
#include "ui/main/about_dialog.h"
#include "ui/main/help_actions.h"
#include "ui/main/tool_bar.h"
#include "ui/window_world.h"

namespace lore {

/// The command bar as a user types into it, and the menu "Help".
class CommandBarTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    /// Opens the bar with its keys and runs steps in it.
    void InBar(const std::function<void(CommandBar&, QLineEdit&)>& steps) {
        InDialog<CommandBar>([this] { Trigger("Command Bar...", "View"); },
                             [&](CommandBar& bar) { steps(bar, *In<QLineEdit>(bar, "commandField")); });
    }
    static QString Row(const CommandBar& bar, int row) {
        return bar.findChild<QListView*>("found")->model()->index(row, 0).data().toString();
    }
    static UpdateReply Fetched(const std::string& address) {
        NetUpdateSource source(300);
        UpdateReply got;
        bool done = false;
        source.Fetch(address, [&](const UpdateReply& answer) {
            got = answer;
            done = true;
        });
        [&] { QTRY_VERIFY_WITH_TIMEOUT(done, 5000); }();
        return got;
    }

private slots:
    void init() {
        OpenSample();
        Trigger("Clear Current Notes", "Notes");
    }
    void cleanup() { CloseWindow(); }
    void commands_run_from_the_bar() {
        QCOMPARE(MenuEntry(*window_, "Command Bar...", "View")->shortcut(), QKeySequence("Ctrl+K"));
        QCOMPARE(app_->List().Count(), size_t{0});
        const std::tuple<const char*, const char*, size_t> commands[] = {
            {"show all", "Show All Notes", app_->NoteBook().TotalNoteCount()}, {"clrcur", "Clear Current Notes", 0}};
        for (const auto& [typed, found, listed] : commands) {
            InBar([typed = typed, found = found](CommandBar& bar, QLineEdit& field) {
                QTest::keyClicks(&field, typed);
                QCOMPARE(Row(bar, 0), QString(found));
                QTest::keyClick(&field, Qt::Key_Return);
            });
            QCOMPARE(app_->List().Count(), listed);
        }
    }

    void categories_sources_and_key_words_bring_in_their_notes() {
        CommandFinder finder;
        AddFindableThings(*app_, finder);
        std::set<FoundKind> seen;
        for (const FindableItem& item : finder.Items()) {
            const LongList notes = NotesOfThing(*app_, item);
            if (notes.Values().empty() || !seen.insert(item.kind).second)
                continue;
            Trigger("Clear Current Notes", "Notes");
            InBar([&item](CommandBar& bar, QLineEdit& field) {
                field.setText(QString::fromStdString(item.text));
                auto* const list = bar.findChild<QListView*>("found");
                for (int row = 0; row < list->model()->rowCount(); ++row) {
                    list->setCurrentIndex(list->model()->index(row, 0));
                    if (bar.Chosen().kind == item.kind && bar.Chosen().id == item.id)
                        break;
                }
                QCOMPARE(bar.Chosen().id, item.id);
                bar.accept();
            });
            QCOMPARE(app_->List().Count(), notes.Values().size());
        }
        QVERIFY(seen == std::set({FoundKind::Category, FoundKind::Source, FoundKind::KeyWord, FoundKind::OtherNote}));
    }

    void notes_out_of_the_list_are_found_as_they_are_written() {
        for (const auto& [typed, kind] :
             {std::pair("about this noteb", FoundKind::OtherNote), {"ABOUT NOTEBOOK", FoundKind::Note}}) {
            InBar([typed = typed, kind = kind](CommandBar& bar, QLineEdit& field) {
                QTest::keyClicks(&field, typed);
                QCOMPARE(Row(bar, 0), QStringLiteral("About this NoteBook"));
                QVERIFY(bar.Chosen().kind == kind);
                QTest::keyClick(&field, Qt::Key_Return);
            });
            const int32_t id = window_->Board()->FocusNote();
            QVERIFY(app_->List().Find(id)->plainText.starts_with("About this NoteBook"));
            const size_t listed = kind == FoundKind::Note ? app_->NoteBook().TotalNoteCount() : 1;
            QCOMPARE(app_->List().Count(), listed);
            Trigger("Show All Notes", "Notes");
        }
    }

    void names_that_are_too_long_stand_whole_in_the_tool_tip() {
        CommandFinder finder;
        const std::string name = "A name of <many> words " + std::string(300, 'w');
        finder.Add({FoundKind::Note, name, "Note in the list", 1});
        finder.Add({FoundKind::Note, "A name", "Note in the list", 2});
        CommandBar bar(finder, {}, theme_, window_.get());
        bar.show();
        QVERIFY(QTest::qWaitForWindowExposed(&bar));
        auto* const list = bar.findChild<QListView*>("found");
        const auto tipOf = [list](int row) {
            QToolTip::hideText();
            const QRect shown = list->visualRect(list->model()->index(row, 0));
            const QPoint place(shown.left() + 40, shown.center().y());
            QHelpEvent help(QEvent::ToolTip, place, list->viewport()->mapToGlobal(place));
            QApplication::sendEvent(list->viewport(), &help);
            return QToolTip::isVisible() ? QToolTip::text() : QString();
        };
        QCOMPARE(tipOf(1), QString());
        QVERIFY2(tipOf(0).contains(QString::fromStdString(name).toHtmlEscaped()), qPrintable(tipOf(0)));
        TakeShot(bar, "command-bar-long-name");
        QToolTip::hideText();
    }

    void ends_within_a_low_window() {
        window_->resize(800, 360);
        InBar([this](CommandBar& bar, QLineEdit&) {
            QVERIFY2(window_->geometry().contains(bar.geometry()), qPrintable(QString::number(bar.height())));
        });
    }

    void what_is_typed_can_be_searched_for() {
        InBar([](CommandBar& bar, QLineEdit& field) {
            QTest::keyClicks(&field, "lamp");
            QTest::keyClick(&field, Qt::Key_Up);
            QVERIFY(bar.Chosen().kind == FoundKind::Search);
            QTest::keyClick(&field, Qt::Key_Return);
        });
        QVERIFY(!prompts_.seen.empty());
        QVERIFY(!app_->List().IsEmpty());
    }

    void keys_go_through_what_was_found_and_close_the_bar() {
        InBar([](CommandBar& bar, QLineEdit& field) {
            auto* const list = bar.findChild<QListView*>("found");
            QCOMPARE(list->currentIndex().row(), 0);
            PressKeys(&field, {"Down", "PgDown"});
            QVERIFY(list->currentIndex().row() > 5);
            PressKeys(&field, {"PgUp", "PgUp", "Up"});
            QCOMPARE(list->currentIndex().row(), list->model()->rowCount() - 1);
            field.setText("\u4e00\u4e8c no such thing");
            QCOMPARE(list->model()->rowCount(), 1);
            PressKeys(&field, {"Esc"});
            QVERIFY(!bar.isVisible());
        });
        QVERIFY(app_->List().IsEmpty());
    }

    void commands_have_the_keys_of_other_programs_too() {
        const std::tuple<const char*, const char*, QStringList> keys[] = {
            {"Notes", "Add Note...", {"Ctrl+N"}},
            {"File", "Import Notes...", {"Ctrl+O"}},
            {"File", "Save/Print Current Notes...", {"Ctrl+S", "Ctrl+P"}}};
        for (const auto& [menu, entry, wanted] : keys)
            for (const QString& key : wanted)
                QVERIFY2(MenuEntry(*window_, entry, menu)->shortcuts().contains(QKeySequence(key)),
                         qPrintable(entry + key));
    }

    void help_says_what_is_not_there() {
        window_->Help().SetUp({}, nullptr);
        Trigger("User's Manual (.pdf)...", "Help");
        Trigger("Check for program updates....", "Help");
        Trigger("View Online Tutorial Videos...", "Help");
        QCOMPARE(prompts_.seen.size(), size_t{3});
        window_->Help().CheckForUpdates(true);
        QCOMPARE(prompts_.seen.size(), size_t{3});
        InDialog<FWAboutBoxDlg>([this] { Trigger("About Lorebinder...", "Help"); },
                                [](FWAboutBoxDlg& about) {
                                    QCOMPARE(In<QLabel>(about, "version")->text(),
                                             QStringLiteral("<Lorebinder>  -  Version 1.56"));
                                    TakeShot(about, "about-light");
                                });
    }

    void updates_come_from_the_net_or_tell_why_not() {
        HttpServer server;
        server.Add(200, "11.60\n");
        const UpdateReply got = Fetched(server.Url("/newest.txt"));
        QVERIFY(server.Requests().at(0).starts_with("GET /newest.txt "));
        QVERIFY(got.ok);
        QCOMPARE(got.text, std::string("11.60\n"));
        server.Add(404, "11.99");
        server.Add(200, std::string(200'000, 'x'));
        server.Add({.bytes = {}, .closes = false});  // one that stays silent
        for (const std::string& address :
             {server.Url(), server.Url(), server.Url(), std::string("file:///etc/hostname"), std::string("updates"),
              std::string("http://"), std::string("javascript:1")}) {
            const UpdateReply failed = Fetched(address);
            QVERIFY2(!failed.ok && !failed.reason.empty(), address.c_str());
        }
    }

    void agent_starts_with_the_session_only_where_it_is() {
        NotedStarts companions;
        const std::filesystem::path program = Root() / "with \"quotes\" & 100%" / "LBAgent";
        const std::filesystem::path entry = Root() / "autostart" / "LBAgent.desktop";
        const std::filesystem::path xdg = Root() / "xdg";
        qputenv("XDG_CONFIG_DIRS", QByteArray::fromStdString("/nowhere:" + xdg.string()));
        AgentProcess agent(program, entry, Root(), companions);
        QVERIFY(!agent.IsInstalled());
        QVERIFY(agent.StartWithSession(true));
        QVERIFY(!std::filesystem::exists(entry));
        QVERIFY(!agent.IsRunning());
        agent.Send(kAgentClose);
        std::filesystem::create_directories(program.parent_path());
        PutBytes(program, {});
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        QVERIFY(agent.IsInstalled());
        QVERIFY(agent.Launch());
        QCOMPARE(companions.started, std::vector<std::string>{"LBAgent|Lorebinder"});
        QVERIFY(agent.StartWithSession(true));
        QVERIFY(BytesOf(entry).find("/with \\\\\"quotes\\\\\" & 100%%/LBAgent\" Lorebinder\n") != std::string::npos);
        QVERIFY(agent.StartWithSession(false));
        QVERIFY(!std::filesystem::exists(entry));
        // An entry of the system, which may start the agent for everybody, doesn't do so for this user.
        std::filesystem::create_directories(xdg / "autostart");
        PutBytes(xdg / "autostart" / entry.filename(), "[Desktop Entry]\n");
        QVERIFY(agent.StartWithSession(false));
        QVERIFY(BytesOf(entry).find("\nHidden=true\n") != std::string::npos);
        QVERIFY(agent.StartWithSession(true));
        QVERIFY(BytesOf(entry).find("Hidden") == std::string::npos);
        AgentProcess elsewhere(program, entry, Root(), companions, PlaceArguments({"/data here", "/s.ini"}));
        QVERIFY(elsewhere.StartWithSession(true));
        QVERIFY(BytesOf(entry).find("\" Lorebinder \"--data\" \"/data here\" \"--settings\" \"/s.ini\"\n") !=
                std::string::npos);
        QVERIFY(PlaceArguments({UserDataRoot(), UserSettingsFile()}).empty());
        QVERIFY(AgentAutostart({UserDataRoot(), UserSettingsFile()}) == AutostartFolder() / "LBAgent.desktop");
        QVERIFY(AgentAutostart({"/data here", "/s.ini"}) != AgentAutostart({"/data there", "/s.ini"}));
    }

    void stands_in_both_looks() {
        for (const auto& [name, typed] : {std::pair("commandbar-empty", ""), {"commandbar", "li"}})
            InBar([this, name = name, typed = typed](CommandBar& bar, QLineEdit& field) {
                field.setText(typed);
                BothLooks{theme_}.Shoot(bar, name);
            });
    }
};

}  // namespace lore

QTEST_MAIN(lore::CommandBarTest)
#include "command_bar_test.moc"
