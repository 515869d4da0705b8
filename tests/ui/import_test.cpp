#include "exchange/export_notes.h"
#include "notes/note_finder.h"
#include "support/draft_reading.h"
#include "ui/archive_entry.h"
#include "ui/import/differences_window.h"
#include "ui/import/import_categories_dialog.h"
#include "ui/import/import_window.h"
#include "ui/note_editor/attachment_panel.h"
#include "ui/note_editor/category_panel.h"
#include "ui/note_editor/draft_writer.h"
#include "ui/note_editor/note_editor_window.h"
#include "ui/note_editor/note_text_pane.h"
#include "ui/ports/qt_progress.h"
#include "ui/tab_walk.h"
#include "ui/window_world.h"

namespace lore {
namespace {

const DateTime kOld(2026, 1, 2, 3, 4, 5), kMiddle(2026, 2, 2, 3, 4, 5), kLate(2026, 3, 2, 3, 4, 5);

/// Four notes, one of each status.
ImportComparison MakeComparison(GuidSource& guids) {
    NoteHeads existing;
    for (const char* guid : {"{OLDER}", "{NEWER}", "{SAME}"}) {
        CNote head = MakeEntry(guid, "As it was here", kMiddle).note;
        head.id = 7;
        existing.emplace(guid, head);
    }
    return ImportComparison({MakeEntry("{NEW}", "A new text", kMiddle), MakeEntry("{OLDER}", "An older text", kOld),
                             MakeEntry("{NEWER}", "As it is there", kLate), MakeEntry("{SAME}", "The same", kMiddle)},
                            existing, guids,
                            [](int32_t) { return std::optional(MakeEntry("{NEWER}", "As it was here", kMiddle)); });
}

}  // namespace

/// The windows of an import, alone and as a flow from the archive to the undo.
class ImportTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    /// A window over four notes, one of each status, and its list.
    struct Opened {
        explicit Opened(ImportTest& test)
            : comparison(MakeComparison(test.guids_)),
              window(comparison, test.commands_, test.theme_, test.prompts_, test.store_, nullptr),
              list(*In<QTreeWidget>(window, "importList")) {}
        void BringUp() {
            window.show();
            lore::BringUp(window);
        }
        QTreeWidgetItem& Row(int row) const { return *list.topLevelItem(row); }
        ImportComparison comparison;
        ImportWindow window;
        QTreeWidget& list;
    };
    std::vector<CNote> AllOnDisk() {
        return FindNotes(app_->NoteBook().index, app_->NoteBook().index.AllIDs(), app_->Context(), faults_);
    }
    CNote OnDisk(const std::string& guid) {
        const std::vector<CNote> notes = AllOnDisk();
        return std::find_if(notes.begin(), notes.end(), [&](const CNote& note) { return note.guid == guid; })[0];
    }
    bool HasFile(const CNote& note) const {
        return std::filesystem::exists(app_->NoteBook().paths.Attachments() / note.attachments.front().storedFile);
    }
    /// An archive of the first note with a file, edited later than the NoteBook's, and one new note.
    std::filesystem::path MakeArchive(CNote& known) {
        const std::vector<CNote> notes = AllOnDisk();
        const auto withFile = std::find_if(notes.begin(), notes.end(), [](const CNote& note) {
            return !note.attachments.empty() && !note.attachments.front().storedFile.empty() && !note.sources.IsEmpty();
        });
        known = *withFile;
        CNote changed = known;
        changed.dateEdited = DateTime(2040, 1, 1);
        changed.keyWords = "from elsewhere";
        CNote added;
        added.id = 90000;
        added.guid = guids_.NewGuid();
        added.plainText = "A note from elsewhere";
        added.rtfText = "{\\rtf1\\ansi A note from elsewhere}";
        const std::filesystem::path archive = Root() / "notes.lbe";
        const ReadContext context = app_->Context();
        const ExportJob job{app_->NoteBook(), app_->Data(), context, {prompts_, progress_, faults_}};
        ExportNotes(NotesOfList({changed, added}), archive, ExportedSources::OfNotes, job);
        return archive;
    }

    ImportNoteCommands commands_;

private slots:
    void init() {
        commands_ = {[](size_t, QWidget*) { return false; }, [](QWidget*) { return false; }};
        OpenSample(1280, 860);
    }
    void cleanup() { CloseWindow(); }
    void shows_each_note_with_its_status_and_hides_the_same() {
        Opened opened(*this);
        QCOMPARE(opened.list.topLevelItemCount(), 3);
        const char* const status[] = {"1. - <NEW NOTE>", "2. - EXISTS (older)", "3. - EXISTS (newer)"};
        for (int row = 0; row < 3; ++row)
            QCOMPARE(opened.Row(row).text(0), QString(status[row]));
        QCOMPARE(opened.Row(1).text(3), QString("Coast"));
        QVERIFY(opened.Row(1).foreground(0) != opened.Row(2).foreground(0));
        In<QCheckBox>(opened.window, "showSame")->click();
        QCOMPARE(opened.list.topLevelItemCount(), 4);
        opened.window.resize(1000, 420);
        BothLooks{theme_}.Shoot(opened.window, "import_list");
    }

    void says_why_the_list_is_empty() {
        for (const int notes : {0, 1, 3}) {
            NoteHeads existing;
            std::vector<ArchiveNote> entries;
            for (int i = 0; i < notes; ++i) {
                entries.push_back(MakeEntry("{" + std::to_string(i) + "}", "The same", kMiddle));
                existing.emplace(entries.back().note.guid, entries.back().note);
            }
            ImportComparison comparison(entries, existing, guids_,
                                        [](int32_t) { return std::optional<ArchiveNote>(); });
            ImportWindow window(comparison, commands_, theme_, prompts_, store_, nullptr);
            auto* const list = window.findChild<QTreeWidget*>("importList");
            auto* const line = list->findChild<QLabel*>("emptyLine");
            QVERIFY(line->isVisibleTo(&window));
            QCOMPARE(list->accessibleDescription(), line->text());
            QCOMPARE(line->text().contains("Show existing"), notes > 0);
            QCOMPARE(line->text().contains("All 3 notes"), notes == 3);
            if (notes == 3)
                BothLooks{theme_}.Shoot(window, "import_nothing_new");
            window.findChild<QCheckBox*>("showSame")->click();
            QCOMPARE(line->isVisibleTo(&window), notes == 0);
            QCOMPARE(list->accessibleDescription().isEmpty(), notes > 0);
        }
    }

    void takes_what_is_ticked_and_refuses_nothing() {
        Opened opened(*this);
        Press(opened.window, "Clear All");
        opened.window.accept();
        QCOMPARE(opened.window.result(), 0);
        QCOMPARE(prompts_.seen.back(), std::string("Invalid Notes: There are no notes selected to import."));
        opened.list.setCurrentItem(&opened.Row(2));
        QTest::keyClick(&opened.list, Qt::Key_Space);
        In<QCheckBox>(opened.window, "displayAfter")->click();
        opened.window.accept();
        QCOMPARE(opened.window.result(), static_cast<int>(QDialog::Accepted));
        QVERIFY(opened.comparison.Chosen() == std::vector<size_t>{2});
        QVERIFY(opened.comparison.displayAfter);
    }

    void tells_screen_readers_of_a_tick() {
        Opened opened(*this);
        opened.BringUp();
        opened.list.setFocus();
        const QTreeWidgetItem& row = *opened.list.currentItem();
        const bool wasTicked = row.checkState(0) == Qt::Checked;
        QCOMPARE(ToldDuring([&] { QTest::keyClick(&opened.list, Qt::Key_Space); }),
                 QStringList((wasTicked ? "unticked " : "ticked ") + row.text(0)));
        // All at once isn't told row by row.
        QVERIFY(ToldDuring([&] {
                    Press(opened.window, "Clear All");
                    Press(opened.window, "Select All");
                }).size() <= 2);
    }

    void shows_the_differences_of_both_texts() {
        DifferencesWindow window(CompareForImport(MakeEntry("{NEWER}", "As it is there", kLate),
                                                  MakeEntry("{NEWER}", "As it was here", kMiddle)),
                                 theme_, store_, nullptr);
        const auto* const rows = window.findChild<QTreeWidget*>("differences");
        QVERIFY(rows->topLevelItemCount() >= 1);
        QCOMPARE(rows->topLevelItem(0)->text(0), QString("Date Last Modified:"));
        const auto* const there = window.findChild<QTextEdit*>("Import Note's Text:");
        const auto* const here = window.findChild<QTextEdit*>("Database Note's Text:");
        QCOMPARE(there->toPlainText(), QString("As it is there"));
        QCOMPARE(here->toPlainText(), QString("As it was here"));
        QCOMPARE(there->extraSelections().size(), 2);
        QCOMPARE(here->extraSelections().size(), 2);
        window.resize(900, 520);
        BothLooks{theme_}.Shoot(window, "import_differences");
    }

    void edits_the_note_under_a_double_click() {
        std::vector<size_t> edited;
        ImportComparison* saves = nullptr;
        commands_.edit = [&](size_t position, QWidget*) {
            edited.push_back(position);
            if (saves)
                saves->ReplaceNote(position, MakeEntry("", "Edited", kLate));
            return saves != nullptr;
        };
        Opened opened(*this);
        opened.BringUp();
        const QTreeWidgetItem& older = opened.Row(1);
        DoubleClick(&opened.list, opened.list.model()->index(1, 0));
        QVERIFY(edited == std::vector<size_t>{1});
        QCOMPARE(older.text(0), QString("2. - EXISTS (older)"));
        saves = &opened.comparison;
        const QBrush before = older.foreground(0);
        QTest::keyClick(&opened.list, Qt::Key_F2);
        QVERIFY(edited == (std::vector<size_t>{1, 1}));
        QCOMPARE(older.text(0), QString("2. - EXISTS (newer)"));
        QVERIFY(older.foreground(0) != before);
    }

    void asks_before_changes_to_notes_are_given_up() {
        int dropped = 0;
        bool changes = false;
        commands_.edit = [&](size_t, QWidget*) { return changes; };
        commands_.changeCategories = [&](QWidget*) { return changes; };
        commands_.dropChanges = [&] { ++dropped; };
        for (const bool byKey : {true, false}) {
            Opened opened(*this);
            const auto change = [&](bool saves) {
                changes = saves;
                opened.BringUp();
                opened.list.setCurrentItem(&opened.Row(0));
                if (byKey)
                    QTest::keyClick(&opened.list, Qt::Key_F2);
                else
                    Press(opened.window, "Change Categories of Selected Notes");
            };
            prompts_.seen.clear();
            dropped = 0;
            change(false);
            Press(opened.window, "Cancel");
            QVERIFY2(!opened.window.isVisible() && prompts_.seen.empty(), "nothing was changed");
            change(true);
            prompts_.answers = {PromptAnswer::No, PromptAnswer::No, PromptAnswer::Yes};
            Press(opened.window, "Cancel");
            QTest::keyClick(&opened.window, Qt::Key_Escape);
            QVERIFY(opened.window.isVisible());
            QCOMPARE(dropped, 0);
            opened.window.close();
            QVERIFY(!opened.window.isVisible());
            QCOMPARE(dropped, 1);
            QCOMPARE(prompts_.seen.size(), size_t{3});
        }
        // Nobody may be there to answer an order to quit. The drafts stay.
        Opened opened(*this);
        opened.BringUp();
        opened.list.setCurrentItem(&opened.Row(0));
        QTest::keyClick(&opened.list, Qt::Key_F2);
        prompts_.seen.clear();
        OrderToQuit();
        QVERIFY(!opened.window.isVisible());
        QVERIFY(prompts_.seen.empty());
        QCOMPARE(dropped, 1);
    }

    void gives_ticked_notes_new_categories() {
        CProCategoryList forest;
        forest.AddRoot(CProCategoryTree(3, "Lights"));
        forest.AddRoot(CProCategoryTree(4, "Harbours"));
        CategoryAssignment paths(forest, 10, prompts_);
        ImportCategoriesDialog dialog(paths, theme_, store_, nullptr);
        const auto* const panel = dialog.findChild<CategoryPanel*>();
        QCOMPARE(panel->Tabs()->count(), 3);
        Choose(panel->BoxAt(0), "Harbours");
        QTRY_COMPARE(paths.ChosenID(1, 0), 4);
        QTest::keyClick(panel->Tabs(), Qt::Key_Right);
        QCOMPARE(panel->ActiveSet(), 2);
        BothLooks{theme_}.Shoot(dialog, "import_categories");
        ImportComparison* changed = nullptr;
        int asked = 0;
        commands_.changeCategories = [&](QWidget*) {
            ++asked;
            CNote note;
            paths.WriteBack(note);
            changed->AssignCategories(note.categories);
            return true;
        };
        Opened opened(*this);
        changed = &opened.comparison;
        Press(opened.window, "Change Categories of Selected Notes");
        QCOMPARE(opened.Row(0).text(2), QString("Harbours"));
        Press(opened.window, "Clear All");
        Press(opened.window, "Change Categories of Selected Notes");
        QCOMPARE(asked, 1);
        QCOMPARE(prompts_.seen.back(), std::string("Invalid Notes: There are no notes selected to import."));
    }

    void an_imported_note_is_edited_before_it_lands_and_the_import_is_undone() {
        CNote known;
        const std::filesystem::path archive = MakeArchive(known);
        const size_t before = app_->NoteBook().TotalNoteCount();
        const std::vector<int32_t> listed = app_->List().GetNoteIDs().Values();
        Next<ImportWindow>([&](ImportWindow& import) {
            auto* const list = import.findChild<QTreeWidget*>("importList");
            QCOMPARE(list->topLevelItemCount(), 2);
            Next<NoteEditorWindow>([&](NoteEditorWindow& editor) {
                QCOMPARE(editor.windowTitle(), QStringLiteral("View/Edit Import Note"));
                const QTreeWidget& files = *editor.Attachments()->List();
                QCOMPARE(files.topLevelItemCount(), static_cast<int>(known.attachments.size()));
                QVERIFY2(!files.topLevelItem(0)->text(1).startsWith("Missing"),
                         qPrintable(files.topLevelItem(0)->text(1)));
                BothLooks{theme_}.Shoot(editor, "import_note");
                editor.Text()->Edit()->selectAll();
                QSignalSpy written(editor.Drafts(), &DraftWriter::Written);
                QTest::keyClicks(editor.Text()->Edit(), "Edited on the way");
                QTRY_COMPARE(written.size(), 1);
                editor.SaveNote();
                QVERIFY(!editor.isVisible());
            });
            list->setCurrentItem(list->topLevelItem(0));
            QTest::keyClick(list, Qt::Key_F2);
            QVERIFY(list->topLevelItem(0)->text(0).contains("newer"));
            // The draft is one of the open NoteBook, and stays until the note has landed.
            const DraftStore drafts(app_->NoteBook().paths);
            QCOMPARE(drafts.ListDrafts().size(), size_t{1});
            Draft draft;
            QVERIFY(ReadsDraft(drafts.ListDrafts()[0], app_->Context(), draft));
            QCOMPARE(draft.note.plainText, std::string("Edited on the way"));
            QVERIFY(draft.note.sources.Values() == known.sources.Values());
            import.accept();
        });
        window_->ImportFile(QString::fromStdString(archive.string()));
        QCOMPARE(opened_, 2);
        QCOMPARE(prompts_.seen.back(),
                 std::string("Finished!: All  *2*  of your notes have been successfully imported!"));
        QVERIFY(DraftStore(app_->NoteBook().paths).ListDrafts().empty());
        QCOMPARE(app_->NoteBook().TotalNoteCount(), before + 1);
        const CNote edited = OnDisk(known.guid);
        QCOMPARE(edited.plainText, std::string("Edited on the way"));
        QCOMPARE(edited.id, known.id);
        QVERIFY(edited.sources.Values() == known.sources.Values());
        QCOMPARE(edited.keyWords, std::string("from elsewhere"));
        QVERIFY(HasFile(edited));

        BringUp(*window_);
        window_->Board()->setFocus();
        PressKeys(window_->Board(), {"Ctrl+Z"});
        QCOMPARE(app_->NoteBook().TotalNoteCount(), before);
        const CNote back = OnDisk(known.guid);
        QCOMPARE(back.plainText, known.plainText);
        QCOMPARE(back.keyWords, known.keyWords);
        QVERIFY(HasFile(back));
        QVERIFY(app_->List().GetNoteIDs().Values() == listed);
        QVERIFY(faults_.faults.empty());
    }

    void a_drop_during_an_export_waits_until_it_is_done() {
        CNote known;
        const std::filesystem::path archive = MakeArchive(known);
        QtProgress progress(theme_);
        progress.SetParent(window_.get());
        bool dropped = false;
        QTimer::singleShot(0, window_.get(), [&] {
            QMimeData files;
            files.setUrls({QUrl::fromLocalFile(QString::fromStdString(archive.string()))});
            dropped = DropOn(window_.get(), files);
        });
        const ReadContext context = app_->Context();
        const ExportJob job{app_->NoteBook(), app_->Data(), context, {prompts_, progress, faults_}};
        const ArchiveOutcome made =
            ExportNotes(NotesOfList(app_->List()), Root() / "all.lbe", ExportedSources::OfNotes, job);
        QCOMPARE(made.notes, static_cast<int>(app_->List().Count()));
        QVERIFY(dropped);
        QCOMPARE(opened_, 0);
        Next<ImportWindow>([](const ImportWindow&) {});
        QTRY_COMPARE(opened_, 1);
        QVERIFY(faults_.faults.empty());
    }
};

}  // namespace lore

QTEST_MAIN(lore::ImportTest)
#include "import_test.moc"
