#include "platform/hunspell_checker.h"
#include "support/scripted_agent.h"
#include "ui/editor/rich_text_edit.h"
#include "ui/editor/spell_marks.h"
#include "ui/note_editor/note_actions.h"
#include "ui/note_editor/note_editor_window.h"
#include "ui/note_editor/note_text_pane.h"
#include "ui/options/agent_page.h"
#include "ui/options/font_dialog.h"
#include "ui/options/more_spell_options_dialog.h"
#include "ui/options/options_prop_sheet.h"
#include "ui/options/user_dictionary_dialog.h"
#include "ui/window_world.h"

namespace lore {

/// The options as a user drives them.
class OptionsTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    /// Opens the options from a menu and runs steps in them; they are closed after them.
    void InSheet(const QString& menu, const QString& entry, const std::function<void(COptionsPropSheet&)>& steps) {
        InDialog<COptionsPropSheet>([&] { Trigger(entry, menu); }, steps);
    }
    /// A sheet of its own, with an agent and with fonts and colours that a test chooses.
    std::unique_ptr<COptionsPropSheet> MakeSheet(OptionsTab tab) {
        OptionsWorld world{app_->GetSettings(), store_, prompts_, [this] { ++repaints_; }};
        OptionChoosers choosers;
        choosers.font = [this](const QString&, const FontSetting&, QWidget*) { return font_; };
        choosers.color = [](const QString&, uint32_t, QWidget*) { return 0x00FF00u; };
        auto sheet = std::make_unique<COptionsPropSheet>(
            std::move(world), OptionsParts{theme_, spelling_.get(), &agent_, choosers}, tab, window_.get());
        sheet->show();
        sheet->activateWindow();
        [&] { QTRY_VERIFY(QApplication::activeWindow() == sheet.get()); }();
        return sheet;
    }

    QCheckBox* Box(QWidget& sheet, Option option) const {
        return sheet.findChild<QCheckBox*>("option" + QString::number(static_cast<int>(option)));
    }
    std::string Stored(const char* key) const { return store_.Get("Options", key).value_or("nothing"); }

    ScriptedAgent agent_;
    std::unique_ptr<HunspellChecker> spelling_;
    FontSetting font_;
    int repaints_ = 0;

private slots:
    void init() {
        Begin();
        store_.Set("Options", "LocalGUID", "{LOCAL}");
        agent_ = ScriptedAgent();
        repaints_ = 0;
        font_ = DefaultEditTextFont();
        spelling_ = std::make_unique<HunspellChecker>(HunspellChecker::SystemFolders(),
                                                      Root() / "Words" / "UserWords.txt", faults_);
        OpenWindow(1000, 700);
        window_->Notes()->Commands().SetSpelling(spelling_.get());
    }

    void cleanup() { CloseWindow(); }
    void menus_open_the_right_page() {
        const std::tuple<const char*, const char*, OptionsTab> entries[] = {
            {"Options", "Lorebinder Options...", OptionsTab::General},
            {"Tools", "Lorebinder Options...", OptionsTab::General},
            {"Tools", "Lorebinder Agent...", OptionsTab::Agent},
            {"Tools", "Lorebinder Auto-Backup...", OptionsTab::AutoBackup}};
        for (const auto& [menu, entry, page] : entries)
            InSheet(menu, entry, [page = page](COptionsPropSheet& sheet) {
                QCOMPARE(In<QTabWidget>(sheet, "pages")->currentIndex(), static_cast<int>(page));
                QVERIFY(sheet.findChild<QLabel*>("agentMissing"));
            });
    }

    void each_control_changes_the_windows_at_once() {
        const auto sheet = MakeSheet(OptionsTab::General);
        QTest::mouseClick(Box(*sheet, Option::ShowCats), Qt::LeftButton, {}, QPoint(5, 5));
        QCOMPARE(Stored("ShowCats"), std::string("0"));
        QVERIFY(!app_->GetSettings().Flag(Option::ShowCats));
        font_.faceName = "Liberation Sans";
        In<QPushButton>(*sheet, "titleFont")->click();
        In<QPushButton>(*sheet, "selectedGround")->click();
        auto* const size = In<QSpinBox>(*sheet, "sourceSize");
        Retype(size, "2");
        QTest::keyClick(size, Qt::Key_Tab);
        QCOMPARE(size->value(), 5);
        QCOMPARE(Stored("SourceSize"), std::string("5"));
        QCOMPARE(repaints_, 4);
        QCOMPARE(*store_.Get("ImgTitleFont", "FaceName"), std::string("Liberation Sans"));
        QCOMPARE(LoadSelectedNoteColor(store_), 0x00FF00u);
        auto* const looks = In<QComboBox>(*sheet, "appearance");
        QCOMPARE(looks->currentText(), QStringLiteral("Light"));
        looks->setCurrentIndex(2);
        QVERIFY(theme_.IsDark());
        QCOMPARE(Stored("Appearance"), std::string("2"));
        InSheet("Options", "Lorebinder Options...", [this](COptionsPropSheet& opened) {
            Box(opened, Option::ShowKeyWords)->click();
            QVERIFY(!BoardOptionsOf(app_->GetSettings(), store_).showKeyWords);
        });
    }

    void backup_page_is_not_left_without_a_file() {
        const auto sheet = MakeSheet(OptionsTab::AutoBackup);
        auto* const pages = In<QTabWidget>(*sheet, "pages");
        QVERIFY(!In<QComboBox>(*sheet, "uses")->isEnabled());
        Box(*sheet, Option::EnableBackup)->click();
        QVERIFY(In<QComboBox>(*sheet, "uses")->isEnabled());
        pages->setCurrentIndex(0);
        QCOMPARE(pages->currentIndex(), 1);
        QTest::keyClick(sheet.get(), Qt::Key_Escape);
        sheet->close();
        QVERIFY(sheet->isVisible());
        QCOMPARE(prompts_.seen.size(), size_t{3});
        prompts_.savePaths = {"/keep/a.lbe"};
        In<QPushButton>(*sheet, "setBackupPath")->click();
        QCOMPARE(In<QLineEdit>(*sheet, "backupPath")->text(), QStringLiteral("/keep/a.lbe"));
        pages->setCurrentIndex(2);
        QCOMPARE(pages->currentIndex(), 2);
        PressKeys(sheet.get(), {"Ctrl+Return"});
        QVERIFY(!sheet->isVisible());
    }

    void own_words_are_added_changed_and_deleted() {
        UserDictionary words(*spelling_);
        UserDictionaryDialog dialog(words, store_, window_.get());
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        auto* const list = In<QListWidget>(dialog, "words");
        for (const char* word : {"Fresnel", "argand"}) {
            QTest::keyClicks(In<QLineEdit>(dialog, "word"), word);
            QTest::keyClick(In<QLineEdit>(dialog, "word"), Qt::Key_Return);
        }
        QVERIFY(dialog.isVisible());
        TakeShot(dialog, "options-own-words");
        QCOMPARE(Lines(list), QStringList({"argand", "Fresnel"}));
        list->item(0)->setText("zenith");
        QTRY_COMPARE(list->item(1)->text(), QStringLiteral("zenith"));
        list->item(1)->setText("two words");
        QTRY_COMPARE(list->item(1)->text(), QStringLiteral("zenith"));
        list->setFocus();
        list->setCurrentRow(0);
        QTest::keyClick(list, Qt::Key_Delete);
        QCOMPARE(spelling_->UserWords(), std::vector<std::string>{"zenith"});
    }

    void hot_key_is_stored_as_the_agent_reads_it() {
        const auto sheet = MakeSheet(OptionsTab::Agent);
        In<QKeySequenceEdit>(*sheet, "hotKey")->setKeySequence(QKeySequence("Ctrl+Alt+L"));
        In<QPushButton>(*sheet, "saveHotKey")->click();
        QCOMPARE(Stored("Hotkey"), std::string("76"));
        QCOMPARE(Stored("HotkeyMod"), std::string("6"));
        sheet->findChild<QPushButton*>("launchAgent")->click();
        QCOMPARE(agent_.launches, 1);
        QVERIFY(!sheet->findChild<QLabel*>("noHotKeys"));
        qputenv("WAYLAND_DISPLAY", "wayland-9");
        const auto other = MakeSheet(OptionsTab::Agent);
        qunsetenv("WAYLAND_DISPLAY");
        QVERIFY(other->findChild<QLabel*>("noHotKeys")->text().contains("lorebinder --capture"));
        for (const char* text : {"Ctrl+F5", "Alt+Shift+PgDown", "Ctrl+Alt+9"}) {
            const QKeySequence sequence(QString::fromLatin1(text));
            QCOMPARE(ToKeySequence(FromKeySequence(sequence)), sequence);
        }
        QVERIFY(FromKeySequence(QKeySequence("Ctrl+Volume Up")) == HotKey{});
    }

    void font_keeps_what_was_not_changed() {
        const FontSetting font{
            .faceName = "No Such Face", .height = 19, .weight = 550, .charset = 7, .color = 0x123456};
        FontDialog dialog("Font", font, theme_, store_, window_.get());
        dialog.show();
        BothLooks{theme_}.Shoot(dialog, "options-font");
        const FontSetting kept = dialog.Chosen();
        QCOMPARE(kept.faceName, font.faceName);
        QVERIFY(kept.height == font.height && kept.weight == font.weight);
        QVERIFY(kept.charset == font.charset && kept.color == font.color);
    }

    void open_note_follows_the_options_of_its_spelling() {
        if (!spelling_->Select("en_US"))
            QSKIP("there is no English dictionary");
        const auto inMoreOptions = [this](MoreSpellOptionsDialog& more) {
            QCheckBox* const capitals = Box(more, Option::SpellSkipCapitals);
            QVERIFY(capitals && capitals->isChecked());
            capitals->click();
            TakeShot(more, "options-more-spelling");
            PressKeys(&more, {"Ctrl+Return"});
        };
        const auto inSheet = [&](COptionsPropSheet& sheet) {
            QCOMPARE(In<QTabWidget>(sheet, "pages")->currentIndex(), 2);
            Box(sheet, Option::MarkStrike)->click();
            Next<MoreSpellOptionsDialog>(inMoreOptions);
            In<QPushButton>(sheet, "moreOptions")->click();
        };
        const auto inEditor = [&](NoteEditorWindow& editor) {
            auto* const text = qobject_cast<RichTextEdit*>(editor.Text()->Edit());
            const auto formats = [text] { return text->document()->firstBlock().layout()->formats(); };
            QTest::keyClicks(text, "A lihgted LIHGT again");
            QTRY_COMPARE(formats().size(), 1);
            QVERIFY(!formats()[0].format.fontStrikeOut());
            QMenu menu;
            text->Spelling().AddToMenu(menu, text->textCursor());
            Next<COptionsPropSheet>(inSheet);
            menu.actions().value(menu.actions().size() - 2)->trigger();
            QTRY_COMPARE(formats().size(), 2);
            QVERIFY(formats()[0].format.fontStrikeOut());
            QCOMPARE(Stored("SpellSkipCapitals"), std::string("0"));
            emit text->Spelling().LanguageChosen("de_DE");
            QCOMPARE(Stored("SpellLanguage"), std::string("de_DE"));
            prompts_.answers = {PromptAnswer::Yes};
            editor.CancelNote();
        };
        InDialog<NoteEditorWindow>([this] { window_->Notes()->AddNote(); }, inEditor);
        QCOMPARE(opened_, 3);
    }

    void stands_in_both_looks() {
        app_->GetSettings().Set(Option::EnableBackup, 1);
        app_->GetSettings().Set(Option::BackupPath, std::string("/home/reader/Backups/All my notes.lbe"));
        app_->GetSettings().Set(Option::Hotkey, 76);
        app_->GetSettings().Set(Option::HotkeyMod, 6);
        const char* const names[] = {"general", "backup", "spelling", "agent", "no-agent"};
        for (int i = 0; i < 5; ++i) {
            agent_.installed = i < 4;
            qputenv("WAYLAND_DISPLAY", agent_.installed ? "" : "wayland-9");
            const auto sheet = MakeSheet(static_cast<OptionsTab>(std::min(i, 3)));
            qunsetenv("WAYLAND_DISPLAY");
            BothLooks{theme_}.Shoot(*sheet, QStringLiteral("options-") + names[i]);
        }
    }
};

}  // namespace lore

QTEST_MAIN(lore::OptionsTest)
#include "options_test.moc"
