#include "notes/note_file.h"
#include "ui/main/tool_bar.h"
#include "ui/notebooks/manage_notebooks_dialog.h"
#include "ui/window_world.h"

namespace lore {

/// The dialog "Manage NoteBooks" as a user drives it, and what the main window makes of it.
class NoteBooksTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    DataPaths Data() const { return {Root()}; }
    void AddNoteBook(const std::string& name, int32_t id, int notes) {
        std::vector<CDatabase> list;
        LoadDatabases(Data().DatabasesFile(), MakeReadContext(clock_, guids_), list);
        CDatabase& entry = list.emplace_back();
        entry.id = id;
        entry.name = name;
        entry.folder = "Folder" + std::to_string(id);
        entry.guid = "{NB" + std::to_string(id) + "}";
        entry.created = DateTime(2011, 7, 12);
        const NoteBookPaths paths(Data(), entry.folder);
        CreateNoteBookFolders(paths);
        std::vector<CNote> held(static_cast<size_t>(notes));
        for (size_t i = 0; i < held.size(); ++i) {
            held[i].id = static_cast<int32_t>(i) + 1;
            held[i].dateCreated = held[i].dateEdited = DateTime(2020, 1, 1);
            held[i].rtfText = "{\\rtf1 A lamp}";
        }
        if (notes > 0)
            SaveNoteFile(paths.NoteFile("DAY01012020.dat"), held);
        SaveDatabases(Data().DatabasesFile(), list);
    }

    void InManager(const std::function<void(ManageNoteBooksDialog&)>& steps) {
        InDialog<ManageNoteBooksDialog>([this] { Trigger("Manage NoteBooks..."); },
                                        [&](ManageNoteBooksDialog& dialog) {
                                            QTRY_VERIFY(In<QListWidget>(dialog, "noteBooks")->hasFocus());
                                            steps(dialog);
                                        });
    }

private slots:
    void init() {
        Begin();
        store_.Set("Options", "LocalGUID", "{LOCAL}");
        CreateNoteBookFolders({Data(), kMainNoteBookFolder});
        AddNoteBook("Thesis", 7, 3);
        AddNoteBook("A NoteBook with a name of 30 c", 9, 0);
        AddNoteBook("\xD7\xA1\xD7\xA4\xD7\xA8 \xE7\xAC\x94\xE8\xAE\xB0\xE6\x9C\xAC", 11, 1);
        OpenWindow(1180, 800);
    }

    void cleanup() { CloseWindow(); }
    void keyboard_alone_makes_renames_and_deletes() {
        prompts_.answers = {PromptAnswer::Yes, PromptAnswer::Yes};
        InManager([](ManageNoteBooksDialog& dialog) {
            auto* const newName = In<QLineEdit>(dialog, "newName");
            auto* const name = In<QLineEdit>(dialog, "name");
            auto* const list = In<QListWidget>(dialog, "noteBooks");
            PressKeys(&dialog, {"Alt+W"});
            QVERIFY(newName->hasFocus());
            QTest::keyClicks(newName, "Fog signals");
            QTest::keyClick(newName, Qt::Key_Return);
            QVERIFY(dialog.isVisible());
            QVERIFY(newName->text().isEmpty() && newName->hasFocus());
            QCOMPARE(Lines(list).last(), QStringLiteral("Fog signals"));
            QCOMPARE(list->currentRow(), 4);
            list->setFocus();
            QTest::keyClick(list, Qt::Key_F2);
            QVERIFY(name->hasFocus());
            QCOMPARE(name->selectedText(), QStringLiteral("Fog signals"));
            QTest::keyClicks(name, "Fog");
            QTest::keyClick(name, Qt::Key_Return);
            QCOMPARE(Lines(list).last(), QStringLiteral("Fog"));
            list->setFocus();
            QTest::keyClick(list, Qt::Key_Delete);
            QCOMPARE(list->currentRow(), 0);
            QCOMPARE(list->count(), 4);
            QVERIFY(!StaysOpen(dialog, "Esc"));
        });
        QCOMPARE(prompts_.seen.size(), size_t{2});
        QVERIFY(app_->NoteBook().database.IsMain());
    }

    void enter_after_a_message_stays_in_its_field() {
        prompts_.answers = {PromptAnswer::No, PromptAnswer::Yes};
        InManager([this](ManageNoteBooksDialog& dialog) {
            std::unique_ptr<QMessageBox> box;
            prompts_.whileShown = [&] {
                box = std::make_unique<QMessageBox>(&dialog);
                box->open();
                QVERIFY(QTest::qWaitForWindowActive(box.get()));
            };
            In<QListWidget>(dialog, "noteBooks")->setCurrentRow(1);
            QLineEdit* const line = In<QLineEdit>(dialog, "newName");
            for (const char* const text : {"bad", "Fog signals", "Signals"}) {
                line->setFocus();
                line->setText(text);
                QTest::keyClick(line, Qt::Key_Return);
                // The box takes the window's place until after the key has gone all its way.
                QVERIFY2(box, text);
                QVERIFY2(dialog.isVisible(), text);
                box.reset();
                BringUp(dialog);
            }
            QCOMPARE(Lines(In<QListWidget>(dialog, "noteBooks")).last(), QStringLiteral("Signals"));
            prompts_.whileShown = nullptr;
        });
        QVERIFY(app_->NoteBook().database.IsMain());
    }

    void details_follow_the_selection() {
        InManager([](ManageNoteBooksDialog& dialog) {
            auto* const list = In<QListWidget>(dialog, "noteBooks");
            QCOMPARE(list->item(0)->text(), QStringLiteral("<LOREBINDER MAIN>"));
            QVERIFY(!In<QLineEdit>(dialog, "name")->isEnabled());
            QTest::keyClick(list, Qt::Key_F2);
            QVERIFY(list->hasFocus());
            QTest::keyClick(list, Qt::Key_Down);
            QCOMPARE(In<QLineEdit>(dialog, "name")->text(), QStringLiteral("Thesis"));
            QCOMPARE(In<QLabel>(dialog, "notes")->text(), QStringLiteral("# Notes:  3"));
            QCOMPARE(In<QLabel>(dialog, "created")->text(), QStringLiteral("Created:  07/12/11"));
        });
    }

    void deleting_the_open_one_stops_all_writing() {
        app_->SwitchNoteBook(app_->NoteBooks()[0]);
        app_->Gather({1, 2});
        prompts_.answers = {PromptAnswer::Yes};
        InManager([](ManageNoteBooksDialog& dialog) {
            QTest::keyClick(In<QListWidget>(dialog, "noteBooks"), Qt::Key_Delete);
        });
        QVERIFY(app_->List().IsEmpty());
        QCOMPARE(app_->NoteBook().TotalNoteCount(), size_t{0});
        QVERIFY(app_->TellIfClosed());
        QCOMPARE(Told().last(), QString("NoteBook Deleted"));
        app_->SaveOptions();
        QVERIFY(!std::filesystem::exists(Data().Databases() / "Folder7"));
        QVERIFY(faults_.faults.empty());
        app_->SwitchNoteBook(app_->NoteBookChoices()[0]);
        QVERIFY(!app_->TellIfClosed());
        QVERIFY(!std::filesystem::exists(Data().Databases() / "Folder7"));
    }

    void card_is_copied_to_the_notebook_that_was_chosen() {
        app_->SwitchNoteBook(app_->NoteBooks()[0]);
        app_->Gather({1, 2});
        window_->ShowNoteBook();
        for (const auto& [note, target] : {std::pair{99, 0}, {1, 3}, {2, 0}})
            emit window_->Board()->CopyRequested(note, target);
        QCOMPARE(prompts_.seen,
                 std::vector<std::string>{"Finished!: Your note has been successfully copied to LorebinderMain!"});
        QCOMPARE(*store_.Get("Options", "MaxNoteID"), std::to_string(app_->GetSettings().Int(Option::MaxNoteID)));
    }

    void dialog_opens_where_it_was_closed() {
        QRect wanted(60, 70, 640, 480);
        InManager([&](ManageNoteBooksDialog& dialog) {
            wanted.setSize(wanted.size().expandedTo(dialog.minimumSize()));
            dialog.setGeometry(wanted);
        });
        if (!window_->screen()->availableGeometry().contains(wanted))
            QSKIP("the screen is too small");
        InManager([&](ManageNoteBooksDialog& dialog) { QCOMPARE(dialog.geometry(), wanted); });
    }

    void closing_asks_for_the_auto_backup() {
        app_->GetSettings().Set(Option::EnableBackup, 1);
        app_->GetSettings().Set(Option::BackupPath, folder_->filePath("kept.lbe").toStdString());
        prompts_.answers = {PromptAnswer::Yes};
        window_->close();
        QCOMPARE(prompts_.seen,
                 std::vector<std::string>{"< Auto-Backup >? Do you wish to perform the auto-backup now?"});
        QVERIFY(QFile::exists(folder_->filePath("kept[Thesis]_(03-14-26).lbe")));
        QCOMPARE(*store_.Get("Options", "BkUseCount"), std::string("0"));
    }

    void dropped_archives_are_asked_to_be_imported() {
        for (const QString name : {"/tmp/notes.LBE", "/tmp/notes.txt"}) {
            QMimeData data;
            data.setUrls({QUrl::fromLocalFile(name)});
            QCOMPARE(DropOn(window_.get(), data), name.endsWith("LBE"));
        }
        QTRY_VERIFY(Told().contains("Import Failed"));
        QVERIFY(prompts_.seen.at(0).find("/tmp/notes.LBE") != std::string::npos);
    }

    void stands_in_both_looks() {
        InManager([this](ManageNoteBooksDialog& dialog) {
            for (const auto& [name, row] : {std::pair("notebooks", 2), {"notebooks-rtl", 3}, {"notebooks-main", 0}}) {
                In<QListWidget>(dialog, "noteBooks")->setCurrentRow(row);
                BothLooks{theme_}.Shoot(dialog, name);
            }
        });
    }

    void exit_asks_for_a_name_that_was_typed() {
        for (const auto& [field, asks] : {std::pair("newName", true), {"name", true}, {"name", false}}) {
            InManager([&, field = field, asks = asks](ManageNoteBooksDialog& dialog) {
                In<QListWidget>(dialog, "noteBooks")->setCurrentRow(1);
                QLineEdit* const line = In<QLineEdit>(dialog, field);
                Retype(line, asks ? "Fog signals" : "Thesis");
                prompts_.seen.clear();
                prompts_.answers = {PromptAnswer::No, PromptAnswer::Yes};
                QTest::keyClick(&dialog, Qt::Key_Escape);
                QCOMPARE(dialog.isVisible(), asks);
                QCOMPARE(prompts_.seen.size(), size_t{asks});
                if (!asks)
                    return;
                QVERIFY(line->hasFocus() && line->text() == "Fog signals");
                Press(dialog, "Exit");
                QVERIFY(!dialog.isVisible());
            });
        }
        // Nobody may be there to answer an order to quit.
        InManager([this](ManageNoteBooksDialog& dialog) {
            Retype(In<QLineEdit>(dialog, "newName"), "Fog signals");
            prompts_.seen.clear();
            OrderToQuit();
            QVERIFY(!dialog.isVisible());
            QVERIFY(prompts_.seen.empty());
        });
        QCOMPARE(app_->NoteBooks()[0].name, std::string("Thesis"));
    }

    void a_full_disk_is_told_in_front() {
        prompts_.answers = {4, PromptAnswer::Yes};
        InManager([this](ManageNoteBooksDialog& dialog) {
            auto* const list = In<QListWidget>(dialog, "noteBooks");
            Retype(In<QLineEdit>(dialog, "newName"), "Fog signals");
            FailsAtFirst(dialog, [&] { In<QPushButton>(dialog, "create")->click(); });
            QCOMPARE(Lines(list).last(), QStringLiteral("Fog signals"));
            Retype(In<QLineEdit>(dialog, "name"), "Lamps, again");
            FailsAtFirst(dialog, [&] { Press(dialog, "Change Name"); });
            QCOMPARE(Lines(list).last(), QStringLiteral("Lamps, again"));
            FailsAtFirst(dialog, [&] { Press(dialog, "Delete NoteBook"); });
            QCOMPARE(list->count(), 4);
        });
    }

    void faults_of_a_notebook_leave_the_bar_with_it() {
        FaultBar& bar = *window_->Faults();
        const auto tell = [&](const std::filesystem::path& file) {
            bar.Add({"The file could not be written", file.string(), "No space left on device"});
        };
        tell(app_->NoteBook().paths.Notes() / "DAY01012020.dat");
        emit window_->Tools()->NoteBookChosen(2);
        QVERIFY(bar.isHidden());
        const NoteBookPaths left = app_->NoteBook().paths;
        tell(left.Folder());
        tell(Data().DataFiles() / "Events.dat");
        tell(left.Folder().string() + "1");
        InManager([](ManageNoteBooksDialog& dialog) {
            In<QListWidget>(dialog, "noteBooks")->setCurrentRow(0);
            QVERIFY(!StaysOpen(dialog, "Ctrl+Return"));
        });
        QVERIFY(app_->NoteBook().database.IsMain());
        QVERIFY(!bar.isHidden());
        QCOMPARE(bar.Count(), size_t{2});
        // A notice leaves the failure in sight, and all stands open behind "Details".
        bar.Add({"What it held is kept", "kept", "The file is damaged", true});
        QVERIFY(bar.findChild<QLabel*>()->text().contains("could not be written"));
        InDialog<QMessageBox>([&] { Press(bar, "Details"); },
                              [](QMessageBox& box) {
                                  QVERIFY(box.findChild<QTextEdit*>()->isVisible());
                                  box.reject();
                              });
    }
};

}  // namespace lore

QTEST_MAIN(lore::NoteBooksTest)
#include "notebooks_test.moc"
